#include "archives/frmaskpassword.h"

#include <QDialog>
#include <QPushButton>
#include <QVBoxLayout>

#include "archives/dialogo.h"
#include "platform/frame.h"
#include "platform/icons.h"
#include "platform/password_box.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 50;

}  // namespace

frmAskPassword::frmAskPassword() : platform::Form(QStringLiteral("frmAskPassword")) {}

frmAskPassword& FrmAskPassword() {
  return static_cast<frmAskPassword&>(platform::forms()[QStringLiteral("frmAskPassword")]);
}

QWidget* frmAskPassword::build() {
  auto* window = new QDialog;
  window->setWindowTitle(QStringLiteral("Controllo codice d'accesso"));
  window->setWindowIcon(platform::windowIcon(QStringLiteral("tavolix")));
  auto* pan = new platform::Frame(window);
  pan->setObjectName(QStringLiteral("pan"));
  pan->SetCaption(QStringLiteral(" Digitare il codice "));
  auto* txtCodice = new platform::PasswordBox(pan);
  txtCodice->setObjectName(QStringLiteral("txtCodice"));
  txtCodice->setMinimumWidth(platform::widthOfCharacters(txtCodice, kCharacters));
  (new QVBoxLayout(pan))->addWidget(txtCodice);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(platform::newButton({"cmdConferma", "&Conferma"}, window));
  auto* column = new QVBoxLayout(window);
  column->addWidget(pan);
  column->addStretch(1);
  column->addLayout(buttons);
  return window;
}

void frmAskPassword::loaded() {
  Collega(*this, "cmdConferma", [this] { Hide(); });
}

void frmAskPassword::activated() {
  Control(QStringLiteral("txtCodice"))->setFocus();
}

QString frmAskPassword::sChiediCodice(const QString& sRichiesta) {
  auto* pan = control<platform::Frame>(QStringLiteral("pan"));
  auto* txtCodice = control<platform::PasswordBox>(QStringLiteral("txtCodice"));
  pan->SetCaption(sRichiesta);
  txtCodice->setAccessibleName(sRichiesta.trimmed());
  txtCodice->clear();
  ShowModal(nullptr);
  return txtCodice->text().trimmed().toUpper();
}

// The window's box confirms; what has been answered may go.
bool frmAskPassword::queryUnload() {
  if (!IsVisible()) return true;
  Hide();
  return false;
}

// Escape does nothing: it must not pass for the empty code that takes a guard away.
bool frmAskPassword::keyDown(int key, Qt::KeyboardModifiers) {
  if (key == Qt::Key_Escape) return true;
  return bTastoDialogo(*this, key, "cmdConferma", "cmdConferma");
}

void RegistraFormAskPassword() {
  platform::forms().add(QStringLiteral("frmAskPassword"),
                        [] { return std::make_unique<frmAskPassword>(); });
}

}  // namespace tavolix
