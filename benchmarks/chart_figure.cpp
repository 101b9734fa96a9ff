// The chart of an analysis: drawn anew, and turned from solid to flat and back.

#include <QAbstractButton>
#include <QEvent>

#include "analysis/frmgrafico.h"
#include "desk.h"
#include "figures.h"

namespace bench {
namespace {

constexpr int kRounds = 12;  // the first one warms up
constexpr int kRows = 500;
constexpr double kLimit = 0.05;  // seconds

tavolix::frmGrafico& form() {
  return platform::forms().as<tavolix::frmGrafico>(QStringLiteral("frmGrafico"));
}

// Sees to it that what is measured ends with a picture.
struct Painted final : QObject {
  bool eventFilter(QObject*, QEvent* event) override {
    times += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
  int times = 0;
};

void fill(platform::Chart& chart) {
  chart.SetRepaint(false);
  chart.SetRowCount(kRows);
  for (int row = 1; row <= kRows; ++row) {
    chart.SetRow(row);
    chart.SetRowLabel(QStringLiteral("Autore numero %1").arg(row));
    chart.SetData(1 + row * 7919 % 211);
  }
  chart.SetRepaint(true);
}

void press(const char* button) {
  form().control<QAbstractButton>(QLatin1String(button))->click();
  showWindow(form().Window());
}

void chartScene(const QStringList&) {
  platform::Chart& chart = *form().control<platform::Chart>(QStringLiteral("grf"));
  fill(chart);
  form().Window()->show();
  showWindow(form().Window());
  Painted painted;
  chart.installEventFilter(&painted);
  for (const char* kind : {"cmdTorta", "cmdBarre"}) {
    press(kind);
    painted.times = 0;
    for (int i = 0; i < kRounds; ++i) {
      const double drawn = secondsOf([&] {
        fill(chart);
        showWindow(form().Window());
      });
      const double turned = secondsOf([] { press("opt3D"); });
      if (painted.times < 2 * (i + 1)) qFatal("the chart was not painted");
      if (i == 0) continue;
      report("drawn", drawn);
      report("turned", turned);
    }
  }
}

QVector<Reading> chartFigure(const Ground& ground) {
  const QString grafico = QStringLiteral("grafico");
  const Found found = ground.play(grafico, {ground.archive()});
  return {{grafico, median(found[QStringLiteral("drawn")]), kLimit},
          {grafico + QStringLiteral("_3D"), median(found[QStringLiteral("turned")]), kLimit}};
}

}  // namespace

QVector<Figure> chartFigures() {
  return {{QStringLiteral("grafico"), chartFigure, chartScene}};
}

}  // namespace bench
