#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QSignalSpy>
#include <csignal>
#include <limits>

#include "store/archive.h"

namespace store {
namespace {

using Values = QVector<std::pair<QString, QVariant>>;

void setAll(Recordset& rows, const Values& values) {
  for (const auto& [field, value] : values) rows.SetValue(field, value);
}

QString row(const Archive& archive, const QByteArray& columns, int id) {
  return archive.outsideValues(
      "SELECT " + columns +
      " FROM MAIN LEFT JOIN LIB ON RacID = LIB.ID WHERE MAIN.ID = " + QByteArray::number(id));
}

TEST(Write, ANewRowReachesBothTables) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_LIB");
  rows->AddNew();
  EXPECT_EQ(rows->Mode(), EditMode::Add);
  EXPECT_FALSE(rows->Value("Titolo").isValid());
  setAll(*rows, {{"LIB.ID", 50}, {"Titolo", "Nuovo"}, {"SottoTitolo", "due"}, {"TABAutoreID", 1}});
  EXPECT_EQ(rows->Value("Titolo"), "Nuovo");
  rows->Update();
  EXPECT_EQ(rows->Mode(), EditMode::None);
  EXPECT_EQ(row(archive, "MAIN.ID, RacID, LIB.ID, Titolo, SottoTitolo", 10), "10 50 50 Nuovo due");
  EXPECT_EQ(rows->Value("MAIN.ID"), 7);
  EXPECT_EQ(rows->RecordCount(), 8);
  rows->SetBookmark(rows->LastModified());
  EXPECT_EQ(rows->Value("MAIN.ID"), 10);
  EXPECT_EQ(rows->Value("Autore"), "Eco");
}

TEST(Write, AFailureLeavesNeitherRow) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_LIB");
  const QSignalSpy inserted(rows.get(), &Recordset::rowInserted);
  rows->AddNew();
  setAll(*rows, {{"MAIN.RacID", 11}, {"Titolo", "Nuovo"}});
  EXPECT_EQ(failureOf([&] { rows->Update(); }), 3022);
  EXPECT_EQ(archive.outsideValues("SELECT (SELECT count(*) FROM MAIN), (SELECT count(*) FROM LIB)"),
            "9 7");
  EXPECT_EQ(rows->RecordCount(), 7);
  EXPECT_EQ(inserted.count(), 0);
  // The row is still being edited: it can be mended.
  EXPECT_EQ(rows->Mode(), EditMode::Add);
  rows->SetValue("RacID", 51);
  rows->Update();
  EXPECT_EQ(row(archive, "LIB.ID, Titolo", 10), "51 Nuovo");
  EXPECT_EQ(inserted.count(), 1);
}

TEST(Write, OnlyTheColumnsThatWereSet) {
  for (const RecordsetType type : {RecordsetType::Table, RecordsetType::Dynaset}) {
    const Archive archive;
    const RecordsetPtr rows = archive.open("MAIN", type);
    EXPECT_FALSE(rows->Value("Cod").isValid());
    rows->Edit();
    rows->SetValue("titolo", "Mio");
    archive.outside("UPDATE MAIN SET Titolo = 'suo', Cod = 'suo', Valore = 99 WHERE ID = 1");
    rows->Update();
    EXPECT_EQ(row(archive, "Titolo, Cod, Valore", 1), "Mio suo 99.0");
    EXPECT_EQ(textOf(rows->Value("Cod")) + textOf(rows->Value("Titolo")), "suoMio");
  }
}

TEST(Write, ColumnsOfEitherTable) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("SELECT * FROM Q_GRUPPI_STEP1 WHERE MAIN.ID = 1");
  rows->Edit();
  setAll(*rows, {{"SottoTitolo", "nuovo"}});
  rows->Update();
  rows->Edit();
  setAll(*rows, {{"Titolo", "T"}, {"LIB.Edizione", "E"}, {"TABAutoreID", 3}});
  rows->Update();
  EXPECT_EQ(row(archive, "Titolo, SottoTitolo, Edizione", 1), "T nuovo E");
  EXPECT_EQ(rows->Value("Autore"), "Èlia");
  // A first table's change goes with a second's that fails.
  archive.outside("DELETE FROM LIB WHERE ID = 17");
  rows->Edit();
  setAll(*rows, {{"Titolo", "X"}, {"Edizione", "X"}});
  EXPECT_EQ(failureOf([&] { rows->Update(); }), 3167);
  EXPECT_EQ(row(archive, "Titolo", 1), "T");
}

TEST(Write, DeleteTakesBothRows) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_LIB");
  rows->MoveLast();
  rows->Delete();
  EXPECT_EQ(archive.outsideValues("SELECT ID FROM MAIN UNION SELECT ID FROM LIB"),
            "2 3 4 5 6 7 8 9 11 12 13 14 15 16");
}

TEST(Write, ValuesBecomeTheColumnsKind) {
  struct Case {
    const char* field;
    QVariant value;
    const char* stored;  // as SQLite shows it
  };
  const QString longest(15, u'è');
  const std::vector<Case> cases = {
      {"Titolo", "", ""},
      {"Titolo", 12, "12"},
      {"Titolo", QVariant(), "-"},
      {"Cod", longest, "èèèèèèèèèèèèèèè"},
      {"Anno", "", "-"},
      {"Anno", " ", "-"},
      {"Anno", "12.25", "12.25"},
      {"Anno", 1.5F, "1.5"},
      {"Anno", -1e300, "-1.0e+300"},
      {"TipoRac", 32767, "32767"},
      {"TipoRac", -3.6, "-4"},
      {"TABAutoreID", "-2147483648", "-2147483648"},
      {"TABAutoreID", true, "-1"},
      {"DtaAcq", 2958465.5, "2958465.5"},
      {"DtaAcq", -657434, "-657434"},
      {"DtaAcq", QVariant(), "-"},
  };
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  for (const Case& each : cases) {
    rows->Edit();
    rows->SetValue(each.field, each.value);
    rows->Update();
    EXPECT_EQ(row(archive, each.field, 1), each.stored) << each.field << each.stored;
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

TEST(Write, ValuesThatAreRefused) {
  struct Case {
    const char* field;
    QVariant value;
    int number;
  };
  const std::vector<Case> cases = {
      {"Autore", "Eco", 3164},
      {"MAIN.ID", 77, 3164},
      {"Cod", QString(16, u'x'), 3163},
      {"Note", QString(30001, u'x'), 3163},
      {"Anno", "abc", 3421},
      {"Anno", "1,5", 3421},
      {"Anno", std::numeric_limits<double>::quiet_NaN(), 3421},
      {"Anno", std::numeric_limits<double>::infinity(), 6},
      {"TipoRac", 32768, 6},
      {"TABAutoreID", 2147483648.0, 6},
      {"TABAutoreID", "x", 3421},
      {"DtaAcq", "1/1/2000", 3421},
      {"DtaAcq", 2958466, 6},
      {"DtaAcq", -657435, 6},
      {"Nessuno", 1, 3265},
  };
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_LIB");
  rows->Edit();
  for (const Case& each : cases) {
    EXPECT_EQ(failureOf([&] { rows->SetValue(each.field, each.value); }), each.number)
        << each.field << textOf(each.value).left(40).toStdString();
  }
  rows->SetValue("LIB.ID", 99);
  EXPECT_EQ(failureOf([&] { rows->Update(); }), 3164);
  EXPECT_EQ(archive.outsideValues("SELECT count(*) FROM LIB WHERE ID BETWEEN 11 AND 17"), "7");
}

TEST(Write, OutOfTurn) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  EXPECT_EQ(failureOf([&] { rows->SetValue("Titolo", "x"); }), 3020);
  EXPECT_EQ(failureOf([&] { rows->Update(); }), 3020);
  rows->Edit();
  rows->SetValue("Titolo", "x");
  rows->CancelUpdate();
  EXPECT_EQ(rows->Value("Titolo"), "Il nome della rosa");
  EXPECT_EQ(failureOf([&] { rows->Update(); }), 3020);
  rows->Edit();
  rows->SetValue("Titolo", "x");
  rows->MoveNext();
  EXPECT_EQ(rows->Mode(), EditMode::None);
  EXPECT_EQ(row(archive, "Titolo", 1), "Il nome della rosa");
  rows->AddNew();
  rows->SetValue("Titolo", "x");
  rows->Edit();
  EXPECT_EQ(rows->Value("Titolo"), "Il barone rampante");
  rows->MoveLast();
  rows->MoveNext();
  EXPECT_EQ(failureOf([&] { rows->Edit(); }), 3021);
  EXPECT_EQ(failureOf([&] { rows->Delete(); }), 3021);
  EXPECT_EQ(archive.outsideValues("SELECT count(*) FROM MAIN"), "9");
}

TEST(Write, NotInSetsThatCannotBeWritten) {
  const Archive archive;
  for (const RecordsetPtr& rows :
       {archive.open("MAIN", RecordsetType::Snapshot), archive.open("Q_GRUPPI_STEP2"),
        archive.open("Q_ELENCHI_MULTIPLI_STEP2"),
        archive.open("SELECT DISTINCT Titolo FROM MAIN")}) {
    EXPECT_FALSE(rows->Updatable());
    EXPECT_EQ(failureOf([&] { rows->AddNew(); }), 3027);
    EXPECT_EQ(failureOf([&] { rows->Edit(); }), 3027);
    EXPECT_EQ(failureOf([&] { rows->Delete(); }), 3027);
  }
}

TEST(Write, RowsDeletedByOthers) {
  for (const RecordsetType type : {RecordsetType::Table, RecordsetType::Dynaset}) {
    const Archive archive;
    const DatabasePtr other = OpenDatabase(archive.path());
    const RecordsetPtr rows = archive.open("MAIN", type);
    rows->MoveNext();
    rows->Edit();
    rows->SetValue("Titolo", "x");
    const RecordsetPtr same =
        other->OpenRecordset("SELECT * FROM MAIN WHERE ID = 2",
                             type == RecordsetType::Table ? RecordsetType::Dynaset : type);
    same->Delete();
    EXPECT_EQ(failureOf([&] { rows->Update(); }), 3167);
    rows->CancelUpdate();
    EXPECT_EQ(failureOf([&] { rows->Value("Titolo"); }), 3167);
    EXPECT_EQ(failureOf([&] { rows->Delete(); }), 3167);
    EXPECT_EQ(failureOf([&] { rows->RefreshRow(); }), 3167);
    EXPECT_FALSE(rows->ValueAt(1, 0).isValid());
    rows->MoveNext();
    EXPECT_EQ(rows->Value("ID"), 3);
    rows->Requery();
    EXPECT_EQ(valuesOf(*rows, "ID"), "1 3 4 5 6 7 8 9");
  }
}

// What one handle writes is seen by all of the process at once, also through joined lists.
TEST(Write, IsSeenByOtherHandles) {
  const Archive archive;
  const DatabasePtr other = OpenDatabase(archive.path());
  const RecordsetPtr seen = other->OpenRecordset("Q_LIB", RecordsetType::Snapshot);
  EXPECT_EQ(valuesOf(*seen, "Autore"), "Èlia calvino jr Eco Calvino - Calvino Eco");
  const RecordsetPtr list = archive.open("TAB", RecordsetType::Table);
  list->Edit();
  list->SetValue("Desc", "Umberto");
  list->Update();
  EXPECT_EQ(valuesOf(*seen, "Autore"), "Èlia calvino jr Umberto Calvino - Calvino Umberto");
  // Its own write does not hide what was written before it.
  const RecordsetPtr mine = archive.open("Q_LIB");
  EXPECT_EQ(mine->ValueAt(1, mine->FieldIndex("Valore")), 1.0);
  const RecordsetPtr main =
      other->OpenRecordset("SELECT * FROM MAIN WHERE ID = 6", RecordsetType::Dynaset);
  main->Edit();
  main->SetValue("Valore", 2);
  main->Update();
  mine->Edit();
  mine->SetValue("Titolo", "x");
  mine->Update();
  EXPECT_EQ(mine->ValueAt(1, mine->FieldIndex("Valore")), 2.0);
  {
    const Transaction transaction(*other);
    main->Edit();
    main->SetValue("Valore", 3);
    main->Update();
    EXPECT_EQ(mine->ValueAt(1, mine->FieldIndex("Valore")), 3.0);
  }
  EXPECT_EQ(mine->ValueAt(1, mine->FieldIndex("Valore")), 2.0);
}

TEST(Write, TransactionsNest) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  const auto rename = [&](const char* title) {
    rows->Edit();
    rows->SetValue("Titolo", title);
    rows->Update();
  };
  {
    Transaction outer(*archive);
    rename("a");
    {
      Transaction inner(*archive);
      rename("b");
      inner.Commit();
    }
    EXPECT_EQ(row(archive, "Titolo", 1), "Il nome della rosa");
    {
      const Transaction inner(*archive);
      rename("c");
    }
    EXPECT_EQ(rows->Value("Titolo"), "b");
    outer.Commit();
  }
  EXPECT_EQ(row(archive, "Titolo", 1), "b");
  EXPECT_EQ(failureOf([&] { archive->CommitTrans(); }), 3034);
  archive->Rollback();
  const DatabasePtr other = OpenDatabase(archive.path());
  archive->BeginTrans();
  rename("d");
  archive->Close();
  EXPECT_EQ(other->OpenRecordset("MAIN", RecordsetType::Table)->Value("Titolo"), "b");
  EXPECT_EQ(failureOf([&] { archive.outside("UPDATE MAIN SET Cod = 'libero'"); }), 0);
}

TEST(Write, SignalsTellRowsAndFields) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_LIB");
  QStringList told;
  const auto tell = [&](const QString& name) {
    return [&told, &rows, name](qint64 place) {
      told.append(QStringLiteral("%1 %2 of %3").arg(name).arg(place).arg(rows->RecordCount()));
    };
  };
  QObject::connect(rows.get(), &Recordset::rowAboutToBeInserted, tell("inserting"));
  QObject::connect(rows.get(), &Recordset::rowInserted, tell("inserted"));
  QObject::connect(rows.get(), &Recordset::rowAboutToBeRemoved, tell("removing"));
  QObject::connect(rows.get(), &Recordset::rowRemoved, tell("removed"));
  QObject::connect(rows.get(), &Recordset::moved, [&](qint64 from, qint64 to) {
    told.append(QStringLiteral("moved %1 %2").arg(from).arg(to));
  });
  QObject::connect(rows.get(), &Recordset::rowChanged,
                   [&](qint64 place, const QVector<int>& fields) {
                     QStringList names;
                     for (const int field : fields) names.append(rows->Fields()[field].name);
                     told.append(QStringLiteral("changed %1: %2").arg(place).arg(names.join(u' ')));
                   });
  QObject::connect(rows.get(), &Recordset::aboutToMove, [&] { told.append("moving"); });
  QObject::connect(rows.get(), &Recordset::aboutToUpdate, [&] { told.append("updating"); });
  QObject::connect(rows.get(), &Recordset::addStarted, [&] { told.append("adding"); });
  QObject::connect(rows.get(), &Recordset::aboutToRequery, [&] { told.append("requerying"); });
  QObject::connect(rows.get(), &Recordset::requeried, [&] { told.append("requeried"); });
  QObject::connect(rows.get(), &Recordset::closed, [&] { told.append("closed"); });
  const auto expectTold = [&](const QStringList& expected) {
    EXPECT_EQ(told.join("; ").toStdString(), expected.join("; ").toStdString());
    told.clear();
  };
  rows->MoveNext();
  expectTold({"moving", "moved 0 1"});
  rows->Edit();
  setAll(*rows, {{"Edizione", "x"}, {"Titolo", "y"}, {"Edizione", "z"}});
  rows->Update();
  expectTold({"updating", "changed 1: Titolo Edizione"});
  rows->Edit();
  rows->Update();
  expectTold({"updating"});
  rows->AddNew();
  setAll(*rows, {{"RacID", 60}});
  rows->Update();
  expectTold({"moving", "adding", "updating", "inserting 7 of 7", "inserted 7 of 8"});
  rows->Delete();
  expectTold({"removing 1 of 8", "removed 1 of 7"});
  rows->MovePrevious();
  expectTold({"moving", "moved -1 0"});
  rows->Requery();
  expectTold({"moving", "requerying", "requeried"});
  rows->Move(-1);
  rows->Move(-1);
  expectTold({"moving", "moved 0 -1", "moving", "moved -1 -1"});
  rows->Close();
  rows->Close();
  expectTold({"closed"});
}

// Those who show a row write what is pending when it is about to change.
TEST(Write, ListenersMayWrite) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  QObject::connect(rows.get(), &Recordset::aboutToMove, [&] {
    if (rows->Mode() != EditMode::None) rows->Update();
  });
  QObject::connect(rows.get(), &Recordset::aboutToUpdate, [&] { rows->SetValue("Cod", "dopo"); });
  rows->Edit();
  rows->SetValue("Titolo", "x");
  rows->MoveNext();
  EXPECT_EQ(row(archive, "Titolo, Cod", 1), "x dopo");
  rows->AddNew();
  rows->MoveLast();
  EXPECT_EQ(textOf(rows->Value("ID")) + textOf(rows->Value("Cod")), "10dopo");
}

TEST(Write, ARequeryThatFailsChangesNothing) {
  const Archive archive;
  archive->CreateQueryDef("Q_X", "SELECT * FROM MAIN WHERE ID > 2");
  const RecordsetPtr rows = archive.open("Q_X");
  rows->MoveNext();
  archive->DeleteQueryDef("Q_X");
  const QSignalSpy requerying(rows.get(), &Recordset::aboutToRequery);
  EXPECT_EQ(failureOf([&] { rows->Requery(); }), 3078);
  EXPECT_EQ(requerying.count(), 0);
  EXPECT_EQ(rows->Value("ID"), 4);
}

// A file size limit makes writes fail as a full disk does.
class FullDisk final {
 public:
  explicit FullDisk(rlim_t size) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = size;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
};

TEST(Write, ADiskErrorUndoesTheWholeTransaction) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  int failures = 0;
  {
    const FullDisk disk(65536);
    Transaction transaction(*archive);
    for (int i = 0; i < 2000; ++i) {
      failures += failureOf([&] {
                    rows->AddNew();
                    rows->SetValue("Note", QString(30000, u'x'));
                    rows->Update();
                  }) == 3043;
    }
    EXPECT_EQ(failureOf([&] { transaction.Commit(); }), 3043);
  }
  // Once it was undone, nothing more is written outside of it.
  EXPECT_GT(failures, 100);
  EXPECT_EQ(archive.outsideValues("SELECT count(*) FROM MAIN"), "9");
  rows->Requery();
  EXPECT_EQ(rows->RecordCount(), 9);
  rows->AddNew();
  rows->Update();
  EXPECT_EQ(archive.outsideValues("SELECT count(*) FROM MAIN"), "10");
  EXPECT_TRUE(archive->IntegrityCheck());
}

TEST(Write, AfterAFailureTheRowCanBeWritten) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  rows->Edit();
  rows->SetValue("Titolo", "x");
  {
    const FullDisk disk(0);
    EXPECT_EQ(failureOf([&] { rows->Update(); }), 3043);
  }
  for (const char* lock : {"BEGIN IMMEDIATE", "BEGIN; SELECT * FROM CFG"}) {
    const std::shared_ptr<void> other = archive.hold(lock);
    EXPECT_EQ(failureOf([&] { rows->Update(); }), 3260) << lock;
    EXPECT_EQ(rows->Mode(), EditMode::Edit);
  }
  EXPECT_EQ(row(archive, "Titolo", 1), "Il nome della rosa");
  rows->Update();
  EXPECT_EQ(row(archive, "Titolo", 1), "x");
}

}  // namespace
}  // namespace store
