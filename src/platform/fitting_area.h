#pragma once

#include <QScrollArea>

namespace platform {

// What a dialog holds, without a frame: as large as it wants to be, and scrolled where the screen
// has less. The controls go into widget().
class FittingArea final : public QScrollArea {
  Q_OBJECT
 public:
  explicit FittingArea(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
};

// Gives a window the size that it wants, as far as the screen has it.
void fitToScreen(QWidget& window);

}  // namespace platform
