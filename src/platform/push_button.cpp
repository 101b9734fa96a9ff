#include "platform/push_button.h"

#include <QPushButton>

#include "platform/icons.h"

namespace platform {

QPushButton* newButton(const ButtonSpec& spec, QWidget* parent) {
  auto* button = new QPushButton(QString::fromUtf8(spec.caption), parent);
  button->setObjectName(QString::fromLatin1(spec.name));
  button->setToolTip(QString::fromUtf8(spec.tip));
  if (*spec.icon != '\0') button->setIcon(icon(QString::fromLatin1(spec.icon)));
  if (*spec.caption == '\0') button->setAccessibleName(QString::fromUtf8(spec.tip));
  // Enter leads from field to field, and presses no button on its way.
  button->setAutoDefault(false);
  return button;
}

}  // namespace platform
