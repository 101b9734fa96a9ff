#include "platform/memo_box.h"

#include <QMimeData>
#include <QScopedValueRollback>
#include <algorithm>

namespace platform {

MemoBox::MemoBox(QWidget* parent) : TextEdit(parent) {
  setTabChangesFocus(true);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(this, &QPlainTextEdit::textChanged, this, &MemoBox::onEdited);
}

QVariant MemoBox::Value() const {
  if (!document()->isModified()) return content_;
  const QString text = toPlainText().remove(QChar(QChar::Null));
  return text.isEmpty() ? QVariant() : QVariant(text);
}

void MemoBox::setContent(const QVariant& value) {
  const QScopedValueRollback guard(showing_, true);
  content_ = value;
  setPlainText(value.toString());
  shownLength_ = length();
}

// The document counts the end of its last paragraph too.
int MemoBox::length() const {
  return document()->characterCount() - 1;
}

void MemoBox::onEdited() {
  if (showing_) return;
  const QScopedValueRollback guard(showing_, true);
  cutExcess();
  if (document()->isModified()) contentEdited();
}

// Takes away the end of what was just put in; it ends at the cursor.
void MemoBox::cutExcess() {
  const int excess = length() - std::max(maxLength_, shownLength_);
  if (maxLength_ <= 0 || excess <= 0) return;
  QTextCursor cursor = textCursor();
  cursor.joinPreviousEditBlock();
  const int end = cursor.position();
  cursor.setPosition(std::max(end - excess, 0));
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  cursor.endEditBlock();
}

void MemoBox::focusOutEvent(QFocusEvent* event) {
  TextEdit::focusOutEvent(event);
  focusLeft(*event);
}

void MemoBox::putText(const QString& text) {
  QMimeData pasted;
  pasted.setText(text);
  insertFromMimeData(&pasted);
}

}  // namespace platform
