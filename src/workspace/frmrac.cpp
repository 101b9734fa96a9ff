#include "workspace/frmrac.h"

#include <QApplication>
#include <QFontMetrics>

#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modutil.h"
#include "core/raccolte.h"
#include "platform/check_box.h"
#include "platform/data_control.h"
#include "platform/masked_box.h"
#include "platform/memo_box.h"
#include "workspace/form_pages.h"
#include "workspace/frmmain.h"
#include "workspace/modrepos.h"

namespace tavolix {
namespace {

constexpr int kCharactersWide = 58;
constexpr int kDesignHeight = 480;  // pixels, before the list gives the form its own
constexpr int kMargin = 6;

bool isLoneModifier(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
         key == Qt::Key_AltGr || key == Qt::Key_Meta || key == Qt::Key_CapsLock;
}

bool isInPopup(const QWidget* widget) {
  return (widget->window()->windowFlags() & Qt::WindowType_Mask) == Qt::Popup;
}

bool movesFocus(int key) {
  return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

}  // namespace

int iLarghezzaScheda() {
  const QFontMetrics metrics(QApplication::font());
  return platform::toTwips(metrics.horizontalAdvance(u'0') * kCharactersWide);
}

frmRac::frmRac(const Module& module, int iRac)
    : platform::Form(QString::fromLatin1(module.form)), module_(module), iRac_(iRac) {}

void frmRac::loadOwner() {
  FrmMain().Load();
}

QWidget* frmRac::build() {
  // Lists and calendar join with their windows; until then their buttons are disabled.
  const FormHandlers handlers{[](int) {}, [](QWidget*) {}};
  QWidget* form = buildForm(module_, iRac_, handlers, FrmMain().Area());
  form->hide();
  // The pages keep these margins at every size.
  form->resize(platform::toPixels(iLarghezzaScheda()), kDesignHeight);
  form->findChild<QWidget*>(QStringLiteral("panRecord"))
      ->resize(form->width() - kMargin, form->height() - kMargin);
  return form;
}

void frmRac::loaded() {
  QObject::connect(
      part<platform::DataControl>(QStringLiteral("dbCurr")), &platform::DataControl::writeFailed,
      this, [](int numero, const QString& descrizione) { Errore(numero, descrizione, {}); },
      Qt::QueuedConnection);
  focus_ = QObject::connect(qApp, &QApplication::focusChanged, this, &frmRac::focusMoved);
}

void frmRac::unloaded() {
  QObject::disconnect(focus_);
  bInNote_ = false;
  for (int j = 0; j < iNumeroCampi(iRac_); ++j) aCampi(iRac_, j).oControllo = nullptr;
}

void frmRac::resized() {
  PosChange(*this);
}

bool frmRac::wantsShortcut(int key, Qt::KeyboardModifiers modifiers) {
  return frmMain::bTastoGestMain(key, modifiers);
}

bool frmRac::keyDown(int key, Qt::KeyboardModifiers modifiers) {
  if (FrmMain().TastiGestMain(key, modifiers)) return true;
  bool used = false;
  if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !bInNote_) {
    CampoSuccessivo();
    used = true;
  }
  if (!isLoneModifier(key) && !movesFocus(key)) ApriComboAttivo();
  return used;
}

bool frmRac::holds(const QWidget* widget) const {
  for (; widget != nullptr && IsLoaded(); widget = widget->parentWidget()) {
    if (widget->objectName() == Name()) return true;
    if (widget->isWindow()) return false;
  }
  return false;
}

void frmRac::focusMoved(QWidget* from, QWidget* to) {
  // While a combo's list is open its box stays marked.
  if (to != nullptr && isInPopup(to)) return;
  if (from != nullptr && (holds(from) || isInPopup(from))) {
    EvidenziaFocus(false);
    bInNote_ = false;
  }
  if (to != nullptr && holds(to)) gotFocus(to);
}

void frmRac::gotFocus(QWidget* control) {
  if (platform::BoundControl::of(control) == nullptr) return;
  if (qobject_cast<platform::CheckBox*>(control) != nullptr) return;
  EvidenziaFocus(true);
  auto* digits = qobject_cast<platform::MaskedBox*>(control);
  if (digits != nullptr && digits->IsNumber()) digits->SetSelStart(0);
  bInNote_ = qobject_cast<platform::MemoBox*>(control) != nullptr;
}

void RegistraFormRaccolte() {
  int iRac = 0;
  for (const Module& module : modules()) {
    platform::forms().add(QString::fromLatin1(module.form),
                          [&module, iRac] { return std::make_unique<frmRac>(module, iRac); });
    ++iRac;
  }
}

}  // namespace tavolix
