#include "platform/line_box.h"

#include <QDropEvent>
#include <QFocusEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QValidator>
#include <algorithm>

namespace platform {
namespace {

QString onOneLine(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.remove(QChar(QChar::Null));
  for (QChar& letter : text) {
    const bool breaks = letter == QChar::LineSeparator || letter == QChar::ParagraphSeparator;
    if (breaks || letter.category() == QChar::Other_Control) letter = u' ';
  }
  return text;
}

}  // namespace

// Qt asks the validator about every edit, whichever way it came.
class LineBox::Cleaner final : public QValidator {
 public:
  explicit Cleaner(LineBox& box) : QValidator(&box), box_(box) {}

  State validate(QString& text, int& cursor) const override {
    if (!box_.showing_ && text != box_.shownText_) box_.clean(text, cursor);
    return Acceptable;
  }

 private:
  LineBox& box_;
};

LineBox::LineBox(QWidget* parent) : TextEdit(parent) {
  setValidator(new Cleaner(*this));
  connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { lastText_ = text; });
  // An edit that was refused leaves the text as it was.
  connect(this, &QLineEdit::textEdited, this, [this] {
    if (touched()) contentEdited();
  });
}

QVariant LineBox::Value() const {
  return touched() ? parsed(text()) : content_;
}

bool LineBox::IsValid() const {
  return !touched() || Text().isEmpty() || parsed(text()).isValid();
}

void LineBox::SetSelStart(int place) {
  deselect();
  setCursorPosition(place);
}

void LineBox::setContent(const QVariant& value) {
  content_ = value;
  showContent();
}

void LineBox::showContent() {
  const QScopedValueRollback guard(showing_, true);
  const QString full = shown(content_);
  if (text() != full) {
    setText(full);
    setCursorPosition(0);
  }
  shownText_ = text();
}

void LineBox::settle() {
  if (!IsValid()) return;
  content_ = Value();
  showContent();
}

void LineBox::focusInEvent(QFocusEvent* event) {
  focused_ = true;
  settle();
  TextEdit::focusInEvent(event);
}

void LineBox::focusOutEvent(QFocusEvent* event) {
  TextEdit::focusOutEvent(event);
  if (event->reason() == Qt::PopupFocusReason) return;
  focused_ = false;
  if (!IsValid()) complain(*this, complaint() + QStringLiteral(": ") + text(), complaint());
  settle();
  focusLeft(*event);
}

bool LineBox::isRefused(const QString& text) const {
  return !text.isEmpty() &&
         std::none_of(text.cbegin(), text.cend(), [this](QChar letter) { return takes(letter); });
}

void LineBox::putText(const QString& text) {
  if (!isRefused(text)) insert(text);
}

void LineBox::keyPressEvent(QKeyEvent* event) {
  const bool types = !event->text().isEmpty() && event->text().at(0).isPrint() &&
                     (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
  if (!types || !isRefused(event->text())) TextEdit::keyPressEvent(event);
}

void LineBox::inputMethodEvent(QInputMethodEvent* event) {
  if (!isRefused(event->commitString())) TextEdit::inputMethodEvent(event);
}

void LineBox::dropEvent(QDropEvent* event) {
  if (!isRefused(event->mimeData()->text())) TextEdit::dropEvent(event);
}

QString LineBox::onlyTaken(QString text) const {
  text = onOneLine(std::move(text));
  text.removeIf([this](QChar letter) { return !takes(letter); });
  return text;
}

void LineBox::clean(QString& text, int& cursor) const {
  const QString before = onlyTaken(text.left(cursor));
  text = before + onlyTaken(text.mid(cursor));
  cursor = static_cast<int>(before.size());
}

void LineBox::cut(QString& text, int& cursor, int length) {
  const int excess = std::min(static_cast<int>(text.size()) - length, cursor);
  if (excess <= 0) return;
  cursor -= excess;
  text.remove(cursor, excess);
}

}  // namespace platform
