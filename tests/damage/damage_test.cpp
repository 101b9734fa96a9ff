// Archives spoiled in thousands of ways: what is shown is what their tables hold, or a failure.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QSet>
#include <QTemporaryDir>
#include <algorithm>

#include "damage/damages.h"
#include "damage/tables.h"
#include "harm/archive_file.h"
#include "harm/chance.h"
#include "store/archive.h"
#include "store/connection.h"

namespace store {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
constexpr unsigned kMostSeconds = kSanitized ? 600 : 60;  // for one file
constexpr qint64 kMostSteps = 10'000'000;                 // of a query
constexpr qint64 kMostMegabytes = 1000;                   // of memory, for all files

const char* const kLists[] = {"Q_LIB", "Q_RIV", "Q_AUD",    "Q_VID",    "Q_COM",   "Q_MED",
                              "Q_OGG", "Q_PER", "Q_RIVSUB", "Q_AUDSUB", "Q_PERSUB"};

// An index may hold a text in other letters, capital or small: that is the same text.
bool isSame(const QVariant& a, const QVariant& b) {
  return compareValues(a, b) == 0;
}
bool isSameRow(const harm::Row& a, const harm::Row& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

// One file: each look at it is right, fails or is wrong.
class Look final {
 public:
  Look(const QString& path, const QHash<QString, QString>& queries)
      : tables_(path), path_(path), queries_(queries) {}

  void everything() {
    attempt("open", [&] { return open(); });
    if (!database_) return;
    for (const char* list : kLists) attempt(list, [&] { return isWhole(list); });
    attempt("list of texts", [&] {
      return walk("TAB", "2", {"TipoTab", "TipoRac", "Desc"}, {"AUTORE", 0}) &&
             walk("TAB", "2", {"TipoTab", "TipoRac", "Desc"}, {"POS", -1});
    });
    attempt("columns", [&] {
      return walk("GRDCONFIG", "1u", {"NomeQuery", "Colonna"}, {"Q_LIB"});
    });
    attempt("setting", [&] { return walk("CFG", "1u", {"dsc"}, {"DB_APPLICATION"}); });
    attempt("sorted", [&] { return sorted(); });
    for (const char* field : {"TABGenereID", "Anno"}) {
      attempt(field, [&] { return filtered(field); });
    }
    attempt("find", [&] { return find(); });
    attempt("write", [&] { return write(); });
  }

  bool opened() const { return database_ != nullptr; }

  int failed = 0;
  QStringList wrong;

 private:
  template <typename Work>
  void attempt(const char* what, Work&& work) {
    try {
      if (!work()) wrong.append(QLatin1String(what));
    } catch (const Failure& failure) {
      ++failed;
      EXPECT_GT(failure.number(), 0);
      EXPECT_FALSE(failure.description().isEmpty());
    }
  }

  bool open() {
    database_ = OpenDatabase(path_);
    return database_->OpenRecordset("CONT", RecordsetType::Table)->RecordCount() >= 0;
  }
  RecordsetPtr open(const QString& source, RecordsetType type = RecordsetType::Dynaset) {
    return database_->OpenRecordset(source, type);
  }

  bool isWhole(const QString& query) {
    const auto wanted = tables_.list(query, queries_[query]);
    const auto rows = harm::rowsOf(*open(query));
    return !wanted || rows == *wanted;
  }

  // As combo boxes and settings read: from the first row on that has some values.
  bool walk(const QString& table, const QString& index, const QStringList& columns,
            const QVariantList& values) {
    const RecordsetPtr rows = open(table, RecordsetType::Table);
    rows->SetIndex(index);
    rows->Seek(">=", values);
    const auto belongs = [&] {
      for (qsizetype i = 0; i < values.size(); ++i) {
        if (!isSame(rows->Value(columns[i]), values[i])) return false;
      }
      return true;
    };
    QVector<harm::Row> found;
    for (; !rows->NoMatch() && !rows->Eof() && belongs(); rows->MoveNext()) {
      harm::Row row;
      for (int field = 0; field < rows->Fields().size(); ++field) row.append(rows->Value(field));
      found.append(row);
    }
    const auto wanted = tables_.rows(table, columns, values);
    return !wanted ||
           std::equal(found.begin(), found.end(), wanted->begin(), wanted->end(), isSameRow);
  }

  // The same rows in another order.
  bool sorted() {
    const auto wanted = tables_.list("Q_LIB", queries_["Q_LIB"]);
    for (const char* order : {"Titolo", "Autore DESC", "SottoTitolo"}) {
      const auto rows =
          harm::rowsOf(*open(QStringLiteral("SELECT * FROM Q_LIB ORDER BY ") + order));
      if (wanted && !std::is_permutation(rows.begin(), rows.end(), wanted->begin(), wanted->end()))
        return false;
    }
    return true;
  }

  // Those of a few values that are there, by their index.
  bool filtered(const QString& column) {
    const auto all = tables_.list("Q_LIB", queries_["Q_LIB"]);
    const int field = open("Q_LIB")->FieldIndex("MAIN." + column);
    constexpr qsizetype kStep = 50;
    for (qsizetype i = 0; all && i < all->size(); i += kStep) {
      const QVariant value = all->at(i)[field];
      if (value.typeId() == QMetaType::QString || !value.isValid()) continue;
      QVector<harm::Row> wanted;
      std::copy_if(all->begin(), all->end(), std::back_inserter(wanted),
                   [&](const harm::Row& row) { return isSame(row[field], value); });
      const QString text = QString::number(value.toDouble(), 'g', 17);
      if (harm::rowsOf(*open("SELECT * FROM Q_LIB WHERE MAIN." + column + " = " + text)) != wanted)
        return false;
    }
    return true;
  }

  bool find() {
    const RecordsetPtr rows = open("Q_LIB");
    const auto all = harm::rowsOf(*rows);
    const int title = rows->FieldIndex("Titolo");
    QSet<qint64> hits;
    rows->FindFirst("Titolo LIKE '*[aàá]*'");
    for (; !rows->NoMatch(); rows->FindNext("Titolo LIKE '*[aàá]*'")) {
      hits.insert(rows->AbsolutePosition());
    }
    for (qint64 row = 0; row < all.size(); ++row) {
      const QString text = all[row][title].toString();
      if (text.contains(u'a', Qt::CaseInsensitive) && !hits.contains(row)) return false;
    }
    return true;
  }

  bool write() {
    const RecordsetPtr rows = open("Q_AUD");
    if (rows->RecordCount() == 0) return true;
    const QVariant key = rows->Value("MAIN.ID");
    rows->Edit();
    rows->SetValue("Titolo", "Scritto");
    rows->Update();
    database_->Close();
    const auto written = damage::Tables(path_).rows("MAIN", {"ID", "Titolo"}, {key, "Scritto"});
    return !written || written->size() == 1;
  }

  damage::Tables tables_;
  QString path_;
  const QHash<QString, QString>& queries_;
  DatabasePtr database_;
};

class Damage : public ::testing::Test {
 protected:
  Damage() {
    mostSteps = kMostSteps;
    harm::write(path_, good_);
    const DatabasePtr database = OpenDatabase(path_);
    for (const QString& name : database->QueryDefs()) queries_[name] = database->QueryDefSql(name);
    // Of a good archive all is known.
    damage::Tables tables(path_);
    for (const char* list : kLists) EXPECT_TRUE(tables.list(list, queries_[list])) << list;
  }

  void look(int number) {
    const auto& kinds = damage::kinds();
    const damage::Kind& kind = kinds[static_cast<std::size_t>(number) % kinds.size()];
    SCOPED_TRACE(testing::Message() << kind.name << ", TAVOLIX_CASE " << number);
    std::mt19937 random(harm::seed() * 1000003U + static_cast<unsigned>(number));
    QByteArray file = good_;
    kind.spoil(file, random);
    harm::write(path_, file);
    QFile::remove(path_ + QStringLiteral("-journal"));
    Look look(path_, queries_);
    look.everything();
    if (look.failed > 0) ++failed_;
    EXPECT_FALSE(kind.isRefused && look.opened());
    EXPECT_TRUE(kind.isOtherArchive || look.wrong.isEmpty()) << look.wrong.join(' ').toStdString();
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("guasto.tvx"));
  QByteArray good_ = harm::smallArchive(600);
  QHash<QString, QString> queries_;
  int failed_ = 0;
};

TEST_F(Damage, IsShownRightOrFails) {
  const int cases = harm::casesWanted(240);
  const int only = harm::setting("TAVOLIX_CASE", -1);
  for (int number = std::max(only, 0); number < (only < 0 ? cases : only + 1); ++number) {
    // A crash or a file that takes for ever ends the program: the last number tells which.
    std::cout << number << (number % 20 == 19 ? '\n' : ' ') << std::flush;
    alarm(kMostSeconds);
    look(number);
  }
  alarm(0);
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::cout << '\n'
            << failed_ << " files with failures, " << usage.ru_maxrss / 1024 << " MB of memory\n";
  EXPECT_TRUE(kSanitized || usage.ru_maxrss / 1024 < kMostMegabytes);
}

}  // namespace
}  // namespace store
