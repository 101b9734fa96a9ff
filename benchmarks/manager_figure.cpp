// The archive manager on a folder with many archives, to its painted list.

#include <QElapsedTimer>
#include <QListWidget>
#include <QTemporaryDir>

#include "archives/frmmanarc.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "desk.h"
#include "figures.h"
#include "platform/form.h"

namespace bench {
namespace {

constexpr int kArchives = 500;
constexpr int kOpenings = 9;
constexpr double kLimit = 0.3;  // seconds

const QString kName = QStringLiteral("gestione");
const QString kForm = QStringLiteral("frmManArc");

// It reads names and lengths, and nothing of what is in the files.
void fill(const QTemporaryDir& folder) {
  for (int i = 0; i < kArchives; ++i) {
    QFile file(folder.filePath(QStringLiteral("Archivio di prova %1.tvx").arg(i)));
    if (!file.open(QIODevice::WriteOnly)) qFatal("no archive can be made");
  }
  tavolix::ImpostaFileIni(tavolix::sPathCompleto(QStringLiteral("tvx.ini")));
  tavolix::ImpostaSezioneIni(QStringLiteral("ManArc"));
  tavolix::bScriviStr(QStringLiteral("db_DirArc"), folder.path() + u'/');
}

void managerScene(const QStringList&) {
  const QTemporaryDir folder;
  fill(folder);
  for (int i = 0; i < kOpenings; ++i) {
    QElapsedTimer time;
    time.start();
    inForm(
        kForm, [] { tavolix::sScegliArchivio(); },
        [&] {
          report("time", static_cast<double>(time.nsecsElapsed()) / 1e9);
          const auto* list =
              platform::forms()[kForm].control<QListWidget>(QStringLiteral("lstFile"));
          if (list->count() != kArchives) qFatal("the manager does not show all archives");
        });
  }
}

QVector<Reading> managerFigure(const Ground& ground) {
  const Samples samples = ground.play(kName, {ground.sample()})[QStringLiteral("time")];
  return {{kName, median(samples), kLimit}};
}

}  // namespace

QVector<Figure> managerFigures() {
  return {{kName, managerFigure, managerScene}};
}

}  // namespace bench
