#include "assist/frmsin.h"

#include <QCheckBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "platform/handlers.h"
#include "platform/icons.h"
#include "platform/push_button.h"
#include "platform/random_source.h"
#include "platform/screen_reader.h"
#include "platform/screen_room.h"
#include "platform/system_path.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 52;
constexpr int kLines = 5;
constexpr int kLamp = 32;

constexpr platform::ButtonSpec kButtons[] = {
    {"cmdPrecedente", "&Precedente", "", "precedente"},
    {"cmdSuccessivo", "&Successivo", "", "successivo"},
    {"cmdEsci", "&Esci", "", "esci"},
};

const QString kSetting = QStringLiteral("SuggAvvio");

void settings() {
  ImpostaFileIni(sPathCompleto(QStringLiteral("tvx.ini")));
  ImpostaSezioneIni(QStringLiteral("Application"));
}

QHBoxLayout* newHead(QWidget* window) {
  auto* lamp = new QLabel(window);
  lamp->setPixmap(platform::icon(QStringLiteral("suggerimenti")).pixmap(kLamp));
  auto* lblNr = new QLabel(window);
  lblNr->setObjectName(QStringLiteral("lblNr"));
  auto* row = new QHBoxLayout;
  row->addWidget(lamp);
  row->addWidget(lblNr, 1);
  return row;
}

QPlainTextEdit* newTip(QWidget* window) {
  auto* txtNote = new QPlainTextEdit(window);
  txtNote->setObjectName(QStringLiteral("txtNote"));
  txtNote->setReadOnly(true);
  txtNote->setTabChangesFocus(true);
  platform::nameControl(*txtNote, QStringLiteral("Suggerimento"));
  txtNote->setMinimumWidth(platform::widthOfCharacters(txtNote, kCharacters));
  txtNote->setMinimumHeight(txtNote->fontMetrics().lineSpacing() * kLines);
  return txtNote;
}

}  // namespace

frmSin::frmSin()
    : platform::Form(QStringLiteral("frmSin"),
                     {.title = "Suggerimenti...", .icon = "suggerimenti", .escape = "cmdEsci"}) {}

QWidget* frmSin::build() {
  auto* window = new QDialog;
  auto* chkSuggAvvio = new QCheckBox(QStringLiteral("Mostra suggerimenti all'avvio"), window);
  chkSuggAvvio->setObjectName(QStringLiteral("chkSuggAvvio"));
  auto* column = new QVBoxLayout(window);
  column->addLayout(newHead(window));
  column->addWidget(newTip(window), 1);
  column->addWidget(chkSuggAvvio);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  for (const platform::ButtonSpec& button : kButtons) {
    buttons->addWidget(platform::newButton(button, window));
  }
  column->addLayout(buttons);
  // Its arrow points to the right, from there.
  window->findChild<QPushButton*>(QStringLiteral("cmdSuccessivo"))
      ->setLayoutDirection(Qt::RightToLeft);
  return window;
}

void frmSin::loaded() {
  PreparaDialogo(*this);
  int mostra = 0;
  settings();
  auto* chkSuggAvvio = control<QCheckBox>(QStringLiteral("chkSuggAvvio"));
  if (bLeggiInt(kSetting, mostra)) chkSuggAvvio->setChecked(mostra != 0);
  platform::onCommand(chkSuggAvvio, &QCheckBox::clicked, this,
                      [this](bool bMostra) { chkSuggAvvio_Click(bMostra); });
  platform::onClick(this, "cmdPrecedente", [this] { vai(-1); });
  platform::onClick(this, "cmdSuccessivo", [this] { vai(1); });
  platform::onClick(this, "cmdEsci", [this] { Unload(); });
}

void frmSin::unloaded() {
  rsSin_ = nullptr;
  if (dbSin_) ChiudiDB(dbSin_);
  dbSin_ = nullptr;
}

void frmSin::activated() {
  Control(QStringLiteral("cmdEsci"))->setFocus();
}

void frmSin::Carica(const QString& sPath, const QString& sGruppo, platform::Form* owner) {
  const bool bAperto = protetto("frmSin!Carica", [&] {
    Load();
    apri(sPath, sGruppo);
    return rsSin_->RecordCount() > 0;
  });
  if (!bAperto) return Unload();
  ShowModal(owner);
  Unload();
}

void frmSin::apri(const QString& sPath, const QString& sGruppo) {
  dbSin_ = store::OpenDatabase(platform::systemPath(sPath));
  rsSin_ = dbSin_->OpenRecordset(QStringLiteral("SELECT * FROM SIN where grp = ") + sApici(sGruppo),
                                 store::RecordsetType::Snapshot);
  if (rsSin_->RecordCount() == 0) return;
  rsSin_->MoveLast();
  iIndice_ = platform::nextInt(static_cast<int>(rsSin_->RecordCount()));
  MostraSIN();
}

void frmSin::MostraSIN() {
  rsSin_->MoveFirst();
  rsSin_->Move(iIndice_);
  control<QLabel>(QStringLiteral("lblNr"))
      ->setText(
          QStringLiteral("Suggerimento nr. %1 di %2").arg(iIndice_ + 1).arg(rsSin_->RecordCount()));
  if (rsSin_->NoMatch() || rsSin_->Eof()) return;
  control<QPlainTextEdit>(QStringLiteral("txtNote"))
      ->setPlainText(NullAStringa(rsSin_->Value(QStringLiteral("note"))));
}

void frmSin::vai(qint64 lPassi) {
  iIndice_ = std::clamp<qint64>(iIndice_ + lPassi, 0, rsSin_->RecordCount() - 1);
  MostraSIN();
}

void frmSin::chkSuggAvvio_Click(bool bMostra) {
  settings();
  bScriviStr(kSetting, bMostra ? QStringLiteral("1") : QStringLiteral("0"));
}

void RegistraFormSin() {
  platform::forms().add<frmSin>(QStringLiteral("frmSin"));
}

}  // namespace tavolix
