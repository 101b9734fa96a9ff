#include "platform/password_box.h"

namespace platform {

PasswordBox::PasswordBox(QWidget* parent) : QLineEdit(parent) {
  setEchoMode(QLineEdit::Password);
  setContextMenuPolicy(Qt::NoContextMenu);
  setStyleSheet(QStringLiteral("lineedit-password-character: %1").arg(int{'*'}));
}

}  // namespace platform
