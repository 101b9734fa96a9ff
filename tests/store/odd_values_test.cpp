#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "store/archive.h"

namespace store {
namespace {

using Limits = std::numeric_limits<double>;

// Written to a book's row, each value is found in the file as the column's kind has it, or refused.
TEST(OddValues, BecomeTheColumnsKindOrAreRefused) {
  struct Case {
    const char* field;
    QVariant value;
    const char* stored;  // as SQLite shows it; nullptr: refused
    int number = 0;
  };
  const std::vector<Case> cases = {{"Titolo", "", ""},
                                   {"Titolo", 1e300, "1e+300"},
                                   {"Titolo", QVariant(), "-"},
                                   {"Cod", QString(15, u'è'), "èèèèèèèèèèèèèèè"},
                                   {"Cod", QString(16, u'x'), nullptr, 3163},
                                   {"Note", QString(30001, u'x'), nullptr, 3163},
                                   {"Anno", " ", "-"},
                                   {"Anno", "12.25", "12.25"},
                                   {"Anno", 1.5F, "1.5"},
                                   {"Anno", Limits::max(), "1.79769313486232e+308"},
                                   {"Anno", -0.0, "0.0"},
                                   {"Anno", 9223372036854775807LL, "9.22337203685478e+18"},
                                   {"Anno", "1,5", nullptr, 3421},
                                   {"Anno", "1e400", nullptr, 3421},
                                   {"Anno", Limits::quiet_NaN(), nullptr, 3421},
                                   {"Anno", "nan", nullptr, 3421},
                                   {"Anno", Limits::infinity(), nullptr, 6},
                                   {"TipoRac", 32767, "32767"},
                                   {"TipoRac", -3.6, "-4"},
                                   {"TipoRac", 32768, nullptr, 6},
                                   {"TipoRac", -32769, nullptr, 6},
                                   {"TABAutoreID", "-2147483648", "-2147483648"},
                                   {"TABAutoreID", true, "-1"},
                                   {"TABAutoreID", 2147483648.0, nullptr, 6},
                                   {"DtaAcq", 2958465.5, "2958465.5"},  // noon of 31 December 9999
                                   {"DtaAcq", -657434, "-657434"},      // 1 January 100
                                   {"DtaAcq", -0.25, "-0.25"},
                                   {"DtaAcq", "1/1/2000", nullptr, 3421},
                                   {"DtaAcq", 2958466, nullptr, 6},
                                   {"DtaAcq", -657435, nullptr, 6},
                                   {"Autore", "Eco", nullptr, 3164},
                                   {"LIB.ID", 99, nullptr, 3164},
                                   {"LIB.ID", 2147483648LL, nullptr, 6},
                                   {"Nessuno", 1, nullptr, 3265}};
  const Archive archive;
  const RecordsetPtr rows = archive.open("SELECT * FROM Q_LIB WHERE MAIN.ID = 1");
  for (const Case& each : cases) {
    rows->Edit();
    const int number = failureOf([&] {
      rows->SetValue(each.field, each.value);
      rows->Update();
    });
    rows->CancelUpdate();
    EXPECT_EQ(number, each.number) << each.field << textOf(each.value).left(40).toStdString();
    if (each.stored == nullptr) continue;
    const QByteArray read = "SELECT " + QByteArray(each.field) + " FROM MAIN WHERE ID = 1";
    EXPECT_EQ(archive.outsideValues(read).toStdString(), each.stored) << each.field;
  }
  const RecordsetPtr list = archive.open("SELECT * FROM TAB WHERE ID = 1");
  for (const auto& [value, stored] :
       std::vector<std::pair<QVariant, int>>{{true, -1}, {false, 0}, {7, -1}, {"0", 0}, {-1, -1}}) {
    list->Edit();
    list->SetValue("Default", value);
    list->Update();
    EXPECT_EQ(list->Value("Default"), stored);
  }
}

// A new row of the most fields, each at the upper (0) or lower (1) end of its kind, or Null (2).
TEST(OddValues, AllFieldsAtTheirEnds) {
  const Archive archive;
  const Transaction transaction(*archive);
  for (const char* source :
       {"Q_LIB", "Q_RIV", "Q_AUD", "Q_VID", "Q_COM", "Q_MED", "Q_OGG", "Q_PER"}) {
    for (const int end : {0, 1, 2}) {
      const RecordsetPtr rows = archive.open(source);
      const auto wanted = [&](const FieldInfo& field) -> QVariant {
        if (field.column == "TipoRac") return QString("LRAVCMOP").indexOf(QLatin1Char(source[2]));
        if (field.column == "RacID" || field.column == "ID") return 2147483647 - end;
        if (end == 2) return {};
        if (field.kind == FieldKind::Text) return QString(end == 0 ? field.size : 0, u'è');
        if (field.kind == FieldKind::Number) return end == 0 ? Limits::max() : -Limits::max();
        if (field.kind == FieldKind::Date) return end == 0 ? 2958465.75 : -657434.0;
        if (field.kind == FieldKind::YesNo) return end - 1;
        return end == 0 ? 2147483647 : -2147483647;
      };
      rows->AddNew();
      for (const FieldInfo& field : rows->Fields()) {
        if (field.updatable) rows->SetValue(field.name, wanted(field));
      }
      rows->Update();
      const RecordsetPtr again = archive.open(source);
      again->SetBookmark(rows->LastModified());
      for (const FieldInfo& field : again->Fields()) {
        if (!field.updatable) continue;
        EXPECT_EQ(again->Value(field.name), wanted(field)) << source << field.name.toStdString();
      }
    }
  }
}

// Numbers that a table gives its rows itself end with a failure; no row is written over.
TEST(OddValues, KeysAtTheirEnd) {
  const Archive archive;
  for (const QByteArray source : {"MAIN", "TAB"}) {
    archive.outside("UPDATE sqlite_sequence SET seq = 2147483646 WHERE name = '" + source + "'");
    const RecordsetPtr rows =
        archive.open(source, source == "TAB" ? RecordsetType::Table : RecordsetType::Dynaset);
    const qint64 count = rows->RecordCount();
    rows->AddNew();
    rows->Update();
    for (int attempt = 0; attempt < 3; ++attempt) {
      EXPECT_EQ(failureOf([&] { rows->AddNew(), rows->Update(); }), 6);
    }
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value("ID"), 2147483647);
    EXPECT_EQ(archive.open(source)->RecordCount(), count + 1);
  }
  // What no key of the program can name is told, not cut.
  archive.outside("INSERT INTO MAIN (ID) VALUES (2147483648)");
  EXPECT_EQ(failureOf([&] { archive.open("MAIN"); }), 6);
}

// What another program left in a column: the value as it stands there, a blob as text. All ways of
// reading agree, and it can be written over.
TEST(OddValues, OfAForeignKind) {
  struct Case {
    const char* column;
    const char* literal;
    const char* value;
  };
  const std::vector<Case> cases = {{"Titolo", "x'41C3A842'", "AèB"},
                                   {"Titolo", "x'FF00'", "\uFFFD"},
                                   {"Titolo", "x''", ""},
                                   {"Titolo", "1.5", "1.5"},
                                   {"Titolo", "9e999", "Inf"},
                                   {"Anno", "'mille'", "mille"},
                                   {"Anno", "x'31'", "1"},
                                   {"Anno", "9e999", "inf"},
                                   {"Anno", "-9e999", "-inf"},
                                   {"DtaAcq", "'ieri'", "ieri"},
                                   {"DtaAcq", "1e20", "1e+20"},
                                   {"TipoRac", "99999", "99999"},
                                   {"TABAutoreID", "'2x'", "2x"},
                                   {"TABAutoreID", "1e20", "1e+20"},
                                   {"RacID", "x'00'", ""},
                                   {"RacID", "9223372036854775807", "9223372036854775807"}};
  const Archive archive;
  for (const auto& [column, literal, value] : cases) {
    archive.outside(QByteArray("UPDATE MAIN SET ") + column + " = " + literal + " WHERE ID = 5");
    const QString name(column);
    const RecordsetPtr table = archive.open("MAIN", RecordsetType::Table);
    for (const RecordsetPtr& rows :
         {table, archive.open("MAIN"), archive.open("SELECT * FROM MAIN ORDER BY " + name + ", ID"),
          archive.open(
              "SELECT DISTINCT ID, RacID, TipoRac, Titolo, Anno, DtaAcq, TABAutoreID FROM MAIN")}) {
      while (rows->Value("ID") != 5) rows->MoveNext();
      const QString read = rows->Value(name).toString().remove(QChar(0));
      EXPECT_EQ(read.toStdString(), value) << column << literal;
      if (rows != table) {
        EXPECT_EQ(rows->ValueAt(rows->AbsolutePosition(), rows->FieldIndex(name)),
                  rows->Value(name));
        rows->FindFirst(name + " Like '*' AND NOT " + name + " + 1 = 0 AND ID = 5");
        EXPECT_FALSE(rows->NoMatch()) << column << literal;
      }
    }
    archive.open("Q_LIB")->RecordCount();
    table->Edit();
    table->SetValue(name, 7);
    table->Update();
    EXPECT_EQ(textOf(table->Value(name)), "7");
  }
}

}  // namespace
}  // namespace store
