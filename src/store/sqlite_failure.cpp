#include <sqlite3.h>

#include <QRegularExpression>
#include <algorithm>

#include "store/connection.h"

namespace store {
namespace {

struct Message {
  int code;
  int number;
  const char* text;
};

constexpr Message kMessages[] = {
    {SQLITE_FULL, failure::kDiskFull, "Spazio su disco esaurito"},
    {SQLITE_IOERR, failure::kDiskError, "Errore di lettura o scrittura su disco"},
    {SQLITE_CORRUPT, failure::kDamaged, "L'archivio e' danneggiato"},
    {SQLITE_NOTADB, failure::kUnknownFormat, "Il file non e' un archivio riconosciuto"},
    {SQLITE_BUSY, failure::kLocked, "L'archivio e' bloccato da un altro programma"},
    {SQLITE_LOCKED, failure::kLocked, "L'archivio e' bloccato da un'altra operazione"},
    {SQLITE_READONLY, failure::kReadOnly, "L'archivio e' di sola lettura"},
    {SQLITE_PERM, failure::kCannotOpen, "Accesso all'archivio negato"},
    {SQLITE_AUTH, failure::kCannotOpen, "Operazione non ammessa sull'archivio"},
    {SQLITE_CANTOPEN, failure::kCannotOpen, "Impossibile aprire l'archivio"},
    {SQLITE_TOOBIG, failure::kTextTooLong, "Il valore e' troppo lungo"},
    {SQLITE_CONSTRAINT, failure::kDuplicateKey, "Valore duplicato o non ammesso"},
    {SQLITE_MISMATCH, failure::kConversion, "Valore non valido"},
    {SQLITE_INTERRUPT, failure::kTooComplex, "Query troppo complessa"},
    {SQLITE_NOMEM, failure::kOutOfMemory, "Memoria insufficiente"},
};

// What SQLite says of a statement beyond its limits: it has no code of its own.
constexpr const char* kLimits[] = {"parser stack overflow", "too large", "too many", "at most"};

bool isBeyondLimits(const QString& detail) {
  return std::any_of(std::begin(kLimits), std::end(kLimits),
                     [&](const char* limit) { return detail.contains(QLatin1String(limit)); });
}

struct Sentence {
  const char* pattern;  // with the name it is about
  const char* text;
};

// What SQLite says of a statement or a value, and the same for the user. The name comes last.
constexpr Sentence kSentences[] = {
    {"no such column: (.+)", "campo sconosciuto: "},
    {"no such table: (.+)", "tabella sconosciuta: "},
    {"no such function: (.+)", "funzione sconosciuta: "},
    {"ambiguous column name: (.+)", "campo presente in piu' tabelle: "},
    {"near \"(.+)\": syntax error", "errore di sintassi vicino a "},
    {"unrecognized token: \"(.+)\"?", "errore di sintassi vicino a "},
    {"wrong number of arguments to function (.+)", "numero di argomenti errato: "},
    {"UNIQUE constraint failed: (.+)", "valore gia' presente in "},
    {"NOT NULL constraint failed: (.+)", "valore mancante in "},
    {"incomplete input()", "testo incompleto"},
    {"integer overflow()", "numero troppo grande"},
};

// The same for the user, after what has been said already; nothing where no sentence is known.
QString inItalian(const QString& detail) {
  for (const Sentence& sentence : kSentences) {
    const QRegularExpression pattern(
        QRegularExpression::anchoredPattern(QLatin1String(sentence.pattern)));
    const QRegularExpressionMatch match = pattern.match(detail);
    if (match.hasMatch()) {
      return QStringLiteral(": ") + QString::fromUtf8(sentence.text) + match.captured(1);
    }
  }
  return {};
}

}  // namespace

void throwFailure(const SQLite::Exception& exception) {
  const int code = exception.getErrorCode() & 0xff;
  if (exception.getExtendedErrorCode() == SQLITE_IOERR_DATA) {
    throw Failure(failure::kPageDamaged,
                  QStringLiteral("L'archivio e' danneggiato: una sua pagina non e' piu' quella che "
                                 "e' stata scritta. Occorre ripararlo"));
  }
  const QString detail = QString::fromUtf8(exception.what());
  for (const Message& message : kMessages) {
    if (message.code == code) {
      throw Failure(message.number, QString::fromUtf8(message.text) + inItalian(detail));
    }
  }
  if (isBeyondLimits(detail)) {
    throw Failure(failure::kTooComplex, QStringLiteral("Query troppo complessa"));
  }
  throw Failure(failure::kSyntax, QStringLiteral("Errore nella query") + inItalian(detail));
}

}  // namespace store
