#include "workspace/modrepos.h"

#include <QPointer>
#include <QWidget>
#include <algorithm>
#include <array>

#include "core/errore.h"
#include "core/modutil.h"
#include "platform/form.h"

namespace tavolix {
namespace {

struct tPosForm {
  QString sNome;
  int iMinLar = 0;
  int iMinAlt = 0;
};

struct tPosControllo {
  QPointer<QWidget> oControllo;
  QString sNome;
  int iModoX = 0;
  int iModoY = 0;
  int lDistX = 0;
  int lDistY = 0;
  int lMargX = 0;
  int lMargY = 0;
};

constexpr std::size_t kForms = 11;
constexpr std::size_t kControls = 31;

std::array<tPosForm, kForms> posForms;
std::array<std::array<tPosControllo, kControls>, kForms> posControls;

template <typename Rows>
auto* rowOf(Rows& rows, const QString& name) {
  const auto found =
      std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.sNome == name; });
  return found == rows.end() ? nullptr : &*found;
}

template <typename Rows>
auto* rowOrFree(Rows& rows, const QString& name) {
  auto* row = rowOf(rows, name);
  return row != nullptr ? row : rowOf(rows, QString());
}

auto& controlsOf(const tPosForm* form) {
  return posControls[static_cast<std::size_t>(form - posForms.data())];
}

int widthOf(const tPosForm& row, platform::Form& form) {
  return std::max(platform::Width(form.Window()), row.iMinLar);
}
int heightOf(const tPosForm& row, platform::Form& form) {
  return std::max(platform::Height(form.Window()), row.iMinAlt);
}

void applyRules(const tPosControllo& row, int width, int height) {
  QWidget* control = row.oControllo;
  if (control == nullptr) return;
  QRect place = control->geometry();
  const auto pixels = [](int twips) { return platform::toPixels(twips); };
  if (row.iModoX == 1) place.moveLeft(pixels(width - row.lDistX));
  if (row.iModoX == 2) place.setWidth(pixels(width - row.lMargX - platform::Left(control)));
  if (row.iModoY == 1) place.moveTop(pixels(height - row.lDistY));
  if (row.iModoY == 2) place.setHeight(pixels(height - row.lMargY - platform::Top(control)));
  if (place.width() < 0 || place.height() < 0) {
    throw store::Failure(380, QStringLiteral("Dimensione non valida per '%1'").arg(row.sNome));
  }
  if (place != control->geometry()) control->setGeometry(place);
}

}  // namespace

void PosRegistra(platform::Form& form, QWidget* controllo, int iModoX, int iModoY) {
  tPosForm* formRow = rowOrFree(posForms, form.Name());
  if (formRow == nullptr) {
    iMsg(QStringLiteral("Superato il limite di registrazione forms in roudine di Repos!"), 0);
    return;
  }
  formRow->sNome = form.Name();
  tPosControllo* row = rowOrFree(controlsOf(formRow), controllo->objectName());
  if (row == nullptr) {
    iMsg(QStringLiteral(
             "Superato il limite di registrazione controlli per un form in roudine di Repos!"),
         0);
    return;
  }
  row->oControllo = controllo;
  row->sNome = controllo->objectName();
  row->iModoX = iModoX;
  row->iModoY = iModoY;
}

void PosCattura(platform::Form& form, bool bMinimo) {
  tPosForm* formRow = rowOf(posForms, form.Name());
  if (formRow == nullptr) return;
  if (bMinimo && formRow->iMinLar == 0) {
    formRow->iMinLar = platform::Width(form.Window());
    formRow->iMinAlt = platform::Height(form.Window());
  }
  for (tPosControllo& row : controlsOf(formRow)) {
    if (row.sNome.isEmpty() || !row.oControllo) continue;
    row.lDistX = widthOf(*formRow, form) - platform::Left(row.oControllo);
    row.lDistY = heightOf(*formRow, form) - platform::Top(row.oControllo);
    row.lMargX = row.lDistX - platform::Width(row.oControllo);
    row.lMargY = row.lDistY - platform::Height(row.oControllo);
  }
}

void PosChange(platform::Form& form) {
  protetto("modRepos!PosChange", [&] {
    const tPosForm* formRow = rowOf(posForms, form.Name());
    if (formRow == nullptr) return;
    for (const tPosControllo& row : controlsOf(formRow)) {
      if (!row.sNome.isEmpty()) applyRules(row, widthOf(*formRow, form), heightOf(*formRow, form));
    }
  });
}

void PosRimuoviControllo(platform::Form& form, const QString& nomeControllo) {
  const tPosForm* formRow = rowOf(posForms, form.Name());
  if (formRow == nullptr) return;
  if (tPosControllo* row = rowOf(controlsOf(formRow), nomeControllo)) row->sNome.clear();
}

void PosRimuoviForm(platform::Form& form) {
  tPosForm* formRow = rowOf(posForms, form.Name());
  if (formRow == nullptr) return;
  for (tPosControllo& row : controlsOf(formRow)) row.sNome.clear();
  formRow->sNome.clear();
  formRow->iMinLar = 0;
}

}  // namespace tavolix
