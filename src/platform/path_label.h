#pragma once

#include <QLabel>

namespace platform {

// A line of text that may be longer than its place, as a path is: shown without its middle then,
// and whole as a tool tip and to screen readers.
class PathLabel final : public QLabel {
  Q_OBJECT
 public:
  explicit PathLabel(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QString shown() const;
};

}  // namespace platform
