#include "store/sql_tokens.h"

#include <cmath>

#include "store/failure.h"

namespace store::sql {
namespace {

constexpr qsizetype kLongestText = 1 << 20;

class Tokenizer {
 public:
  explicit Tokenizer(const QString& text) : text_(text) {}

  QVector<Token> run() {
    for (skipBlanks(); at_ < text_.size(); skipBlanks()) tokens_.append(next());
    tokens_.append(Token{TokenKind::End, {}, {}, at_});
    return std::move(tokens_);
  }

 private:
  QChar peek(qsizetype ahead = 0) const {
    return at_ + ahead < text_.size() ? text_.at(at_ + ahead) : QChar();
  }

  void skipBlanks() {
    while (at_ < text_.size() && text_.at(at_).isSpace()) ++at_;
  }

  static bool beginsName(QChar c) { return c.isLetter() || c == u'_'; }
  static bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

  Token next() {
    const QChar c = peek();
    if (beginsName(c)) return name();
    if (isDigit(c) || (c == u'.' && isDigit(peek(1)))) return number();
    if (c == u'\'' || c == u'"') return quoted(c, TokenKind::Text);
    if (c == u'[') return quoted(u']', TokenKind::Quoted);
    return symbol();
  }

  Token name() {
    const qsizetype start = at_;
    while (beginsName(peek()) || isDigit(peek())) ++at_;
    return {TokenKind::Name, text_.mid(start, at_ - start), {}, start};
  }

  Token number() {
    const qsizetype start = at_;
    bool whole = true;
    while (isDigit(peek())) ++at_;
    if (peek() == u'.') {
      whole = false;
      ++at_;
      while (isDigit(peek())) ++at_;
    }
    if (peek().toLower() == u'e' && exponentFollows()) {
      whole = false;
      at_ += isDigit(peek(1)) ? 1 : 2;
      while (isDigit(peek())) ++at_;
    }
    return {TokenKind::Number, text_.mid(start, at_ - start), numberValue(start, whole), start};
  }

  bool exponentFollows() const {
    return isDigit(peek(1)) || ((peek(1) == u'+' || peek(1) == u'-') && isDigit(peek(2)));
  }

  QVariant numberValue(qsizetype start, bool whole) const {
    const QStringView digits = QStringView(text_).mid(start, at_ - start);
    bool fits = false;
    const qlonglong integer = whole ? digits.toLongLong(&fits) : 0;
    if (fits) return integer;
    const double real = digits.toDouble(&fits);
    if (!fits || !std::isfinite(real)) {
      throw Failure(failure::kOverflow, QStringLiteral("Numero troppo grande: %1").arg(digits));
    }
    return real;
  }

  Token quoted(QChar end, TokenKind kind) {
    const qsizetype start = at_++;
    QString content;
    for (;; ++at_) {
      if (at_ >= text_.size()) fail(start, QStringLiteral("manca la chiusura di"));
      const QChar c = text_.at(at_);
      if (c != end) {
        content += c;
      } else if (kind == TokenKind::Text && peek(1) == end) {
        content += c;
        ++at_;
      } else {
        break;
      }
    }
    ++at_;
    return {kind, content, {}, start};
  }

  Token symbol() {
    static const QString two[] = {QStringLiteral("<>"), QStringLiteral("<="), QStringLiteral(">=")};
    for (const QString& pair : two) {
      if (QStringView(text_).mid(at_, 2) == pair) {
        at_ += 2;
        return {TokenKind::Symbol, pair, {}, at_ - 2};
      }
    }
    const QChar c = peek();
    if (!QStringLiteral("=<>()+-*/&,.;").contains(c)) fail(at_, QStringLiteral("segno inatteso"));
    ++at_;
    return {TokenKind::Symbol, QString(c), {}, at_ - 1};
  }

  [[noreturn]] void fail(qsizetype place, const QString& what) const {
    throw Failure(failure::kSyntax, QStringLiteral("Errore di sintassi nella query: %1 \"%2\"")
                                        .arg(what, text_.mid(place, 40)));
  }

  const QString& text_;
  qsizetype at_ = 0;
  QVector<Token> tokens_;
};

}  // namespace

QVector<Token> tokenize(const QString& text) {
  if (text.size() > kLongestText) {
    throw Failure(failure::kTooComplex, QStringLiteral("Testo della query troppo lungo"));
  }
  return Tokenizer(text).run();
}

}  // namespace store::sql
