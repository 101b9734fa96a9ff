#include "platform/grid_heading.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>

namespace platform {

GridHeading::GridHeading(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
  setStretchLastSection(false);
  setHighlightSections(false);
  setSectionsClickable(true);
}

void GridHeading::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->position().toPoint();
  dragged_ = false;
  QHeaderView::mousePressEvent(event);
}

void GridHeading::mouseMoveEvent(QMouseEvent* event) {
  const QPoint way = event->position().toPoint() - pressed_;
  if (way.manhattanLength() >= QApplication::startDragDistance()) dragged_ = true;
  QHeaderView::mouseMoveEvent(event);
}

void GridHeading::contextMenuEvent(QContextMenuEvent* event) {
  const int column = logicalIndexAt(event->pos());
  if (column >= 0) Q_EMIT menuWanted(column, event->globalPos());
}

}  // namespace platform
