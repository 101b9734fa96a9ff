#include "archives/frmaskpassword.h"

#include <QDialog>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/dialogo.h"
#include "platform/frame.h"
#include "platform/handlers.h"
#include "platform/password_box.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 50;

}  // namespace

frmAskPassword::frmAskPassword()
    : platform::Form(QStringLiteral("frmAskPassword"), {.title = "Controllo codice d'accesso",
                                                        .icon = "tavolix",
                                                        .enter = "cmdConferma",
                                                        .box = "cmdConferma"}) {}

frmAskPassword& FrmAskPassword() {
  return platform::forms().as<frmAskPassword>(QStringLiteral("frmAskPassword"));
}

QWidget* frmAskPassword::build() {
  auto* window = new QDialog;
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
  PreparaDialogo(*this);
  platform::onClick(this, "cmdConferma", [this] { Hide(); });
}

void frmAskPassword::activated() {
  Control(QStringLiteral("txtCodice"))->setFocus();
}

// The window is a new one each time: one that is shown again as soon as it has been hidden is not
// always given the keyboard.
QString frmAskPassword::sChiediCodice(const QString& sRichiesta, const QString& sTitolo) {
  if (!sTitolo.isEmpty()) Window()->setWindowTitle(sTitolo);
  auto* pan = control<platform::Frame>(QStringLiteral("pan"));
  auto* txtCodice = control<platform::PasswordBox>(QStringLiteral("txtCodice"));
  pan->SetCaption(sRichiesta);
  txtCodice->setAccessibleName(sRichiesta.trimmed());
  txtCodice->clear();
  ShowModal(nullptr);
  QString code = txtCodice->text().trimmed().toUpper();
  Unload();
  return code;
}

// Escape does nothing: it must not pass for the empty code that takes a guard away.
bool frmAskPassword::keyDown(int key, Qt::KeyboardModifiers) {
  return key == Qt::Key_Escape;
}

void RegistraFormAskPassword() {
  platform::forms().add<frmAskPassword>(QStringLiteral("frmAskPassword"));
}

}  // namespace tavolix
