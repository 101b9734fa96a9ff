#pragma once

#include "platform/bound_control.h"
#include "platform/text_edit.h"

namespace platform {

// What the entry controls of one line have in common. The value put in stays as it is until the
// user edits its text, even where the text cannot show all of it.
class LineBox : public TextEdit<QLineEdit>, public BoundControl {
  Q_OBJECT
 public:
  explicit LineBox(QWidget* parent = nullptr);

  QWidget* widget() override { return this; }
  QVariant Value() const override;
  QString Text() const override { return text(); }
  bool IsValid() const override;
  // Selects nothing and puts the cursor before a character, counted from 0.
  void SetSelStart(int place);

 protected:
  // The value a text stands for; invalid if it stands for none.
  virtual QVariant parsed(const QString& text) const = 0;
  // The text a value is shown as.
  virtual QString shown(const QVariant& value) const = 0;
  // True for a character that may be entered. What brings in no such one leaves text and selection
  // as they are.
  virtual bool takes(QChar) const { return true; }
  // Takes out of a text just edited what does not belong there; `cursor` is the place in it behind
  // what was typed or pasted. Line breaks and the like become blanks.
  virtual void clean(QString& text, int& cursor) const;
  // What is wrong with a text that is not valid, for the user.
  virtual QString complaint() const { return QStringLiteral("Valore non valido"); }

  // Makes what was typed the value, if it is valid, and shows it in its full form.
  void settle();
  bool focused() const { return focused_; }
  // The text before the edit that is being made.
  const QString& lastText() const { return lastText_; }
  // Cuts a text to a length by taking away the end of what was just put in.
  static void cut(QString& text, int& cursor, int length);

  void setContent(const QVariant& value) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void putText(const QString& text) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  class Cleaner;
  bool touched() const { return text() != shownText_; }
  void showContent();
  bool isRefused(const QString& text) const;
  QString onlyTaken(QString text) const;

  QVariant content_;
  QString shownText_;  // of content_
  QString lastText_;   // before the edit that is being made
  bool showing_ = false;
  bool focused_ = false;
};

}  // namespace platform
