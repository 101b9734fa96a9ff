// Whole archives: copy, compaction, repair of a sound one.

#include <QFile>
#include <QProcess>

#include "figures.h"
#include "model/riparazione.h"
#include "raw_file.h"
#include "store/repair.h"
#include "store/safe_copy.h"
#include "store/sqlite_language.h"

namespace bench {
namespace {

constexpr int kRounds = 5;

void shell(const QString& command, const QStringList& files) {
  const QStringList arguments = QStringList{QStringLiteral("-c"), command} + files;
  if (QProcess::execute(QStringLiteral("sh"), arguments) != 0) qFatal("%s", qPrintable(command));
}

QVector<Reading> copyFigure(const Ground& ground) {
  const QString from = ground.copy(QStringLiteral("da.tvx"));
  const QString to = from + QStringLiteral(".copia");
  const auto ours = [&] {
    QFile::remove(to);
    return secondsOf([&] {
      if (!store::CopyDatabase(from, to).isCopied) qFatal("not copied");
    });
  };
  const auto other = [&] {
    QFile::remove(to);
    return secondsOf([&] {
      shell(QStringLiteral("cp \"$0\" \"$1\" && sync \"$1\" && cmp \"$0\" \"$1\""), {from, to});
    });
  };
  return {compared(QStringLiteral("copia"), inTurn(kRounds, ours, other), 1.5)};
}

QVector<Reading> compactionFigure(const Ground& ground) {
  const QStringList files = ground.twoCopies();
  const QString compact = files[1] + QStringLiteral(".compatto");
  const auto ours = [&] { return secondsOf([&] { store::CompactInPlace(files[0]); }); };
  const auto other = [&] {
    QFile::remove(compact);
    return secondsOf([&] {
      RawFile file(files[1]);
      store::addLanguage(file.handle());
      RawStatement copy(file, "VACUUM INTO ?");
      copy.bind(1, compact.toUtf8());
      copy.execute();
    });
  };
  return {compared(QStringLiteral("compatta"), inTurn(kRounds, ours, other), 1.3)};
}

QVector<Reading> repairFigure(const Ground& ground) {
  const QStringList files = ground.twoCopies();
  const store::RepairPlan plan = tavolix::PianoRiparazione(ground.sample());
  const auto ours = [&] {
    return secondsOf([&] {
      if (!store::RepairDatabase(files[0], plan).isSound) qFatal("not sound");
    });
  };
  const auto other = [&] {
    return secondsOf([&] {
      RawFile file(files[1]);
      store::addLanguage(file.handle());
      RawStatement check(file, "PRAGMA integrity_check");
      if (!check.step() || qstrcmp(check.text(0), "ok") != 0) qFatal("not sound");
    });
  };
  return {compared(QStringLiteral("ripara"), inTurn(kRounds, ours, other), 1.2)};
}

}  // namespace

QVector<Figure> fileFigures() {
  return {{QStringLiteral("copia"), copyFigure, {}},
          {QStringLiteral("compatta"), compactionFigure, {}},
          {QStringLiteral("ripara"), repairFigure, {}}};
}

}  // namespace bench
