#include "platform/text_box.h"

namespace platform {

QVariant TextBox::parsed(const QString& text) const {
  return text.isEmpty() ? QVariant() : QVariant(text);
}

}  // namespace platform
