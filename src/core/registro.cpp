// The forms and controls behind the rows of registry and field table.

#include <QPointer>
#include <QWidget>

#include "core/modcuore.h"
#include "platform/bound_control.h"
#include "platform/form.h"
#include "platform/tab_strip.h"

namespace tavolix {

std::array<QVariant, kCampi> vValoriCampi;
std::array<bool, kRaccolte> aCampiCaricati{};

void CaricaRegistroRaccolte() {
  aRaccolte = Raccolte();
  for (int i = 0; i < kRaccolte; ++i) {
    // A form that this program does not have yet leaves its row without one.
    tRaccolta& raccolta = aRaccolte(i);
    if (platform::forms().has(raccolta.sForm)) raccolta.oForm = &platform::forms()[raccolta.sForm];
  }
}

int iSelRaccolta(int valore) {
  auto* tabSelez = platform::forms()[QStringLiteral("frmGrid")].control<platform::TabStrip>(
      QStringLiteral("tabSelez"));
  if (valore < 0) return tabSelez->SelectedTag().toInt();
  for (int tab = 1; tab <= tabSelez->Count(); ++tab) {
    if (tabSelez->Tag(tab) == QString::number(valore)) tabSelez->Select(tab);
  }
  return valore;
}

void CaricaCampi(int iRac) {
  platform::Form* form = aRaccolte(iRac).oForm;
  if (form == nullptr) return;
  // The controls of a window that was unloaded since are gone with it.
  static std::array<QPointer<QWidget>, kRaccolte> windows;
  const auto place = static_cast<std::size_t>(iRac);
  QWidget* window = form->Window();
  if (aCampiCaricati.at(place) && windows.at(place) == window) return;
  aCampiCaricati.at(place) = true;
  windows.at(place) = window;
  for (int j = 0; j < iNumeroCampi(iRac); ++j) {
    tCampo& campo = aCampi(iRac, j);
    campo.oControllo = platform::BoundControl::of(form->Control(campo.sControllo));
  }
}

}  // namespace tavolix
