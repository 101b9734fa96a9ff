#include "archives/rapporto_riparazione.h"

#include <QLocale>
#include <QSaveFile>
#include <algorithm>

#include "archives/percorsi.h"
#include "core/errore.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/clock.h"
#include "store/file_failure.h"

namespace tavolix {
namespace {

using State = store::RepairedRow::State;

struct Gruppo {
  State state;
  const char* title;
};

constexpr Gruppo kGroups[] = {{State::Lost, "Perduti"},
                              {State::Half, "Senza la loro altra meta'"},
                              {State::Doubtful, "Dubbi, da controllare"}};

QString number(qint64 value) {
  return QLocale().toString(value);
}

qint64 halves(const store::RepairReport& report) {
  return std::count_if(report.rows.begin(), report.rows.end(),
                       [](const store::RepairedRow& row) { return row.state == State::Half; });
}

QString lineOf(const store::RepairedRow& row) {
  const bool known = row.collection >= 0 && row.collection < kRaccolte;
  const QString place = known ? aRaccolte(row.collection).sNome : row.table;
  const QString title = row.title.isEmpty() ? QStringLiteral("(titolo sconosciuto)") : row.title;
  return QStringLiteral("  %1: %2 [%3 %4]\n")
      .arg(place, title, row.table, QString::number(row.key));
}

QString groupOf(const store::RepairReport& report, const Gruppo& group) {
  QString lines;
  for (const store::RepairedRow& row : report.rows) {
    if (row.state == group.state) lines += lineOf(row);
  }
  if (lines.isEmpty()) return {};
  return QLatin1String(group.title) + QStringLiteral(":\n") + lines + u'\n';
}

QString countsOf(const store::RepairReport::Table& table) {
  const QString more = table.isLostKnown ? QString() : QStringLiteral(", forse di piu'");
  return QStringLiteral("%1: %2 righe sicure, %3 dubbie, %4 perdute%5\n")
      .arg(table.name, number(table.sure), number(table.doubtful), number(table.lost), more);
}

void writeText(const QString& path, const QString& text) {
  QSaveFile file(path);
  const QByteArray bytes = text.toUtf8();
  const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
  if (!written || !file.commit()) store::failAtFile(store::file_failure::kDenied, path);
}

}  // namespace

QString sRapportoRiparazione(const store::RepairReport& report, const QString& sArchivio) {
  const QString when = QLocale().toString(platform::now(), QLocale::ShortFormat);
  QString text = QStringLiteral("Riparazione dell'archivio %1, %2\n").arg(sArchivio, when);
  text += QStringLiteral("Il file danneggiato e' conservato in %1\n\n").arg(report.original);
  for (const store::RepairReport::Table& table : report.tables) text += countsOf(table);
  text += u'\n';
  for (const Gruppo& group : kGroups) text += groupOf(report, group);
  return text;
}

QString sEsitoRiparazione(const store::RepairReport& report) {
  QStringList parts;
  const auto tell = [&](const char* what, qint64 count) {
    if (count > 0) parts << QLatin1String(what) + number(count);
  };
  tell("righe perdute: ", report.lost());
  if (!report.isAllKnown()) parts << QStringLiteral("altre righe perdute, non si sa quante");
  tell("righe dubbie: ", report.doubtful());
  tell("record a meta': ", halves(report));
  tell("voci di tabella senza testo: ", report.placeholders);
  if (report.isGuardLost) {
    parts << QStringLiteral("il codice d'accesso non e' piu' leggibile e l'archivio resta chiuso");
  }
  return parts.join(QStringLiteral("; "));
}

void DiRiparazione(const store::RepairReport& report, const QString& sPath) {
  const QString result = sEsitoRiparazione(report);
  if (report.isSound || result.isEmpty()) return;
  const QString file = sFileEsatto(sPath) + QStringLiteral(".recupero.txt");
  const bool written =
      ignorando([&] { writeText(file, sRapportoRiparazione(report, sNomeArchivio(sPath))); });
  const QString list = written ? QStringLiteral("L'elenco e' nel file %1")
                               : QStringLiteral("L'elenco non si e' potuto scrivere nel file %1");
  const QString text = QStringLiteral(
      "L'archivio era danneggiato: %1.\r%2\rIl file danneggiato e' conservato in %3");
  iMsg(text.arg(result, list.arg(file), report.original), 0);
}

}  // namespace tavolix
