#pragma once

#include "platform/line_box.h"

namespace platform {

// A line of text; at most maxLength() characters.
class TextBox final : public LineBox {
  Q_OBJECT
 public:
  using LineBox::LineBox;

 protected:
  QVariant parsed(const QString& text) const override;
  QString shown(const QVariant& value) const override { return value.toString(); }
};

}  // namespace platform
