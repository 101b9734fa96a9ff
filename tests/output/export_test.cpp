#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>

#include "core/modmain.h"
#include "core/program_folder.h"
#include "model/campi.h"
#include "model/raccolte.h"
#include "output/export_file.h"
#include "output/frmexport.h"
#include "platform/common_dialogs.h"
#include "platform/form.h"
#include "platform/message_box.h"

namespace tavolix {
namespace {

using platform::CommonDialogSeam;
using platform::MessageBoxSeam;
using text_export::fieldText;
using text_export::Format;

const QVariant kNull;

TEST(ExportLine, ValuesByType) {
  const Format plain;
  const Format single{";", "\"", true, false};
  const Format bare{"", "", true, true};
  const struct {
    const char* type;
    QVariant value;
    Format format;
    const char* expected;
  } rows[] = {
      {TXTSTR, "  L'arte \"nuova\" ", plain, "\"L'arte \"\"nuova\"\"\""},
      {TXTSTR, "L'arte \"nuova\"", single, "\"L'arte \"nuova\"\""},
      {TXTSTR, "\"", plain, "\"\"\"\""},
      {TXTSTR, "a\r\nb", plain, "\"a  b\""},
      {TXTSTR, "a;b", bare, "a;b"},
      {TXTSTR, "   ", plain, ""},
      {TXTSTR, kNull, plain, ""},
      {CBO, " a\nb\" ", plain, "\"a\nb\"\"\""},
      {CBO, "", plain, "\"\""},
      {CBO, kNull, plain, ""},
      {TXTNUM, 1234.5, plain, "1234.5"},
      {TXTNUM, 0.1 + 0.2, plain, "0.30000000000000004"},
      {TXTNUM, 1234567.0, plain, "1234567"},
      {TXTNUM, kNull, plain, "0"},
      {TXTDTA, 0, plain, "30-12-1899"},
      {TXTDTA, kNull, plain, "30-12-1899"},
      {TXTDTA, 36526.75, plain, "01-01-2000"},
      {TXTTIM, 3723, plain, "01:02:03"},
      {TXTTIM, kNull, plain, "00:00:00"},
      {CHK, -1, plain, "Si"},
      {CHK, 0, plain, "No"},
      {CHK, kNull, plain, "No"},
      {"", "x", plain, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(fieldText(row.type, row.value, row.format), QString(row.expected)) << row.type;
  }
}

// The sample archive as the open one, the first collection as the current.
class Export : public ::testing::Test {
 protected:
  Export() {
    MessageBoxSeam::setNoWindow(true);
    CommonDialogSeam::setNoWindow(true);
    platform::forms().add<frmExport>("frmExport");
    folder_.outside(
        "UPDATE MAIN SET Titolo = ' L''arte \"nuova\"; ', Note = 'a' || char(13, 10) || '|b', "
        "Valore = 1234.5, DtaAcq = NULL WHERE ID % 3 = 0;"
        "UPDATE MAIN SET TABGenereID = 999999 WHERE ID % 5 = 0;"
        "UPDATE TAB SET [Desc] = NULL WHERE TipoTab = 'EDITORE'");
    sPathArc = folder_.path("esempio.tvx");
    dbArc = store::OpenDatabase(sPathArc);
    rsTab = dbArc->OpenRecordset("TAB", store::RecordsetType::Table);
    rsTab->SetIndex("1u");
    iRacCorr = 0;
  }
  ~Export() override {
    platform::forms().clear();
    rsTab = nullptr;
    dbArc = nullptr;
    store::CloseWorkspace();
    iRacCorr = -1;
    MessageBoxSeam::reset();
    CommonDialogSeam::reset();
  }

  QString target() const { return folder_.path("uscita.txt"); }
  QByteArray written() const {
    QFile file(target());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("-");
  }
  void write(int iRac, const Format& format = {}) const {
    text_export::writeCollection(iRac, *dbArc, *rsTab, target(), format, {});
  }
  // What the file is to hold of a field, told by another program; a field that is not there is "".
  static QString asked(const tCampo& campo, const QString& column) {
    if (campo.sTipo == CBO) {
      return QString("ifnull((SELECT trim(\"Desc\") FROM TAB WHERE ID = %1), '')").arg(column);
    }
    if (campo.sTipo == TXTNUM) return QString("printf('%.15g', ifnull(%1, 0))").arg(column);
    if (campo.sTipo == TXTDTA) {
      return QString("strftime('%d-%m-%Y', ifnull(%1, 0) + 2415018.5)").arg(column);
    }
    if (campo.sTipo == TXTTIM) return QString("time(ifnull(%1, 0), 'unixepoch')").arg(column);
    if (campo.sTipo == CHK) return QString("iif(ifnull(%1, 0), 'Si', 'No')").arg(column);
    return QString("ifnull(replace(replace(trim(%1), char(13), ' '), char(10), ' '), '')")
        .arg(column);
  }
  QString expected(int iRac) const {
    const tRaccolta& raccolta = aRaccolte(iRac);
    QStringList titles, columns;
    for (int i = 0; i < iNumeroCampi(iRac); ++i) {
      titles << aCampi(iRac, i).sTitolo;
      columns << asked(aCampi(iRac, i), sCampoQualificato(iRac, i));
    }
    const QString query = QString(
                              "SELECT %1 FROM MAIN JOIN %2 ON MAIN.RacID = %2.ID WHERE "
                              "MAIN.TipoRac = %3 ORDER BY %2.ID")
                              .arg(columns.join(", "), raccolta.sTabDettaglio)
                              .arg(iRac);
    return titles.join('|') + '\n' + folder_.found(query);
  }
  // The fields of a file as any reader of such files finds them, parted by "|".
  static QString parsed(const QString& text) {
    QString fields;
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
      const QChar sign = text.at(i);
      if (sign == '"' && quoted && text.mid(i + 1, 1) == "\"") {
        fields += text.at(++i);
      } else if (sign == '"') {
        quoted = !quoted;
      } else if (sign == ';' && !quoted) {
        fields += '|';
      } else if (sign == '\r' && !quoted) {
        EXPECT_EQ(text.mid(i, 2), "\r\n");
      } else {
        fields += sign;
      }
    }
    EXPECT_TRUE(fields.endsWith('\n'));
    fields.chop(1);
    return fields;
  }
  static platform::Form& form() { return platform::forms()["frmExport"]; }
  void click(const QString& path) const {
    CommonDialogSeam::setNextPath(path);
    form().control<QAbstractButton>("cmdEsporta")->click();
  }
  // The messages since the last call.
  static QStringList told() {
    QStringList texts;
    for (const auto& shown : MessageBoxSeam::shown()) texts << shown.text;
    MessageBoxSeam::reset();
    MessageBoxSeam::setNoWindow(true);
    return texts;
  }

  ProgramFolder folder_;
};

TEST_F(Export, EveryValueOfEveryCollection) {
  for (int iRac = 0; iRac < kRaccoltePrincipali; ++iRac) {
    aRaccolte(iRac).sFiltro = " WHERE MAIN.Titolo = 'no'";
    write(iRac);
    EXPECT_EQ(parsed(QString::fromUtf8(written())), expected(iRac)) << iRac;
    aRaccolte(iRac).sFiltro.clear();
  }
}

TEST_F(Export, AnEmptyCollectionIsItsHead) {
  folder_.outside("DELETE FROM MAIN WHERE TipoRac = 5");
  write(5);
  EXPECT_EQ(written().count("\r\n"), 1);
  write(5, {";", "\"", false, true});
  EXPECT_EQ(written(), "");
}

TEST_F(Export, StopsWithTheOlderFileInPlace) {
  folder_.writeFile("uscita.txt", "prima");
  const auto stop = [](qint64, qint64) { return false; };
  EXPECT_THROW(text_export::writeCollection(0, *dbArc, *rsTab, target(), {}, stop), store::Failure);
  EXPECT_EQ(written(), "prima");
  EXPECT_EQ(QDir(folder_.path()).entryList({"uscita*"}), QStringList("uscita.txt"));
}

TEST_F(Export, TheWindowsOptions) {
  form().Load();
  form().control<QLineEdit>("txtSep")->setText(",");
  form().control<QLineEdit>("txtDel")->setText("'");
  form().control<QCheckBox>("chkPriRig")->setChecked(false);
  form().control<QCheckBox>("chkRadDel")->setChecked(false);
  MessageBoxSeam::setNextAnswer(platform::kOk);
  click(target());
  EXPECT_EQ(told(), QStringList("Esportazione terminata con successo!"));
  EXPECT_FALSE(form().IsLoaded());
  const QByteArray ours = written();
  write(0, {",", "'", false, false});
  EXPECT_EQ(ours, written());
}

TEST_F(Export, StaysWhereNoFileIsChosen) {
  form().Load();
  click({});
  click("  ");
  EXPECT_EQ(told(), QStringList());
  MessageBoxSeam::setNextAnswer(platform::kOk);
  click(sPathArc);
  EXPECT_EQ(told(), QStringList("Questo file e' l'archivio in uso: scegliere un altro nome."));
  EXPECT_TRUE(form().IsLoaded());
}

TEST_F(Export, AFailedWriteIsToldBeforeTheEnd) {
  form().Load();
  MessageBoxSeam::setNextAnswer(platform::kOk);
  MessageBoxSeam::setNextAnswer(platform::kOk);
  const QString nowhere = folder_.path("manca/uscita.txt");
  click(nowhere);
  const QStringList texts = told();
  ASSERT_EQ(texts.size(), 2);
  EXPECT_TRUE(texts[0].startsWith("Il file " + nowhere + " e' incompleto"))
      << texts[0].toStdString();
  EXPECT_EQ(texts[1], "Esportazione terminata con successo!");
}

}  // namespace
}  // namespace tavolix
