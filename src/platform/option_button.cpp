#include "platform/option_button.h"

#include <QRadioButton>

namespace platform {

QRadioButton* newOption(const char* name, const QString& caption, QWidget* group) {
  auto* option = new QRadioButton(caption, group);
  option->setObjectName(QString::fromLatin1(name));
  const auto follow = [option](bool chosen) {
    option->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
  };
  follow(false);
  QObject::connect(option, &QRadioButton::toggled, option, follow);
  return option;
}

}  // namespace platform
