#include "ledger.h"

namespace tavolix {
namespace {

constexpr std::size_t kGroup = 500;

QString placed(QString text, int number) {
  const Collection& collection = kCollections[number];
  return text.replace("$n", QString::number(number))
      .replace("$detail", collection.detail)
      .replace("$column", collection.column)
      .replace("$children", collection.children)
      .replace("$parent", collection.parent);
}

bool hasChildren(int number) {
  return *kCollections[number].children != '\0';
}

QString rowsOf(int number) {
  const QString children =
      hasChildren(number) ? "SELECT $parent AS p, count(*) AS c FROM $children GROUP BY $parent"
                          : "SELECT NULL AS p, 0 AS c";
  return placed(
      "SELECT $n, RacID, CAST(Note AS INTEGER), CAST($column AS INTEGER), ifnull(c, 0)"
      " FROM MAIN LEFT JOIN $detail ON $detail.ID = RacID LEFT JOIN (" +
          children + ") ON p = RacID WHERE TipoRac = $n",
      number);
}

Ledger without(Ledger ledger, const Command& command, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) ledger.rows.erase({command.collection, command.keys[i]});
  return ledger;
}

}  // namespace

Command::Command(const QByteArray& line) {
  const QByteArrayList words = line.simplified().split(' ');
  name = words.value(0);
  collection = words.value(1).toInt();
  key = words.value(2).toInt();
  value = words.value(3).toInt();
  for (const QByteArray& word : words.mid(4)) keys.push_back(word.toInt());
}

int Ledger::count(int collection) const {
  return static_cast<int>(
      std::distance(rows.lower_bound({collection, 0}), rows.lower_bound({collection + 1, 0})));
}

Ledger Ledger::after(const Command& command) const {
  Ledger result = *this;
  const std::pair place(command.collection, command.key);
  const std::pair fresh(command.collection, counter + 1);
  if (command.name == "clear") return without(result, command, command.keys.size());
  if (command.name == "delete") {
    result.rows.erase(place);
  } else if (command.name == "add" || command.name == "copy") {
    const Row original = command.name == "copy" ? rows.at(place) : Row{};
    result.rows[fresh] = {original.note, original.detail, 0};
    ++result.counter;
  } else {
    Row& row = result.rows.at(place);
    row.note = command.value;
    if (command.name == "edit") row.detail = command.value;
  }
  return result;
}

std::vector<Ledger> Ledger::duringOrAfter(const Command& command) const {
  std::vector<Ledger> result{*this, after(command)};
  for (std::size_t done = kGroup; done < command.keys.size(); done += kGroup) {
    result.push_back(without(*this, command, done));
  }
  return result;
}

QString Ledger::differences(const Ledger& other) const {
  QString text = QStringLiteral("counters %1 %2;").arg(counter).arg(other.counter);
  const auto show = [&text](const char* sign, const auto& entry) {
    const auto& [place, row] = entry;
    text += QStringLiteral(" %1%2/%3: %4 %5 %6;")
                .arg(QLatin1String(sign))
                .arg(place.first)
                .arg(place.second)
                .arg(row.note)
                .arg(row.detail)
                .arg(row.children);
  };
  const auto lacks = [](const Ledger& ledger, const auto& entry) {
    const auto found = ledger.rows.find(entry.first);
    return found == ledger.rows.end() || !(found->second == entry.second);
  };
  for (const auto& entry : rows) {
    if (lacks(other, entry)) show("-", entry);
  }
  for (const auto& entry : other.rows) {
    if (lacks(*this, entry)) show("+", entry);
  }
  return text.left(1000);
}

Ledger readLedger(const ProgramFolder& folder) {
  QStringList parts;
  for (int number = 0; number < 8; ++number) parts << rowsOf(number);
  Ledger ledger;
  ledger.counter = folder.found("SELECT ID FROM CONT").toInt();
  for (const QString& line : folder.found(parts.join(" UNION ALL ")).split('\n')) {
    const QStringList cells = line.split('|');
    if (cells.size() != 5) continue;
    ledger.rows[{cells[0].toInt(), cells[1].toInt()}] = {cells[2].toInt(), cells[3].toInt(),
                                                         cells[4].toInt()};
  }
  return ledger;
}

QString contradictions(const ProgramFolder& folder) {
  const char* const questions[] = {
      "SELECT 'main row without $detail row', RacID FROM MAIN WHERE TipoRac = $n"
      " AND RacID NOT IN (SELECT ID FROM $detail)",
      "SELECT '$detail row without main row', ID FROM $detail"
      " WHERE ID NOT IN (SELECT RacID FROM MAIN WHERE TipoRac = $n)",
      "SELECT DISTINCT '$children row without record', $parent FROM $children"
      " WHERE $parent NOT IN (SELECT ID FROM $detail)",
  };
  QStringList parts{
      "SELECT 'double', RacID FROM MAIN GROUP BY RacID HAVING count(*) > 1",
      "SELECT 'beyond the counter', RacID FROM MAIN WHERE RacID > (SELECT min(ID) FROM CONT)"};
  for (int number = 0; number < 8; ++number) {
    for (const char* question : questions) {
      if (hasChildren(number) || !QString(question).contains("$children")) {
        parts << placed(question, number);
      }
    }
  }
  return folder.found(parts.join(" UNION ALL ")).left(500);
}

void addRecords(const ProgramFolder& folder, int collection, int count) {
  QString text =
      "BEGIN; INSERT INTO MAIN (RacID, TipoRac, Cod, Titolo)"
      " WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
      QString::number(count) +
      ") SELECT ID + i, $n, 'C' || i, 'Titolo ' || i FROM n, CONT;"
      "INSERT INTO $detail (ID) SELECT RacID FROM MAIN, CONT WHERE RacID > CONT.ID;";
  if (hasChildren(collection)) {
    text +=
        "INSERT INTO $children ($parent, Note) SELECT RacID, 'Voce' FROM MAIN, CONT"
        " WHERE RacID > CONT.ID;";
  }
  text += "UPDATE CONT SET ID = (SELECT max(RacID) FROM MAIN); COMMIT";
  folder.outside(placed(text, collection));
}

}  // namespace tavolix
