// Copy, compaction and repair on a disk that fails at any moment: what was there stays as it was.

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <cerrno>
#include <iostream>
#include <set>

#include "disk/faulty_disk.h"
#include "harm/archive_file.h"
#include "harm/chance.h"
#include "model/riparazione.h"
#include "store/database.h"
#include "store/patience.h"
#include "store/safe_copy.h"
#include "tools/archive_template.h"

namespace store {
namespace {

// A folder with an archive, a damaged one and an older copy.
class Folder final {
 public:
  Folder(const QByteArray& good, const QByteArray& damaged) {
    harm::write(path("buono.tvx"), good);
    harm::write(path("guasto.tvx"), damaged);
    harm::write(path("copia.tvx"), "older");
  }
  QString path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
  QStringList names() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }
  QByteArrayList contents() const {
    QByteArrayList all;
    for (const QString& name : names()) all << harm::bytesOf(folder_.filePath(name));
    return all;
  }

 private:
  QTemporaryDir folder_;
};

struct Trouble {
  const char* name;
  unsigned calls;
  int error;
  std::set<int> numbers;  // of the failures that it may end with
};
const Trouble kTroubles[] = {
    {"disk full", faulty::kWrite, ENOSPC, {61, 3026}},
    {"write", faulty::kWrite, EIO, {75, 3043}},
    {"read", faulty::kRead, EIO, {75, 3043, 3049, 3428}},
    {"sync", faulty::kSync, EIO, {75, 3043}},
    {"rename", faulty::kRename, EACCES, {70}},
    {"lock", faulty::kLock, EAGAIN, {3043, 3260}},
    {"open", faulty::kOpen, EACCES, {70, 3027, 3051}},
    {"gone", faulty::kAnyCall, EIO, {70, 75, 3043, 3049, 3051, 3343, 3428}},
};

class DiskOfFiles : public ::testing::Test {
 protected:
  DiskOfFiles() {
    mostPatience = 0;
    tavolix::builder::buildArchive(qEnvironmentVariable("TAVOLIX_SOURCE") + "/data", model());
    plan_ = tavolix::PianoRiparazione(model());
    constexpr qsizetype kPage = 4096;
    qsizetype page = 30 * kPage;
    while (damaged_[page] != 13) page += kPage;
    damaged_.replace(page, kPage, QByteArray(kPage, '\xff'));
  }
  QString model() const { return template_.filePath("modello.tvx"); }

  bool work(const QByteArray& name, const Folder& folder) const {
    if (name == "copy") {
      return CopyDatabase(folder.path("buono.tvx"), folder.path("copia.tvx")).isCopied;
    }
    if (name == "compaction") CompactInPlace(folder.path("buono.tvx"));
    return name == "compaction" || !RepairDatabase(folder.path("guasto.tvx"), plan_).isSound;
  }

  void run(const QByteArray& name, const Trouble& trouble, int nth, bool lasts) const {
    const Folder folder(good_, damaged_);
    const QByteArrayList before = folder.contents();
    faulty::order({trouble.calls, trouble.error, nth, lasts, {}});
    int number = 0;
    bool isDone = false;
    try {
      isDone = work(name, folder);
    } catch (const Failure& failure) {
      number = failure.number();
    }
    faulty::order();
    if (isDone) return expectDone(name, folder);
    EXPECT_TRUE(number == 0 || trouble.numbers.count(number)) << number;
    EXPECT_TRUE(folder.contents() == before) << qPrintable(folder.names().join(' '));
    EXPECT_TRUE(work(name, folder));
    expectDone(name, folder);
  }

  void expectDone(const QByteArray& name, const Folder& folder) const {
    if (name == "copy") {
      EXPECT_EQ(harm::bytesOf(folder.path("copia.tvx")), good_);
    } else {
      const char* const file = name == "repair" ? "guasto.tvx" : "buono.tvx";
      EXPECT_TRUE(OpenDatabase(folder.path(file))->IntegrityCheck());
    }
    EXPECT_EQ(harm::bytesOf(folder.path("guasto.tvx.danneggiato")),
              name == "repair" ? damaged_ : QByteArray());
  }

  QTemporaryDir template_;
  QByteArray good_ = harm::smallArchive(120);
  QByteArray damaged_ = good_;
  RepairPlan plan_;
};

TEST_F(DiskOfFiles, FailsAtAnyCall) {
  const int most = harm::casesWanted(2);
  std::mt19937 random(harm::seed());
  int tried = 0;
  for (const QByteArray name : {"copy", "compaction", "repair"}) {
    for (const Trouble& trouble : kTroubles) {
      const Folder folder(good_, damaged_);
      faulty::order({trouble.calls, trouble.error, 1 << 30});
      EXPECT_TRUE(work(name, folder));
      faulty::order();
      const int calls = faulty::calls();
      EXPECT_GT(calls, 0) << name.constData() << ' ' << trouble.name;
      std::set<int> places{1, calls};
      while (std::ssize(places) < std::min(most, calls)) {
        places.insert(1 + harm::below(random, calls));
      }
      for (const int nth : places) {
        for (const bool lasts : {false, true}) {
          SCOPED_TRACE(testing::Message() << name.constData() << ": " << trouble.name << ", call "
                                          << nth << " of " << calls << (lasts ? " and on" : ""));
          run(name, trouble, nth, lasts);
          ++tried;
        }
      }
    }
  }
  std::cout << tried << " troubles\n";
}

}  // namespace
}  // namespace store
