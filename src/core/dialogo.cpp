#include "core/dialogo.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPushButton>

#include "core/modutil.h"
#include "platform/push_button.h"

namespace tavolix {

void PreparaDialogo(platform::Form& form) {
  RegistraForm(form);
  QObject::connect(
      &form, &platform::Form::windowGone, &form, [&form] { DeregistraForm(form); },
      Qt::SingleShotConnection);
  auto* help = form.Window()->findChild<QAbstractButton*>(QStringLiteral("cmdAiuto"));
  if (help != nullptr) CollegaAiuto(*help);
}

platform::Form& FormMain() {
  return platform::forms()[QStringLiteral("frmMain")];
}

void MostraDaMain(platform::Form& form) {
  form.ShowModal(&FormMain());
  FormMain().Show();
}

QHBoxLayout* rigaConferma(QWidget* window) {
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(platform::newButton({"cmdConferma", "&Conferma"}, window));
  row->addWidget(platform::newButton({"cmdAnnulla", "&Annulla"}, window));
  return row;
}

}  // namespace tavolix
