#include "workspace/lampeggio.h"

#include <QWidget>

#include "platform/form.h"

namespace tavolix {
namespace {

using platform::forms;

constexpr int kMilliseconds = 400;
constexpr int kBrightRed = 12;
const QString kBasic = QStringLiteral("frmBasic");

}  // namespace

void FaiLampeggiare(QWidget* controllo) {
  if (!forms().has(kBasic)) return;
  QMetaObject::invokeMethod(&forms()[kBasic], "StartFlash", Q_ARG(QWidget*, controllo),
                            Q_ARG(int, kBrightRed), Q_ARG(int, kMilliseconds));
}

void FermaLampeggio() {
  if (forms().has(kBasic)) QMetaObject::invokeMethod(&forms()[kBasic], "StopFlash");
}

}  // namespace tavolix
