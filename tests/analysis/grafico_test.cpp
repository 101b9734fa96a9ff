// The chart's window on rows of an archive.

#include <QCheckBox>
#include <QPushButton>

#include "analysis/frmgrafico.h"
#include "core/modmain.h"
#include "platform/printer_dialog.h"
#include "workspace/desk.h"

namespace tavolix {
namespace {

using platform::Chart;
using platform::ChartType;

class Grafico : public Desk {
 protected:
  Grafico() {
    folder_.outside(
        "INSERT INTO TAB (ID, TipoTab, TipoRac, \"Desc\") VALUES (91001, 'PROVA', 1500, 'uno'),"
        " (91002, 'PROVA', 0, 'nulla'), (91003, 'PROVA', 250, ''), (91004, 'PROVA', 250, NULL)");
    start();
  }
  ~Grafico() override {
    form().Unload();
    platform::PrinterDialogSeam::reset();
  }

  static frmGrafico& form() { return platform::forms().as<frmGrafico>("frmGrafico"); }
  static Chart& chart() { return *form().control<Chart>("grf"); }
  static bool draws(const QString& condition, bool zeros = false) {
    const auto rows = dbArc->OpenRecordset("SELECT ID, Desc, TipoRac FROM TAB WHERE " + condition,
                                           store::RecordsetType::Snapshot);
    return form().bDisegnaGrafico("Prova", *rows, "Desc", "TipoRac", zeros);
  }
  static void press(const char* button) {
    form().control<QAbstractButton>(QLatin1String(button))->click();
  }
  // The rows whose labels show.
  static QVector<int> labelled() {
    QVector<int> rows;
    for (int i = 1; i <= chart().RowCount(); ++i) {
      if (chart().PointLabel(i).component == 7) rows.append(i);
    }
    return rows;
  }
};

TEST_F(Grafico, DrawsWhatIsNotZero) {
  EXPECT_FALSE(draws("TipoTab = 'NIENTE'"));
  EXPECT_TRUE(platform::MessageBoxSeam::shown().isEmpty());
  platform::MessageBoxSeam::setNextAnswer(platform::kOk);
  EXPECT_FALSE(draws("ID = 91002"));
  EXPECT_EQ(platform::MessageBoxSeam::shown().last().text, "Nessun dato trovato!");
  EXPECT_TRUE(draws("TipoTab = 'PROVA'", true));
  EXPECT_EQ(chart().RowCount(), 4);
  EXPECT_TRUE(draws("TipoTab = 'PROVA'"));
  EXPECT_EQ(chart().RowCount(), 3);
  EXPECT_EQ(chart().RowAt(1).label, "uno");
  EXPECT_EQ(chart().RowAt(2).label, "<<Ness. descr.>>");
  EXPECT_EQ(chart().RowAt(3).label, "<<Ness. descr.>>");
  EXPECT_EQ(chart().FootnoteText(), "Totale 2.000");
  EXPECT_EQ(chart().TitleText(), "Prova");
  platform::MessageBoxSeam::setNextAnswer(platform::kOk);
  const auto rows = dbArc->OpenRecordset("TAB", store::RecordsetType::Snapshot);
  EXPECT_FALSE(form().bDisegnaGrafico("Prova", *rows, "Desc", "Nessuna", false));
  EXPECT_TRUE(platform::MessageBoxSeam::shown().last().text.contains("frmGrafici!bDisegnaGrafico"));
}

TEST_F(Grafico, ShowsOneLabelAndNoneAfterAChangeOfKind) {
  ASSERT_TRUE(draws("TipoTab = 'PROVA'"));
  form().Window()->show();
  const std::tuple<const char*, ChartType, int> kinds[] = {{"cmdBarre", ChartType::Bars3D, 0},
                                                           {"opt3D", ChartType::Bars, 1},
                                                           {"cmdTorta", ChartType::Pie, 5},
                                                           {"opt3D", ChartType::Pie3D, 5}};
  for (const auto& [button, type, place] : kinds) {
    press(button);
    EXPECT_EQ(chart().Type(), type) << button;
    EXPECT_TRUE(labelled().isEmpty()) << button;
    QTest::keyClick(&chart(), Qt::Key_Home);
    QTest::keyClick(&chart(), Qt::Key_Right);
    EXPECT_EQ(labelled(), QVector{2}) << button;
    EXPECT_EQ(chart().PointLabel(2).LocationType, place) << button;
  }
  form().MostraDataPointLabels(true, -1);
  EXPECT_EQ(labelled(), (QVector{1, 2, 3}));
}

TEST_F(Grafico, PrintsWithoutLabelAndLeavesTheChartAsItIsWhenGivenUp) {
  ASSERT_TRUE(draws("TipoTab = 'PROVA'"));
  form().Window()->show();
  QTest::keyClick(&chart(), Qt::Key_Home);
  platform::PrinterDialogSeam::setNextFile({});
  press("cmdStampa");
  EXPECT_EQ(labelled(), QVector{1});
  const QString paper = folder_.path("grafico.pdf");
  platform::PrinterDialogSeam::setNextFile(paper);
  press("cmdStampa");
  EXPECT_TRUE(QFile::exists(paper));
  EXPECT_TRUE(labelled().isEmpty());
  EXPECT_EQ(chart().Backdrop(), Chart::FilledBackdrop);
  EXPECT_FALSE(chart().Printing().LayoutForPrinter);
  QTest::keyClick(&chart(), Qt::Key_Escape);
  EXPECT_FALSE(form().IsLoaded());
}

}  // namespace
}  // namespace tavolix
