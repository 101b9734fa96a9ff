#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace tavolix {

// What the boxes of a record form do as the focus comes and goes, and with the keys that lead
// from field to field.
class EntryFocus final : public QObject {
  Q_OBJECT
 public:
  // Begins to watch the boxes within a form's window; ends when that window has gone.
  void watch(QWidget* window);
  // True in a box of several lines, where Enter is part of the text.
  bool bInNote() const { return bInNote_; }
  // Enter goes to the next field; any key in a combo drops down its list. True if it is used up.
  bool keyDown(int key) const;
  // The latter alone.
  static void openList(int key);

 private:
  void focusMoved(QWidget* from, QWidget* to);
  void gotFocus(QWidget* control);
  bool holds(const QWidget* widget) const;

  QPointer<QWidget> window_;
  bool bInNote_ = false;
};

}  // namespace tavolix
