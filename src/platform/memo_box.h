#pragma once

#include "platform/bound_control.h"
#include "platform/text_edit.h"

namespace platform {

// Text of several lines; Tab goes to the next control. The text put in stays as it is until the
// user edits it.
class MemoBox final : public TextEdit<QPlainTextEdit>, public BoundControl {
  Q_OBJECT
  Q_PROPERTY(int MaxLength READ MaxLength WRITE SetMaxLength)
 public:
  explicit MemoBox(QWidget* parent = nullptr);

  QWidget* widget() override { return this; }
  QVariant Value() const override;
  QString Text() const override { return toPlainText(); }
  // Most characters that can be entered, 0 without limit. What is too much is not taken; a longer
  // text put in cannot get longer still.
  int MaxLength() const { return maxLength_; }
  void SetMaxLength(int length) { maxLength_ = length; }

 protected:
  void setContent(const QVariant& value) override;
  void focusOutEvent(QFocusEvent* event) override;
  void putText(const QString& text) override;

 private:
  int length() const;
  void onEdited();
  void cutExcess();

  QVariant content_;
  int maxLength_ = 0;
  int shownLength_ = 0;
  bool showing_ = false;
};

}  // namespace platform
