#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>
#include <QVector>

class QWidget;

namespace platform {

// Where a window stands while it is neither maximised nor minimised: its frame's place, which is
// the same before and after the desktop has put the frame around it, and the size of its contents.
class WindowPlace final : public QObject {
 public:
  explicit WindowPlace(QWidget* window);

  // Moves the window so that its frame begins at `place`, in pixels of the desktop.
  void moveTo(const QPoint& place);
  // The frame's place with the contents' size, in pixels.
  QRect normal();

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void take();

  QWidget* window_;
  QRect normal_;
  QTimer settled_;
};

// `place` where the left end of its title bar is on one of the screens, the first being the main
// one. Otherwise each coordinate outside of the main screen becomes that of its corner.
QPoint broughtBack(const QPoint& place, const QVector<QRect>& screens);

}  // namespace platform
