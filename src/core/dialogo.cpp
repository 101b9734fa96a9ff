#include "core/dialogo.h"

#include <QAbstractButton>

#include "core/modutil.h"

namespace tavolix {

void PreparaDialogo(platform::Form& form) {
  RegistraForm(form);
  QObject::connect(
      &form, &platform::Form::windowGone, &form, [&form] { DeregistraForm(form); },
      Qt::SingleShotConnection);
  auto* help = form.Window()->findChild<QAbstractButton*>(QStringLiteral("cmdAiuto"));
  if (help != nullptr) CollegaAiuto(*help);
}

}  // namespace tavolix
