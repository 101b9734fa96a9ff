#include "archives/frmask.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/dialogo.h"
#include "platform/handlers.h"
#include "platform/screen_room.h"
#include "platform/text_box.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 44;

}  // namespace

frmAsk::frmAsk()
    : platform::Form(
          QStringLiteral("frmAsk"),
          {.title = "Tavolix", .icon = "tavolix", .enter = "cmdConferma", .escape = "cmdAnnulla"}) {
}

QWidget* frmAsk::build() {
  auto* window = new QDialog;
  auto* txtAsk = new platform::TextBox(window);
  txtAsk->setObjectName(QStringLiteral("txtAsk"));
  txtAsk->setMinimumWidth(platform::widthOfCharacters(txtAsk, kCharacters));
  auto* lblAsk = new QLabel(window);
  lblAsk->setObjectName(QStringLiteral("lblAsk"));
  lblAsk->setTextFormat(Qt::PlainText);
  lblAsk->setWordWrap(true);
  lblAsk->setBuddy(txtAsk);
  auto* column = new QVBoxLayout(window);
  column->addWidget(lblAsk);
  column->addWidget(txtAsk);
  column->addStretch(1);
  column->addLayout(rigaConferma(window));
  return window;
}

void frmAsk::loaded() {
  PreparaDialogo(*this);
  platform::onClick(this, "cmdConferma", [this] { Hide(); });
  platform::onClick(this, "cmdAnnulla", [this] { cmdAnnulla_Click(); });
  focus_.watch(Window());
}

void frmAsk::activated() {
  Control(QStringLiteral("txtAsk"))->setFocus();
}

void frmAsk::cmdAnnulla_Click() {
  control<QLineEdit>(QStringLiteral("txtAsk"))->clear();
  Hide();
}

QString sChiedi(const QString& sEtichetta, const QString& sValore, int iLunghezza) {
  platform::Form& form = platform::forms()[QStringLiteral("frmAsk")];
  form.control<QLabel>(QStringLiteral("lblAsk"))->setText(sEtichetta);
  auto* txtAsk = form.control<QLineEdit>(QStringLiteral("txtAsk"));
  txtAsk->setMaxLength(iLunghezza);
  txtAsk->setText(sValore);
  form.ShowModal(nullptr);
  QString answer = txtAsk->text();
  form.Unload();
  return answer;
}

void RegistraFormAsk() {
  platform::forms().add<frmAsk>(QStringLiteral("frmAsk"));
}

}  // namespace tavolix
