#include "archives/dialogo.h"

#include <QApplication>
#include <QPushButton>

#include "platform/handlers.h"

namespace tavolix {

void Collega(platform::Form& form, const char* nome, std::function<void()> opera) {
  platform::onCommand(form.control<QPushButton>(QString::fromLatin1(nome)), &QPushButton::clicked,
                      &form, std::move(opera));
}

bool bTastoDialogo(platform::Form& form, int key, const char* invio, const char* esc) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!enter && key != Qt::Key_Escape) return false;
  auto* button = qobject_cast<QPushButton*>(QApplication::focusWidget());
  if (!enter || button == nullptr) {
    button = form.control<QPushButton>(QString::fromLatin1(enter ? invio : esc));
  }
  button->click();
  return true;
}

}  // namespace tavolix
