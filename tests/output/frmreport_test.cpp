#include "output/frmreport.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include "core/program_folder.h"
#include "output/modcrystal32.h"
#include "output/preview_window.h"
#include "platform/common_dialogs.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/printer_dialog.h"
#include "store/database.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;
using report::PreviewWindow;

// The catalogue of reports with the delivered settings, on the sample archive.
class Catalogue : public ::testing::Test {
 protected:
  Catalogue() {
    RegistraFormReport();
    MessageBoxSeam::setNoWindow(true);
    const QDir delivered(qEnvironmentVariable("TAVOLIX_SOURCE") + "/data/report");
    QDir(folder_.path()).mkdir("report");
    for (const QString& name : delivered.entryList(QDir::Files)) {
      QFile::copy(delivered.filePath(name), folder_.path("report/" + name));
    }
    form().ImpostaArchivio(folder_.path("esempio.tvx"));
  }
  ~Catalogue() override {
    form().Unload();
    ChiudiMotoreReport();
    platform::forms().clear();
    store::CloseWorkspace();
    MessageBoxSeam::reset();
    platform::PrinterDialogSeam::reset();
    platform::CommonDialogSeam::reset();
  }

  static frmReport& form() { return platform::forms().as<frmReport>("frmReport"); }
  static QListWidget* list() { return form().control<QListWidget>("lstFile"); }
  void load(int collection) const {
    form().Carica(folder_.path("tvx.ini"), QString("REPORT_%1").arg(collection));
  }
  static QStringList listed() {
    QStringList names;
    for (int i = 0; i < list()->count(); ++i) names << list()->item(i)->text();
    return names;
  }
  static void click(const char* button) {
    QTest::mouseClick(form().Control(button), Qt::LeftButton);
    QApplication::processEvents();
  }
  // Answers the message that some work shows, and tells its text; "-" for none.
  static QString messageOf(const std::function<void()>& work) {
    MessageBoxSeam::reset();
    MessageBoxSeam::setNextAnswer(platform::kOk);
    work();
    return MessageBoxSeam::shown().isEmpty() ? "-" : MessageBoxSeam::shown().last().text;
  }
  // The message of running a report file of some content; nothing is opened.
  QString messageOf(const QByteArray& content, const QString& archive) const {
    folder_.writeFile("prova.rpt", content);
    return messageOf([&] {
      EXPECT_FALSE(bEseguiReport(kReportAnteprima, folder_.path("prova.rpt"), archive));
      EXPECT_EQ(FinestraAnteprima(), nullptr);
    });
  }

  const ProgramFolder folder_;
};

TEST_F(Catalogue, ListsTheReportsOfItsCollection) {
  load(5);
  EXPECT_EQ(listed().join('|'), QString("Elenco completo|Elenco compatto|Elenco per genere con "
                                        "totali|Elenco per scadenza|Schede"));
  EXPECT_EQ(list()->currentRow(), 0);
  folder_.writeFile("report/libri-MIO.RPT", "");
  load(0);
  EXPECT_TRUE(listed().contains("libri-MIO.RPT"));
  folder_.set("REPORT_3", "rep_search", "niente*.rpt");
  load(3);
  EXPECT_EQ(listed().join('|'), QString());
  EXPECT_EQ(messageOf([] { click("cmdAnteprima"), click("cmdStampa"); }), QString("-"));
  for (int i = 0; i < 51; ++i) folder_.writeFile(QString("report/video-x%1.rpt").arg(i), "");
  folder_.set("REPORT_3", "rep_search", "video-x*.rpt");
  const QString told = messageOf([&] { load(3); });
  EXPECT_TRUE(told.contains("frmReport!RicaricaFiles_ERR")) << told.toStdString();
  EXPECT_EQ(list()->count(), 50);
}

TEST_F(Catalogue, ShowsOnePreviewUntilItIsClosed) {
  load(0);
  form().Show();
  QStringList told;
  QTimer::singleShot(0, [&] {
    auto* preview = qobject_cast<PreviewWindow*>(FinestraAnteprima());
    ASSERT_NE(preview, nullptr);
    EXPECT_TRUE(preview->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(preview->status().left(12), QString("pagina 1 di "));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !preview->status().endsWith("..."); }, 60000));
    QTest::keyClick(preview, Qt::Key_End);
    EXPECT_EQ(preview->status().section(' ', 1, 1), preview->status().section(' ', 3, 3));
    EXPECT_NE(preview->status(), QString("pagina 1 di 1"));
    for (const char* button : {"cmdAnteprima", "cmdStampa", "cmdEsci"}) {
      told << messageOf([&] { click(button); });
    }
    QTest::keyClick(preview, Qt::Key_Escape);
  });
  click("cmdAnteprima");
  EXPECT_EQ(told.join('|'), QString("Esiste gia' una finestra di anteprima aperta!|"
                                    "Prima di eseguire la stampa, chiudere la finestra di "
                                    "anteprima!|Finestra di anteprima ancora attiva!"));
  EXPECT_EQ(FinestraAnteprima(), nullptr);
  click("cmdEsci");
  EXPECT_FALSE(form().IsLoaded());
}

TEST_F(Catalogue, PrintsWithThePrinterOfItsDialog) {
  load(2);
  form().Show();
  platform::PrinterDialogSeam::setNextFile({});
  EXPECT_EQ(messageOf([] { click("cmdStampa"); }), QString("-"));
  platform::PrinterDialogSeam::setNextFile(folder_.path("stampa.pdf"));
  EXPECT_EQ(messageOf([] { click("cmdStampa"); }), QString("-"));
  EXPECT_GT(QFileInfo(folder_.path("stampa.pdf")).size(), 5000);
}

TEST_F(Catalogue, ExportsByTheEndingOfTheName) {
  folder_.outside(
      "UPDATE MAIN SET Titolo = 'a \"b\"; <c>', Anno = 1980 WHERE ID = (SELECT min(ID) FROM MAIN "
      "WHERE TipoRac = 0)");
  folder_.writeFile(
      "prova.rpt",
      "<stampa titolo='P &amp; Q' origine='SELECT * FROM Q_LIB ORDER BY MAIN.ID'>"
      "<dettaglio alto='4'><testo>{Titolo}{Anno}{Assente}</testo></dettaglio></stampa>");
  const auto run = [&](const QString& name) {
    return messageOf([&] {
      platform::CommonDialogSeam::setNextPath(name.isEmpty() ? name : folder_.path(name));
      bEseguiReport(kReportEsporta, folder_.path("prova.rpt"), folder_.path("esempio.tvx"));
    });
  };
  const auto content = [&](const char* name) {
    QFile file(folder_.path(name));
    if (!file.open(QIODevice::ReadOnly)) return QString("-");
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(bytes.startsWith("\xef\xbb\xbf"), QString(name).endsWith("csv"));
    return QString::fromUtf8(bytes);
  };
  EXPECT_EQ(run("x.csv").left(23), QString("Errore report: 3265 - C"));
  EXPECT_EQ(content("x.csv"), QString("-"));
  folder_.writeFile("prova.rpt",
                    "<stampa titolo='P &amp; Q' origine='SELECT * FROM Q_LIB ORDER BY MAIN.ID'>"
                    "<dettaglio alto='4'><testo>{Titolo}{Anno}</testo></dettaglio></stampa>");
  const int books = folder_.found("SELECT count(*) FROM LIB").toInt();
  EXPECT_EQ(run("x.csv"), QString("-"));
  EXPECT_EQ(content("x.csv").section("\r\n", 0, 1),
            QString("\"Titolo\";\"Anno\"\r\n\"a \"\"b\"\"; <c>\";\"1980\""));
  EXPECT_EQ(content("x.csv").count("\r\n"), books + 1);
  EXPECT_EQ(run("x.HTML"), QString("-"));
  EXPECT_TRUE(content("x.HTML").contains("<title>P &amp; Q</title>"));
  EXPECT_TRUE(content("x.HTML").contains("<tr><td>a &quot;b&quot;; &lt;c&gt;</td><td>1980</td>"));
  EXPECT_EQ(content("x.HTML").count("<tr>"), books + 1);
  EXPECT_EQ(run("x.pdf"), QString("-"));
  EXPECT_TRUE(content("x.pdf").startsWith("%PDF"));
  EXPECT_EQ(run({}), QString("-"));
  EXPECT_EQ(run("assente/x.csv").left(19), QString("Errore report: 76 -"));
}

TEST_F(Catalogue, TellsWhatIsWrongWithAReport) {
  const QString archive = folder_.path("esempio.tvx");
  const QString closed = "Impossibile aprire motore di stampa";
  const QByteArray good = "<stampa origine='Q_LIB'><dettaglio alto='4'/></stampa>";
  const QByteArray absent = "<stampa origine='Q_NO'/>";
  EXPECT_EQ(messageOf("", archive), closed);
  EXPECT_EQ(messageOf(QByteArray(100, '\0'), archive), closed);
  EXPECT_EQ(messageOf(good + QByteArray(10 << 20, ' '), archive), closed);
  EXPECT_EQ(messageOf([&] { bEseguiReport(kReportAnteprima, folder_.path("no.rpt"), archive); }),
            closed);
  EXPECT_EQ(messageOf("<stampa origine='Q_LIB'>\n<fascia/></stampa>", archive),
            QString("Errore report: 510 - prova.rpt, riga 2: elemento <fascia> sconosciuto in "
                    "questo posto"));
  EXPECT_EQ(messageOf(absent, archive).left(23), QString("Errore report: 3078 - T"));
  EXPECT_EQ(messageOf(good, folder_.path("no.tvx")).left(22), QString("Errore report: 3024 - "));
}

}  // namespace
}  // namespace tavolix
