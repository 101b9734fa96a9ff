#include "platform/path_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace platform {

PathLabel::PathLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QSize PathLabel::minimumSizeHint() const {
  return {0, fontMetrics().height() + 2 * margin()};
}

QString PathLabel::shown() const {
  return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

void PathLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                        isEnabled(), shown(), foregroundRole());
}

bool PathLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  QToolTip::showText(help->globalPos(), shown() == text() ? QString() : text().trimmed(), this);
  return true;
}

}  // namespace platform
