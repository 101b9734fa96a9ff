#pragma once

#include <QString>
#include <QVariant>

class QFocusEvent;
class QWidget;

namespace platform {

class DataControl;

// What an entry control bound to a column of a data control offers. Values are those of the
// record store: invalid for Null, text, number, day number, seconds, -1 and 0.
class BoundControl {
 public:
  BoundControl() = default;
  virtual ~BoundControl();
  BoundControl(const BoundControl&) = delete;
  BoundControl& operator=(const BoundControl&) = delete;

  // The bound control of a widget, or null if the widget is none.
  static BoundControl* of(QWidget* widget);

  virtual QWidget* widget() = 0;
  // What stands in the control; invalid for nothing entered.
  virtual QVariant Value() const = 0;
  // What stands in the control, as the user sees it.
  virtual QString Text() const = 0;
  // Puts a value in as if it had been typed: the control counts as changed.
  void SetValue(const QVariant& value);
  // Shows the stored value: the control counts as unchanged.
  void ShowValue(const QVariant& value);
  // True if Value() can be stored in a column of the control's kind (no half-typed date).
  virtual bool IsValid() const { return true; }
  // What stands in the control if it can be stored, else what is stored.
  QVariant ValidValue() const;

  // The column the control shows; empty for none.
  QString DataField() const { return field_; }
  void SetDataField(const QString& field);
  DataControl* DataSource() const { return source_; }
  void SetDataSource(DataControl* source);
  bool DataChanged() const { return changed_; }
  void SetDataChanged(bool changed) { changed_ = changed; }

 protected:
  // Puts the value in, without telling anyone.
  virtual void setContent(const QVariant& value) = 0;
  // To be called when the user has changed the content.
  void contentEdited();
  // To be called when the focus has left the control: writes the row if the content changed. A
  // menu or list popping up over the control does not count.
  void focusLeft(const QFocusEvent& event);
  void contentLeft();

 private:
  QString field_;
  DataControl* source_ = nullptr;
  bool changed_ = false;
};

}  // namespace platform
