#pragma once

#include <QGroupBox>

namespace platform {

// A frame with a caption. One that is too long for the screen is shown without its middle, and
// whole as a tool tip.
class Frame final : public QGroupBox {
  Q_OBJECT
 public:
  using QGroupBox::QGroupBox;

  void SetCaption(const QString& caption);
  QString Caption() const { return caption_; }

 private:
  QString caption_;
};

}  // namespace platform
