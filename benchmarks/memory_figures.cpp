// The memory that a long list takes.

#include <malloc.h>
#include <unistd.h>

#include <QFile>
#include <QScrollBar>

#include "core/modcuore.h"
#include "desk.h"
#include "figures.h"
#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"

namespace bench {
namespace {

constexpr int kBooks = 0;
constexpr int kMedicines = 5;  // the smallest collection: little of the file has been read by then
constexpr double kBytesOfRow = 8;
constexpr double kFree = 8 * 1048576.0;

struct Memory {
  double heap;
  double resident;
};

Memory memoryInUse() {
  const struct mallinfo2 heap = mallinfo2();
  QFile statm(QStringLiteral("/proc/self/statm"));
  if (!statm.open(QIODevice::ReadOnly)) qFatal("the resident set is not told");
  const double pages = statm.readAll().split(' ').value(1).toDouble();
  return {static_cast<double>(heap.uordblks + heap.hblkhd),
          pages * static_cast<double>(sysconf(_SC_PAGESIZE))};
}

// Every row is shown once.
void scrollThrough() {
  QScrollBar* bar = list().verticalScrollBar();
  for (int first = 0; first < bar->maximum(); first += bar->pageStep()) {
    bar->setValue(first);
    showAll();
  }
}

// The form of the collection comes with its rows: a list without any would have read the file.
void memoryScene(const QStringList&) {
  const Memory before = memoryInUse();
  changeCollection(kBooks);
  scrollThrough();
  const Memory after = memoryInUse();
  report("rows", static_cast<double>(tavolix::dbElenco().Recordset()->RecordCount()));
  report("heap", after.heap - before.heap);
  report("resident", after.resident - before.resident);
}

QVector<Reading> memoryFigure(const Ground& ground) {
  const QString memoria = QStringLiteral("memoria");
  const Found found = ground.play(memoria, {ground.archive()}, kMedicines);
  const auto value = [&](const char* name) { return median(found[QString::fromLatin1(name)]); };
  const double limit = value("rows") * kBytesOfRow + kFree;
  return {{memoria, value("heap"), limit, 1.0, Unit::Bytes},
          {memoria + QStringLiteral("_residente"), value("resident"), limit, 1.0, Unit::Bytes}};
}

}  // namespace

QVector<Figure> memoryFigures() {
  return {{QStringLiteral("memoria"), memoryFigure, memoryScene}};
}

}  // namespace bench
