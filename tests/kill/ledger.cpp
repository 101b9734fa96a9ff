#include "ledger.h"

#include <algorithm>
#include <sstream>

namespace tavolix {

bool Ledger::isSound() const {
  return std::all_of(rows.begin(), rows.end(), [this](const auto& entry) {
    const auto& [place, row] = entry;
    return row.mains == 1 && row.details == 1 && place.second <= counter;
  });
}

std::vector<int> Ledger::keys(int collection) const {
  std::vector<int> keys;
  for (const auto& [place, row] : rows) {
    if (place.first == collection) keys.push_back(place.second);
  }
  return keys;
}

Ledger Ledger::after(const Command& command) const {
  Ledger result = *this;
  const std::pair place(command.collection, command.key);
  if (command.name == "clear") {
    std::erase_if(result.rows,
                  [&](const auto& entry) { return entry.first.first == command.collection; });
    return result;
  }
  if (command.name == "delete") {
    result.rows.erase(place);
  } else if (command.name == "add" || command.name == "copy") {
    Row row = command.name == "copy" ? rows.at(place) : Row{};
    row.children = 0;
    result.rows[{command.collection, ++result.counter}] = row;
  } else if (!command.name.isEmpty()) {
    Row& row = result.rows.at(place);
    (command.name == "title" ? row.title : row.note) = command.value;
    if (command.name == "edit") row.detail = command.value;
  }
  return result;
}

std::vector<Ledger> Ledger::duringOrAfter(const Command& command) const {
  return {*this, after(command)};
}

std::string Ledger::differences(const Ledger& other) const {
  std::vector<std::pair<const std::pair<int, int>, Row>> differing;
  std::set_symmetric_difference(rows.begin(), rows.end(), other.rows.begin(), other.rows.end(),
                                std::back_inserter(differing));
  std::ostringstream text;
  if (counter != other.counter) text << "counters " << counter << ' ' << other.counter << ' ';
  for (const auto& [place, row] : differing) {
    text << place.first << '/' << place.second << ": " << row.mains << ' ' << row.title << ' '
         << row.note << ' ' << row.details << ' ' << row.detail << ' ' << row.children << ", ";
  }
  return text.str().substr(0, 1000);
}

Ledger readLedger(const ProgramFolder& folder) {
  QStringList parts{
      "SELECT TipoRac AS c, RacID AS k, 1 AS mains, CAST(Titolo AS INTEGER) AS title,"
      " CAST(Note AS INTEGER) AS note, 0 AS details, 0 AS detail, 0 AS children FROM MAIN"};
  for (int number = 0; number < 8; ++number) {
    const auto [detail, column, box, children, parent] = kCollections[number];
    parts << QStringLiteral("SELECT %1, ID, 0, 0, 0, 1, CAST(%2 AS INTEGER), 0 FROM %3")
                 .arg(number)
                 .arg(column, detail);
    if (*children == '\0') continue;
    parts << QStringLiteral("SELECT %1, %2, 0, 0, 0, 0, 0, 1 FROM %3")
                 .arg(number)
                 .arg(parent, children);
  }
  Ledger ledger;
  ledger.counter = folder.found("SELECT ID FROM CONT").toInt();
  const QString rows = folder.found(
      "SELECT c, k, sum(mains), sum(title), sum(note), sum(details), sum(detail), sum(children)"
      " FROM (" +
      parts.join(" UNION ALL ") + ") GROUP BY c, k");
  for (const QString& line : rows.split('\n', Qt::SkipEmptyParts)) {
    QVector<int> cells;
    for (const QString& cell : line.split('|')) cells << cell.toInt();
    ledger.rows[{cells[0], cells[1]}] = {cells[2], cells[3], cells[4],
                                         cells[5], cells[6], cells[7]};
  }
  return ledger;
}

void addRecords(const ProgramFolder& folder, int collection, int count) {
  const auto [detail, column, box, children, parent] = kCollections[collection];
  const QString added = " SELECT RacID FROM MAIN, CONT WHERE RacID > CONT.ID;";
  QString text = QStringLiteral(
                     "BEGIN; INSERT INTO MAIN (RacID, TipoRac, Titolo)"
                     " WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1)"
                     " SELECT ID + i, %2, 'Titolo ' || i FROM n, CONT;")
                     .arg(count)
                     .arg(collection);
  text += QStringLiteral("INSERT INTO %1 (ID)").arg(detail) + added;
  if (*children != '\0')
    text += QStringLiteral("INSERT INTO %1 (%2)").arg(children, parent) + added;
  folder.outside(text + "UPDATE CONT SET ID = (SELECT max(RacID) FROM MAIN); COMMIT");
}

}  // namespace tavolix
