#include "platform/chart.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QFile>
#include <QMimeData>
#include <QPrinter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <array>
#include <cmath>

#include "platform/chart_colors.h"
#include "platform/common_dialogs.h"
#include "platform/number_format.h"

namespace platform {
namespace {

constexpr ChartType kTypes[] = {ChartType::Pie3D, ChartType::Pie, ChartType::Bars3D,
                                ChartType::Bars};
const std::vector<double> kValues = {40, 25, 20, 10, 5};  // percent

QFont letters() {
  QFont font;
  font.setPixelSize(13);
  return font;
}

ChartData dataOf(ChartType type, const std::vector<double>& values) {
  ChartData data;
  data.type = type;
  data.title = QStringLiteral("Titolo");
  data.footnote = QStringLiteral("Totale 1");
  data.elevation = isPie(type) ? 60 : 20;
  for (const double value : values) {
    data.rows.push_back({QStringLiteral("voce %1").arg(data.rows.size()), value});
  }
  return data;
}

ChartScene sceneOf(ChartType type, const std::vector<double>& values) {
  return {dataOf(type, values), QSizeF(760, 520), letters(), ChartMedium::Picture};
}

// The plot alone: the legend has the same colours.
QImage paintedPlot(const ChartScene& scene) {
  QImage image(760, 520, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  paintChart(painter, scene, paperInk());
  painter.fillRect(scene.layout().legend, Qt::white);
  painter.end();
  return image;
}

std::vector<double> alike(int count) {
  return std::vector<double>(static_cast<std::size_t>(count), 7);
}

// What can be counted of a kind: a pie's upper face, the fronts of bars.
TEST(ChartPictureTest, AreasAreTheSharesAndEachPixelIsItsRows) {
  for (const ChartType type : kTypes) {
    const ChartScene scene = sceneOf(type, kValues);
    const QImage image = paintedPlot(scene);
    const double light = type == ChartType::Bars3D ? 0.86 : 1;
    std::array<int, 5> counts{};
    for (int row = 0; row < 5; ++row) {
      const QRgb wanted = shaded(scene.colorOf(row), light).rgb();
      for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
          if (image.pixel(x, y) != wanted) continue;
          ++counts[static_cast<std::size_t>(row)];
          ASSERT_EQ(scene.rowAt(QPointF(x + 0.5, y + 0.5)), row)
              << int(type) << ' ' << x << ' ' << y;
        }
      }
    }
    const double all = counts[0] + counts[1] + counts[2] + counts[3] + counts[4];
    ASSERT_GT(all, 20000);
    for (std::size_t row = 0; row < 5; ++row) {
      EXPECT_NEAR(counts[row] / all, kValues[row] / 100, 0.01) << int(type) << " row " << row;
    }
  }
}

// Rims and sides: what is seen there is what is hit, so that nothing is hit through another.
TEST(ChartPictureTest, ShadedFacesBelongToTheRowWhoseColourTheyHave) {
  for (const ChartType type : {ChartType::Pie3D, ChartType::Bars3D}) {
    const ChartScene scene = sceneOf(type, {5, 10, 20, 40, 25});
    const QImage image = paintedPlot(scene);
    int seen = 0;
    for (int y = 1; y < image.height() - 1; ++y) {
      for (int x = 1; x < image.width() - 1; ++x) {
        const auto hueAt = [&](int i) { return image.pixelColor(x + i % 3 - 1, y + i / 3 - 1); };
        for (int row = 0; row < 5; ++row) {
          bool whole = true;
          for (int i = 0; i < 9 && whole; ++i) {
            whole = hueAt(i).saturation() > 150 &&
                    std::abs(hueAt(i).hue() - scene.colorOf(row).hue()) < 3;
          }
          if (!whole) continue;
          ++seen;
          ASSERT_EQ(scene.rowAt(QPointF(x + 0.5, y + 0.5)), row)
              << int(type) << ' ' << x << ' ' << y;
        }
      }
    }
    EXPECT_GT(seen, 20000);
  }
}

TEST(ChartPictureTest, TellsWhatItDoesNotShow) {
  std::vector<double> much(12, 1);
  much[0] = 11000;
  const std::tuple<ChartType, std::vector<double>, const char*> cases[] = {
      {ChartType::Pie, {1}, ""},
      {ChartType::Pie3D, alike(500), "legenda: le prime voci di 500"},
      {ChartType::Pie, alike(5000),
       "5.000 valori troppo piccoli, riuniti in grigio; legenda: le prime voci di 5.000"},
      {ChartType::Bars, alike(5000),
       "ogni barra è la maggiore di ; legenda: le prime voci di 5.000"},
      {ChartType::Pie3D, much, "11 valori troppo piccoli, riuniti in grigio"},
      {ChartType::Bars3D, much, "11 barre troppo basse per vedersi"},
      {ChartType::Pie,
       {3, -1, 2},
       "un valore negativo non compare nella torta; percentuali sulla somma dei valori positivi"},
      {ChartType::Pie, {-3, -1}, ""},
  };
  for (const auto& [type, values, text] : cases) {
    const ChartScene scene = sceneOf(type, values);
    // How many fit depends on the letters.
    const QRegularExpression fit(QStringLiteral("\\d+ (?=voci)|(?<=maggiore di )\\d+"));
    EXPECT_EQ(scene.footnote().section(u'\n', 1).remove(fit).toStdString(), text)
        << int(type) << ' ' << values.size();
    // Gathered or not, each slice is hit where it is; of bars, the one that shows.
    for (int row = 0; row < scene.rows() && scene.pie(); ++row) {
      if (scene.shares()[static_cast<std::size_t>(row)] < 0) continue;
      ASSERT_EQ(scene.rowAt(scene.pie()->middleOf(row, 0.9)), row);
    }
  }
}

// Lightness and the two colour axes (CIE 1976) of a colour as an eye without one kind of cones has
// it (Machado, Oliveira, Fernandes 2009).
std::array<double, 3> seenBy(const std::array<double, 9>& eye, const QColor& color) {
  std::array<double, 3> light{};
  const double given[] = {color.redF(), color.greenF(), color.blueF()};
  double linear[3];
  for (int i = 0; i < 3; ++i) linear[i] = std::pow(given[i], 2.2);
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) light[i] += eye[3 * i + j] * linear[j];
  }
  const auto [r, g, b] = light;
  const double x = std::cbrt(std::max(0.0, (0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.9505));
  const double y = std::cbrt(std::max(0.0, 0.2126 * r + 0.7152 * g + 0.0722 * b));
  const double z = std::cbrt(std::max(0.0, (0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.089));
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

TEST(ChartColorsTest, NeighboursAreToldApartByEveryEye) {
  const std::array<double, 9> eyes[] = {
      {1, 0, 0, 0, 1, 0, 0, 0, 1},
      {0.152286, 1.052583, -0.204868, 0.114503, 0.786281, 0.099216, -0.003882, -0.048116, 1.051998},
      {0.367322, 0.860646, -0.227968, 0.280085, 0.672501, 0.047413, -0.01182, 0.04294, 0.968881},
      {1.255528, -0.076749, -0.178779, -0.078411, 0.930809, 0.147602, 0.004733, 0.691367, 0.3039},
  };
  for (int rows = 2; rows <= 50; ++rows) {
    for (int row = 0; row < rows; ++row) {
      for (const auto& eye : eyes) {
        const auto one = seenBy(eye, chartColor(row, rows));
        const auto next = seenBy(eye, chartColor((row + 1) % rows, rows));
        const double apart =
            std::hypot(one[0] - next[0], std::hypot(one[1] - next[1], one[2] - next[2]));
        EXPECT_GT(apart, 12) << rows << " rows, " << row << ", eye " << &eye - eyes;
      }
    }
  }
}

TEST(NumberFormatTest, WritesAsTheCountryDoes) {
  const std::tuple<double, const char*, const char*> cases[] = {{1234567.5, "#,##0", "1.234.568"},
                                                                {-0.2, "#,##0", "0"},
                                                                {2.5, "#,##0", "3"},
                                                                {-2.5, "#,##0", "-3"},
                                                                {0.125, "0.0%", "12,5%"},
                                                                {0.0625, "0.0%", "6,3%"},
                                                                {1, "##0.0%", "100,0%"},
                                                                {1234.5, "0.00", "1234,50"}};
  for (const auto& [value, format, text] : cases) {
    EXPECT_EQ(formatNumber(value, QLatin1String(format)), QLatin1String(text)) << format;
  }
}

class ChartTest : public ::testing::Test {
 protected:
  void fill(int rows) {
    chart_.SetRepaint(false);
    chart_.SetRowCount(rows);
    for (int row = 1; row <= rows; ++row) {
      chart_.SetRow(row);
      chart_.SetRowLabel(QStringLiteral("voce %1").arg(row));
      chart_.SetData(row);
    }
    chart_.SetRepaint(true);
    chart_.resize(760, 520);
    chart_.show();
    chart_.setFocus();
  }
  int announced() { return chosen_.isEmpty() ? 0 : chosen_.takeLast()[0].toInt(); }

  Chart chart_;
  QSignalSpy chosen_{&chart_, &Chart::PointSelected};
};

TEST_F(ChartTest, GoesFromRowToRowByKeysAndTellsWhichOne) {
  fill(40);
  const std::pair<Qt::Key, int> keys[] = {
      {Qt::Key_Left, 40},     {Qt::Key_Right, 1},  {Qt::Key_Down, 2}, {Qt::Key_Up, 1},
      {Qt::Key_PageDown, 11}, {Qt::Key_PageUp, 1}, {Qt::Key_End, 40}, {Qt::Key_Home, 1}};
  for (const auto& [key, series] : keys) {
    QTest::keyClick(&chart_, key);
    EXPECT_EQ(announced(), series) << key;
    EXPECT_TRUE(chart_.accessibleDescription().startsWith(QStringLiteral("voce %1, ").arg(series)));
    // The legend has followed.
    const auto* bar = chart_.findChild<QScrollBar*>();
    EXPECT_GE(series, bar->value() + 1);
    EXPECT_LE(series, bar->value() + chart_.scene()->layout().linesInSight);
  }
  EXPECT_EQ(chart_.accessibleDescription(), "voce 1, 1, 0,1%");
}

TEST_F(ChartTest, APressTellsThePartThatItHits) {
  fill(3);
  for (const ChartType type : kTypes) {
    chart_.SetChartType(type);
    for (int series = 1; series <= 3; ++series) {
      const ChartScene& scene = *chart_.scene();
      const QPointF place =
          scene.pie()
              ? scene.pie()->middleOf(series - 1, 0.5)
              : scene.bars()->frontOf(scene.bars()->barOf(series - 1)).boundingRect().center();
      QTest::mouseClick(&chart_, Qt::LeftButton, {}, place.toPoint());
      EXPECT_EQ(announced(), series) << int(type);
    }
  }
  QVector<ChartPart> parts;
  QObject::connect(&chart_, &Chart::PartSelected, &chart_,
                   [&](ChartPart part, bool*) { parts.append(part); });
  const ChartLayout& layout = chart_.scene()->layout();
  for (const QPointF& place : {layout.legend.center(), layout.footnote.center(),
                               layout.plot.topRight() - QPointF(3, -3)}) {
    QTest::mouseClick(&chart_, Qt::LeftButton, {}, place.toPoint());
  }
  EXPECT_EQ(parts, (QVector{ChartPart::Legend, ChartPart::Footnote, ChartPart::Plot}));
  EXPECT_EQ(announced(), 0);
}

TEST_F(ChartTest, LeavesAsPicturesAndOnPaper) {
  fill(12);
  const QTemporaryDir folder;
  const auto contentOf = [&](const char* name) {
    QFile file(folder.filePath(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  for (const char* name : {"a.png", "a.svg"}) {
    CommonDialogSeam::setNextPath(folder.filePath(QLatin1String(name)));
    QTest::keyClick(&chart_, Qt::Key_S, Qt::ControlModifier);
  }
  EXPECT_EQ(QImage::fromData(contentOf("a.png"), "PNG").size(), QSize(1520, 1040));
  EXPECT_TRUE(contentOf("a.svg").contains("voce 12"));
  EXPECT_FALSE(contentOf("a.svg").contains("<image"));
  QTest::keyClick(&chart_, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFileName(folder.filePath(QStringLiteral("a.pdf")));
  chart_.Printing().LayoutForPrinter = true;
  chart_.Printing().LeftMargin = chart_.Printing().TopMargin = 3;
  chart_.PrintTo(printer);
  EXPECT_EQ(printer.pageLayout().margins(QPageLayout::Millimeter), QMarginsF(30, 30, 0, 0));
  EXPECT_TRUE(contentOf("a.pdf").startsWith("%PDF"));
  EXPECT_FALSE(contentOf("a.pdf").contains("/Subtype /Image"));
}

}  // namespace
}  // namespace platform
