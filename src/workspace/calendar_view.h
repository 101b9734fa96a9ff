#pragma once

#include <QLabel>

namespace tavolix {

// A day of the month view.
class DayCell final : public QLabel {
  Q_OBJECT
 public:
  explicit DayCell(QWidget* parent);

 Q_SIGNALS:
  void clicked();
  void doubleClicked();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent* event) override;
};

// The window of frmCalendario with all its controls. The cells stand in panGiorni, which has the
// focus while they are walked by keys.
QWidget* buildCalendarWindow();

}  // namespace tavolix
