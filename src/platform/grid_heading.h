#pragma once

#include <QHeaderView>

namespace platform {

// The headings of a grid's columns.
class GridHeading final : public QHeaderView {
  Q_OBJECT
 public:
  explicit GridHeading(QWidget* parent);

  // True if the mouse was moved while it was pressed: what looks like a click is none.
  bool WasDragged() const { return dragged_; }

 Q_SIGNALS:
  void menuWanted(int column, const QPoint& place);

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QPoint pressed_;
  bool dragged_ = false;
};

}  // namespace platform
