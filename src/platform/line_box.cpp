#include "platform/line_box.h"

#include <QApplication>
#include <QFocusEvent>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QToolTip>
#include <QValidator>
#include <algorithm>

namespace platform {
namespace {

constexpr int kTellMilliseconds = 8000;

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
    if (box_.showing_ || text == box_.shownText_) return Acceptable;
    if (box_.isRefused(text, cursor)) {
      cursor += static_cast<int>(box_.lastText_.size() - text.size());
      text = box_.lastText_;
    } else {
      box_.clean(text, cursor);
    }
    return Acceptable;
  }

 private:
  LineBox& box_;
};

LineBox::LineBox(QWidget* parent) : QLineEdit(parent) {
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

void LineBox::complain() {
  QApplication::beep();
  const QString message = complaint() + QStringLiteral(": ") + text();
  if (auto* status = window()->findChild<QStatusBar*>())
    status->showMessage(message, kTellMilliseconds);
  if (isVisible()) QToolTip::showText(mapToGlobal(QPoint(0, height())), complaint(), this);
}

void LineBox::focusInEvent(QFocusEvent* event) {
  focused_ = true;
  settle();
  QLineEdit::focusInEvent(event);
}

void LineBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() == Qt::PopupFocusReason) return;
  focused_ = false;
  if (!IsValid()) complain();
  settle();
  focusLeft(*event);
}

bool LineBox::isRefused(const QString& text, int cursor) const {
  const auto end = text.cbegin() + cursor;
  const auto added = std::mismatch(text.cbegin(), end, lastText_.cbegin(), lastText_.cend()).first;
  return added != end && std::none_of(added, end, [this](QChar letter) { return takes(letter); });
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
