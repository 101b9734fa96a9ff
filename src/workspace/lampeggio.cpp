#include "workspace/lampeggio.h"

#include "core/verbi.h"

namespace tavolix {
namespace {

constexpr int kMilliseconds = 400;
constexpr int kBrightRed = 12;

}  // namespace

void FaiLampeggiare(QWidget* controllo) {
  verbi().Lampeggia(controllo, kBrightRed, kMilliseconds);
}

void FermaLampeggio() {
  verbi().FermaLampeggio();
}

}  // namespace tavolix
