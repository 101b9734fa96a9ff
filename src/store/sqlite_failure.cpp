#include <sqlite3.h>

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

}  // namespace

void throwFailure(const SQLite::Exception& exception) {
  const int code = exception.getErrorCode() & 0xff;
  if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB) ++misreadings;
  const QString detail = QString::fromUtf8(exception.what());
  for (const Message& message : kMessages) {
    if (message.code == code) {
      throw Failure(message.number,
                    QStringLiteral("%1 (%2)").arg(QString::fromUtf8(message.text), detail));
    }
  }
  if (isBeyondLimits(detail)) {
    throw Failure(failure::kTooComplex, QStringLiteral("Query troppo complessa (%1)").arg(detail));
  }
  throw Failure(failure::kSyntax, QStringLiteral("Errore nella query: %1").arg(detail));
}

}  // namespace store
