#include "workspace/frmrac.h"

#include <QApplication>
#include <QFontMetrics>
#include <algorithm>

#include "core/errore.h"
#include "core/modcuore.h"
#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/handlers.h"
#include "workspace/form_pages.h"
#include "workspace/frmmain.h"
#include "workspace/main_view.h"
#include "workspace/modrepos.h"

namespace tavolix {
namespace {

constexpr int kCharactersWide = 58;
constexpr double kLargestShare = 0.59;  // of the main window
constexpr int kDesignHeight = 200;      // pixels: no list is lower
constexpr int kMargin = 6;

}  // namespace

int iLarghezzaScheda() {
  const QFontMetrics metrics(QApplication::font());
  const int wanted = metrics.horizontalAdvance(u'0') * kCharactersWide;
  return platform::toTwips(std::min(wanted, static_cast<int>(designWidth() * kLargestShare)));
}

frmRac::frmRac(int iRac) : platform::Form(aRaccolte(iRac).sForm), iRac_(iRac) {}

void frmRac::loadOwner() {
  FrmMain().Load();
}

QWidget* frmRac::build() {
  QWidget* form = buildForm(iRac_, FrmMain().Area());
  form->hide();
  // The pages keep these margins at every size.
  form->resize(platform::toPixels(iLarghezzaScheda()), kDesignHeight);
  form->findChild<QWidget*>(QStringLiteral("panRecord"))
      ->resize(form->width() - kMargin, form->height() - kMargin);
  return form;
}

void frmRac::loaded() {
  auto* dbCurr = part<platform::DataControl>(QStringLiteral("dbCurr"));
  connect(dbCurr, &platform::DataControl::writeFailed, this, SegnalaErrore);
  platform::onSignal(dbCurr, &platform::DataControl::readFailed, &FrmMain(),
                     &frmMain::SegnalaLettura);
  const auto* grd = platform::forms()[QStringLiteral("frmGrid")].control<platform::DataGrid>(
      QStringLiteral("grd"));
  connect(grd, &platform::DataGrid::readRestored, dbCurr, &platform::DataControl::readAgain);
  focus_.watch(Window());
}

void frmRac::unloaded() {
  for (int j = 0; j < iNumeroCampi(iRac_); ++j) aCampi(iRac_, j).oControllo = nullptr;
}

void frmRac::resized() {
  PosChange(*this);
}

bool frmRac::wantsShortcut(int key, Qt::KeyboardModifiers modifiers) {
  return frmMain::bTastoGestMain(key, modifiers);
}

bool frmRac::keyDown(int key, Qt::KeyboardModifiers modifiers) {
  if (!FrmMain().TastiGestMain(key, modifiers)) return focus_.keyDown(key);
  // After the command, which may have to wait.
  runCommand([key] { EntryFocus::openList(key); });
  return true;
}

void RegistraFormRaccolte() {
  for (int iRac = 0; iRac < kRaccoltePrincipali; ++iRac) {
    platform::forms().add(aRaccolte(iRac).sForm, [iRac] { return std::make_unique<frmRac>(iRac); });
  }
}

}  // namespace tavolix
