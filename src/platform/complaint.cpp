#include "platform/complaint.h"

#include <QApplication>
#include <QStatusBar>
#include <QToolTip>

namespace platform {
namespace {

constexpr int kTellMilliseconds = 8000;
constexpr int kTipAbove = 24;  // pixels from the place of a tip to its end, but for its line

}  // namespace

void complain(QWidget& box, const QString& message, const QString& tip) {
  QApplication::beep();
  auto* status = box.window()->findChild<QStatusBar*>();
  if (status != nullptr) status->showMessage(message, kTellMilliseconds);
  // Above the box: the user may be typing in the next one already.
  const QPoint place(0, -kTipAbove - box.fontMetrics().height());
  if (box.isVisible())
    QToolTip::showText(box.mapToGlobal(place), status == nullptr ? message : tip, &box);
}

}  // namespace platform
