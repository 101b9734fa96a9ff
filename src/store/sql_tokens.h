#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

namespace store::sql {

enum class TokenKind { Name, Quoted, Text, Number, Symbol, End };

struct Token {
  TokenKind kind = TokenKind::End;
  QString text;    // a name without brackets, a text without quotes, a symbol
  QVariant value;  // of a number
  qsizetype place = 0;

  bool isSymbol(QLatin1String symbol) const { return kind == TokenKind::Symbol && text == symbol; }
  // A word of the language; a name in brackets never is one.
  bool isWord(QLatin1String word) const {
    return kind == TokenKind::Name && text.compare(word, Qt::CaseInsensitive) == 0;
  }
};

// Splits a text of the record engine's query language. Names may stand in square brackets, texts
// in single or double quotes with the quote doubled inside. Fails with 3075 at what is neither.
QVector<Token> tokenize(const QString& text);

}  // namespace store::sql
