// What the user waits for at the screen: the start, the next row, another collection, a form.

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
constexpr int kVideos = 3;
constexpr int kStarts = 9;
constexpr int kPrograms = 3;  // on either side of a figure taken in two programs
constexpr int kChanges = 5;   // in each program
constexpr int kRowsWarm = 40;
constexpr int kRows = 200;
constexpr double kRowLimit = 0.008;  // seconds

const QString kTime = QStringLiteral("time");

QVector<Reading> startFigure(const Ground& ground) {
  const Sides sides = inTurn(
      kStarts, [&] { return ground.start(ground.archive()); },
      [&] { return ground.start(ground.sample()); });
  return {compared(QStringLiteral("avvio"), sides, 1.5)};
}

// The same scene in programs on two archives, in turn.
Sides inPrograms(const Ground& ground, const QString& scene, const QString& ours,
                 const QString& other) {
  Sides sides;
  for (int i = 0; i < kPrograms; ++i) {
    sides.ours += ground.play(scene, {ours})[kTime];
    sides.other += ground.play(scene, {other})[kTime];
  }
  return sides;
}

void rowScene(const QStringList&) {
  platform::DataGrid& grid = list();
  grid.setFocus();
  const auto rows = tavolix::dbElenco().Recordset();
  const int count = std::min(kRows, static_cast<int>(rows->RecordCount()) - 1 - kRowsWarm);
  for (int i = 0; i < kRowsWarm + count; ++i) {
    const double seconds = secondsOf([&] {
      pressKey(&grid, Qt::Key_Down);
      showAll();
    });
    if (rows->AbsolutePosition() != i + 1) qFatal("the key has not moved the current row");
    if (i >= kRowsWarm) report("time", seconds);
  }
}

QVector<Reading> rowFigure(const Ground& ground) {
  const QString riga = QStringLiteral("riga");
  const Samples samples = ground.play(riga, {ground.archive()})[kTime];
  return {{riga, median(samples), kRowLimit}};
}

// Lists are read afresh, as after a write: in other words each time.
void collectionScene(const QStringList&) {
  for (int i = 0; i <= kChanges; ++i) {
    for (const int collection : {kVideos, kBooks}) {
      tavolix::aRaccolte(collection).sOrdine = QString(i + 1, u' ');
    }
    const double seconds = secondsOf([&] {
      changeCollection(kVideos);
      changeCollection(kBooks);
    });
    if (i > 0) report("time", seconds);
  }
}

QVector<Reading> collectionFigure(const Ground& ground) {
  const QString raccolta = QStringLiteral("raccolta");
  return {compared(raccolta, inPrograms(ground, raccolta, ground.archive(), ground.sample()), 2.0)};
}

void comboScene(const QStringList&) {
  for (int i = 0; i <= kChanges; ++i) {
    changeCollection(kVideos);
    const double seconds = secondsOf([] { changeCollection(kBooks); });
    if (i > 0) report("time", seconds);
  }
}

// The archives differ in their list of authors only; their few records cost next to nothing.
QVector<Reading> comboFigure(const Ground& ground) {
  const auto archive = [&](const char* authors) {
    return ground.generated(
        QStringLiteral("autori_%1.tvx").arg(QLatin1String(authors)),
        {QStringLiteral("--records"), QStringLiteral("200"), QStringLiteral("--list"),
         QStringLiteral("AUTORE:0:") + QLatin1String(authors)});
  };
  const QString combo = QStringLiteral("combo");
  return {compared(combo, inPrograms(ground, combo, archive("50000"), archive("10")), 1.2)};
}

}  // namespace

QVector<Figure> windowFigures() {
  return {
      {QStringLiteral("avvio"), startFigure, {}},
      {QStringLiteral("riga"), rowFigure, rowScene},
      {QStringLiteral("raccolta"), collectionFigure, collectionScene},
      {QStringLiteral("combo"), comboFigure, comboScene},
  };
}

}  // namespace bench
