#include "platform/check_box.h"

namespace platform {

CheckBox::CheckBox(QWidget* parent) : QCheckBox(parent) {
  connect(this, &QCheckBox::clicked, this, [this] { contentEdited(); });
}

QString CheckBox::Text() const {
  return isChecked() ? QStringLiteral("Sì") : QStringLiteral("No");
}

void CheckBox::focusOutEvent(QFocusEvent* event) {
  QCheckBox::focusOutEvent(event);
  focusLeft(*event);
}

}  // namespace platform
