#pragma once

#include <QVector>
#include <QWidget>
#include <memory>
#include <utility>

namespace platform {

// A drawing (SVG) of a fixed size, sharp on any screen. Colours of it can be replaced by others.
class Picture final : public QWidget {
  Q_OBJECT
 public:
  using Colors = QVector<std::pair<QByteArray, QByteArray>>;

  // The file's path, and the colours to be replaced with what takes their place.
  explicit Picture(const QString& file, const Colors& colors = {}, QWidget* parent = nullptr);
  ~Picture() override;

  QSize sizeHint() const override;

 Q_SIGNALS:
  void pressed();  // by the mouse, or any key

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class Drawing;
  std::unique_ptr<Drawing> drawing_;
};

}  // namespace platform
