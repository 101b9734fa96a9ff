// A new record: counter and both rows, in one transaction.

#include "core/modcuore.h"
#include "desk.h"
#include "figures.h"
#include "platform/data_control.h"
#include "raw_file.h"
#include "workspace/frmmain.h"

namespace bench {
namespace {

constexpr int kWrites = 25;

// The columns that the program has filled in the row last added to a table, and their values:
// what the plain engine has to write too.
struct Filled {
  QByteArray table;
  QVector<std::pair<QByteArray, QByteArray>> values;

  QByteArray insert() const {
    QByteArray names;
    QByteArray places;
    for (const auto& [name, value] : values) {
      names += (names.isEmpty() ? "" : ", ") + name;
      places += places.isEmpty() ? "?" : ", ?";
    }
    return "INSERT INTO " + table + " (" + names + ") VALUES (" + places + ")";
  }
};

Filled lastRow(const RawFile& file, const QByteArray& table) {
  RawStatement row(file, "SELECT * FROM " + table + " ORDER BY ID DESC LIMIT 1");
  if (!row.step()) qFatal("no row was added");
  Filled filled{table, {}};
  for (int i = 0; i < row.columns(); ++i) {
    if (row.text(i) != nullptr) filled.values.emplaceBack(row.name(i), row.text(i));
  }
  row.reset();
  return filled;
}

// The three writes of a new record in one transaction.
class RawNew final {
 public:
  RawNew(RawFile& file, const Filled& main, const Filled& detail)
      : file_(file),
        counter_(file, "UPDATE CONT SET ID = ID + 1"),
        number_(file, "SELECT ID FROM CONT"),
        main_(file, withoutKey(main).insert()),
        detail_(file, detail.insert()),
        mainValues_(withoutKey(main)),
        detailValues_(detail) {}

  void add() {
    file_.run("BEGIN IMMEDIATE");
    counter_.execute();
    number_.step();
    const qint64 key = number_.number(0);
    number_.reset();
    write(main_, mainValues_, "RacID", key);
    write(detail_, detailValues_, "ID", key);
    file_.run("COMMIT");
  }

 private:
  // MAIN's own key is given by the engine.
  static Filled withoutKey(Filled filled) {
    filled.values.removeIf([](const auto& value) { return value.first == "ID"; });
    return filled;
  }

  static void write(RawStatement& statement, const Filled& filled, const QByteArray& keyColumn,
                    qint64 key) {
    int place = 0;
    for (const auto& [name, value] : filled.values) {
      statement.bind(++place, name == keyColumn ? key : value.toLongLong());
    }
    statement.execute();
  }

  RawFile& file_;
  RawStatement counter_;
  RawStatement number_;
  RawStatement main_;
  RawStatement detail_;
  Filled mainValues_;
  Filled detailValues_;
};

void newRecordScene(const QStringList& files) {
  const auto rows = tavolix::dbElenco().Recordset();
  const auto addOurs = [&] {
    const qint64 before = rows->RecordCount();
    const double seconds = secondsOf([] { tavolix::FrmMain().TastoAddNew(); });
    if (rows->RecordCount() != before + 1) qFatal("no record was added");
    return seconds;
  };
  addOurs();
  const RawFile written(files[0]);
  RawFile file(files[1]);
  RawNew rawNew(file, lastRow(written, "MAIN"), lastRow(written, "LIB"));
  Samples painted;
  const auto ours = [&] {
    const double seconds = addOurs();
    painted.append(seconds + secondsOf(showAll));
    return seconds;
  };
  const Sides sides = inTurn(kWrites, ours, [&] { return secondsOf([&] { rawNew.add(); }); });
  report("ours", sides.ours);
  report("painted", painted.mid(1));
  report("raw", sides.other);
}

QVector<Reading> newRecordFigure(const Ground& ground) {
  const QString nuovo = QStringLiteral("nuovo");
  const Found found = ground.play(nuovo, ground.twoCopies());
  return {compared(nuovo, sidesOf(found), 1.5),
          compared(nuovo + QStringLiteral("_dipinto"), sidesOf(found, "painted"), 0)};
}

}  // namespace

QVector<Figure> newRecordFigures() {
  return {{QStringLiteral("nuovo"), newRecordFigure, newRecordScene}};
}

}  // namespace bench
