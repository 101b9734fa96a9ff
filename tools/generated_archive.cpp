#include "tools/generated_archive.h"

#include <array>
#include <numeric>

#include "model/raccolte.h"
#include "tools/generated_values.h"
#include "tools/italian_text.h"
#include "tools/record_writer.h"

namespace tavolix::builder {
namespace {

constexpr int kBooks = 0;
constexpr int kArticles = 8;
constexpr int kTracks = 9;
constexpr int kContacts = 10;
constexpr qint64 kUsualRows = 50;
constexpr qint64 kRecordsPerAuthor = 40;
constexpr qint64 kRowsPerTransaction = 10000;

using Counts = std::array<qint64, kRaccolte>;

// Half of the records are books, the others share the rest alike.
Counts countsOf(qint64 records) {
  Counts counts{};
  counts[kBooks] = records / 2;
  const qint64 rest = records - counts[kBooks];
  const qint64 others = kRaccoltePrincipali - 1;
  for (int i = 1; i < kRaccoltePrincipali; ++i) {
    counts[static_cast<std::size_t>(i)] = rest / others + (i <= rest % others ? 1 : 0);
  }
  counts[kTracks] = records / 10;
  counts[kArticles] = counts[kContacts] = records / 40;
  return counts;
}

bool holdsPeople(const ListName& name) {
  static const QStringList codes = {QStringLiteral("AUTORE"), QStringLiteral("REGISTA"),
                                    QStringLiteral("AUTTESTO")};
  return codes.contains(name.code);
}

qint64 rowsOf(const ListName& name, const GeneratorOptions& options) {
  for (const ListSize& size : options.lists) {
    if (size.list == name) return size.rows;
  }
  const bool authors = name == ListName{QStringLiteral("AUTORE"), kBooks};
  return authors ? qBound(kUsualRows, options.records / kRecordsPerAuthor, kListTexts) : kUsualRows;
}

void fillList(ListTable& lists, const ListName& name, qint64 rows) {
  for (qint64 i = 0; i < kListTexts && lists.keys(name).size() < rows; ++i) {
    lists.findOrAdd(name, holdsPeople(name) ? personName(i) : listText(i));
  }
}

ListTable& fillLists(ListTable& lists, const GeneratorOptions& options) {
  for (const ListName& name : listNames()) fillList(lists, name, rowsOf(name, options));
  return lists;
}

class Generator final {
 public:
  Generator(store::Database& database, const GeneratorOptions& options)
      : database_(database),
        counts_(countsOf(options.records)),
        transaction_(std::in_place, database),
        lists_(database),
        writer_(database),
        maker_(options.seed, fillLists(lists_, options), writer_),
        order_(~options.seed) {}

  void run() {
    addRecords();
    for (int i = 0; i < kRaccoltePrincipali; ++i) {
      if (aRaccolte(i).iSottoRaccolta >= 0) addChildren(aRaccolte(i).iSottoRaccolta, keysOf(i));
    }
    writer_.saveCounter();
    database_.Execute(QStringLiteral("Q_AggiornaTitoliRiviste"));
    transaction_->Commit();
  }

 private:
  QVector<qint64>& keysOf(int collection) { return keys_[static_cast<std::size_t>(collection)]; }

  void rowAdded() {
    if (++rows_ % kRowsPerTransaction != 0) return;
    transaction_->Commit();
    transaction_.emplace(database_);
  }

  // The collections take turns as in an archive that has grown.
  int nextCollection(Counts& left, qint64 total) {
    qint64 chosen = order_.below(total);
    int collection = 0;
    while (chosen >= left[static_cast<std::size_t>(collection)]) {
      chosen -= left[static_cast<std::size_t>(collection++)];
    }
    --left[static_cast<std::size_t>(collection)];
    return collection;
  }

  void addRecords() {
    Counts left = counts_;
    qint64 total = std::accumulate(left.begin(), left.begin() + kRaccoltePrincipali, qint64{0});
    for (; total > 0; --total) {
      const int collection = nextCollection(left, total);
      QVector<qint64>& keys = keysOf(collection);
      keys.append(writer_.addRecord(collection, maker_.make(collection, keys.size(), 0)));
      rowAdded();
    }
  }

  void addChildren(int collection, const QVector<qint64>& parents) {
    if (parents.isEmpty()) return;
    const qint64 count = counts_[static_cast<std::size_t>(collection)];
    const qint64 each = (count + parents.size() - 1) / parents.size();
    for (qint64 i = 0; i < count; ++i) {
      writer_.addChild(collection, parents[i / each], maker_.make(collection, i, i % each));
      rowAdded();
    }
  }

  store::Database& database_;
  Counts counts_;
  std::optional<store::Transaction> transaction_;
  ListTable lists_;
  RecordWriter writer_;
  RecordMaker maker_;
  Random order_;
  std::array<QVector<qint64>, kRaccolte> keys_;
  qint64 rows_ = 0;
};

}  // namespace

std::optional<ListSize> parseListSize(const QString& text) {
  const QStringList parts = text.split(u':');
  if (parts.size() != 3) return std::nullopt;
  bool isCollection = false;
  bool isNumber = false;
  const ListSize size{{parts[0].toUpper(), parts[1].toInt(&isCollection)},
                      parts[2].toLongLong(&isNumber)};
  const bool valid = isCollection && isNumber && size.rows >= 1 && size.rows <= kListTexts &&
                     listNames().contains(size.list);
  return valid ? std::optional(size) : std::nullopt;
}

void addGeneratedRecords(store::Database& database, const GeneratorOptions& options) {
  Generator(database, options).run();
}

}  // namespace tavolix::builder
