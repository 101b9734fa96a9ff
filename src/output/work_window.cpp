#include "output/work_window.h"

#include "platform/form.h"

namespace tavolix::report {
namespace {

constexpr int kMillisecondsBeforeShown = 600;

}  // namespace

WorkWindow::WorkWindow(const QString& text)
    : window_(text, QStringLiteral("&Interrompi"), 0, 1, platform::windowInFront()) {
  window_.setWindowTitle(QStringLiteral("Stampa"));
  window_.setWindowModality(Qt::ApplicationModal);
  window_.setMinimumDuration(kMillisecondsBeforeShown);
}

store::Progress WorkWindow::progress() {
  return [this](qint64 done, qint64 total) {
    window_.setMaximum(static_cast<int>(total));
    window_.setValue(static_cast<int>(done));
    return !window_.wasCanceled();
  };
}

}  // namespace tavolix::report
