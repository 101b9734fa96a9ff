#include "platform/fitting_area.h"

#include <QLayout>
#include <QScrollBar>

#include "platform/screen_room.h"

namespace platform {
namespace {

constexpr int kLeastLines = 4;
constexpr int kLeastCharacters = 30;

}  // namespace

FittingArea::FittingArea(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setWidget(new QWidget(this));
}

QSize FittingArea::sizeHint() const {
  QSize wanted = widget()->sizeHint();
  if (widget()->hasHeightForWidth()) wanted.setHeight(widget()->heightForWidth(wanted.width()));
  return wanted;
}

QSize FittingArea::minimumSizeHint() const {
  const QSize least(widthOfCharacters(this, kLeastCharacters),
                    fontMetrics().lineSpacing() * kLeastLines);
  return least.boundedTo(sizeHint());
}

void fitToScreen(QWidget& window) {
  QSize wanted = window.sizeHint();
  const QSize room = roomOnScreen();
  // The bar at the side takes its place from what the window holds.
  const auto* area = window.findChild<FittingArea*>();
  if (area != nullptr && wanted.height() > room.height()) {
    wanted.rwidth() += area->verticalScrollBar()->sizeHint().width();
  }
  window.resize(wanted.boundedTo(room));
}

}  // namespace platform
