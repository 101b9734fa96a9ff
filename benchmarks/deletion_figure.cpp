// The deletion of all records that a filter shows.

#include "books.h"
#include "core/modcuore.h"
#include "desk.h"
#include "figures.h"
#include "platform/data_control.h"
#include "platform/message_box.h"
#include "workspace/frmmain.h"

namespace bench {
namespace {

constexpr int kDeletions = 5;          // each of a part of the list as large as the others
constexpr int kRowsOfDeletion = 5000;  // that reach the disk together

double deleteOurs(const Keys& keys) {
  filterList(QStringLiteral(" WHERE LIB.ID BETWEEN %1 AND %2")
                 .arg(keys.first().second)
                 .arg(keys.last().second));
  if (tavolix::dbElenco().Recordset()->RecordCount() != keys.size()) qFatal("wrong filter");
  platform::MessageBoxSeam::setNextAnswer(platform::kYes);
  const double seconds = secondsOf([] { tavolix::FrmMain().mnuCancellaMultiplo_Click(); });
  if (tavolix::dbElenco().Recordset()->RecordCount() != 0) qFatal("rows are left");
  return seconds;
}

double deleteRaw(RawFile& file, const Keys& keys) {
  RawStatement main(file, "DELETE FROM MAIN WHERE ID = ?");
  RawStatement detail(file, "DELETE FROM LIB WHERE ID = ?");
  return secondsOf([&] {
    for (qsizetype i = 0; i < keys.size(); ++i) {
      if (i % kRowsOfDeletion == 0) file.run("BEGIN IMMEDIATE");
      main.bind(1, keys[i].first);
      main.execute();
      detail.bind(1, keys[i].second);
      detail.execute();
      if (i % kRowsOfDeletion == kRowsOfDeletion - 1 || i == keys.size() - 1) file.run("COMMIT");
    }
  });
}

// Five deletions of a fifth of the books each: nothing to warm up, every row goes once.
void deletionScene(const QStringList& files) {
  RawFile file(files[1]);
  const qint64 count = tavolix::dbElenco().Recordset()->RecordCount() / kDeletions;
  for (int i = 0; i < kDeletions; ++i) {
    const Keys keys = firstBooks(file, count);
    if (i % 2 == 0) report("ours", deleteOurs(keys));
    report("raw", deleteRaw(file, keys));
    if (i % 2 != 0) report("ours", deleteOurs(keys));
  }
}

QVector<Reading> deletionFigure(const Ground& ground) {
  const QString elimina = QStringLiteral("elimina");
  return {compared(elimina, sidesOf(ground.play(elimina, ground.twoCopies())), 3.0)};
}

}  // namespace

QVector<Figure> deletionFigures() {
  return {{QStringLiteral("elimina"), deletionFigure, deletionScene}};
}

}  // namespace bench
