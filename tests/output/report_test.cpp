#include <gtest/gtest.h>

#include <QProcess>

#include "core/program_folder.h"
#include "model/raccolte.h"
#include "output/filter_words.h"
#include "output/report_document.h"
#include "output/report_output.h"
#include "output/report_reader.h"
#include "platform/clock.h"
#include "store/value_text.h"

namespace tavolix::report {
namespace {

struct Refusal {
  const char* name;
  const char* content;
  const char* description;
};
void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << refusal.name;
}

class Refused : public ::testing::TestWithParam<Refusal> {};

const Refusal kRefusals[] = {
    {"Empty", "", "f.rpt, riga 1: il file non è in XML corretto"},
    {"Binary", "\x01\x02\xff", "f.rpt, riga 1: il file non è in XML corretto"},
    {"Foreign", "<html/>", "f.rpt, riga 1: manca l'elemento <stampa>"},
    {"CutShort", "<stampa origine='Q'>\n<dettaglio>",
     "f.rpt, riga 2: il file non è in XML corretto"},
    {"NoSource", "<stampa titolo='x'/>", "f.rpt, riga 1: manca l'attributo \"origine\""},
    {"UnknownBand", "<stampa origine='Q'>\n\n<fascia/></stampa>",
     "f.rpt, riga 3: elemento <fascia> sconosciuto in questo posto"},
    {"UnknownAttribute", "<stampa origine='Q'>\n<dettaglio altezza='4'/></stampa>",
     "f.rpt, riga 2: attributo \"altezza\" sconosciuto"},
    {"NestedSubreport",
     "<stampa origine='Q'><sottostampa origine='S' chiave='A' legame='B'>\n<sottostampa/>"
     "</sottostampa></stampa>",
     "f.rpt, riga 2: elemento <sottostampa> sconosciuto in questo posto"},
    {"AbsurdLength", "<stampa origine='Q'>\n<dettaglio alto='1e300'/></stampa>",
     "f.rpt, riga 2: valore \"1e300\" non valido per \"alto\""},
    {"NoNumber", "<stampa origine='Q'><dettaglio alto='nan'/></stampa>",
     "f.rpt, riga 1: valore \"nan\" non valido per \"alto\""},
    {"NoRoom", "<stampa origine='Q'><dettaglio alto='300'/></stampa>",
     "f.rpt, riga 1: il foglio non lascia posto ai dati"},
    {"NarrowColumns", "<stampa origine='Q'><foglio colonne='12' spazio='20'/></stampa>",
     "f.rpt, riga 1: il foglio non lascia posto ai dati"},
    {"OpenField", "<stampa origine='Q'><dettaglio><testo>{Titolo</testo></dettaglio></stampa>",
     "f.rpt, riga 1: manca la parentesi \"}\""},
    {"OpenRun", "<stampa origine='Q'><dettaglio><testo>[{A}</testo></dettaglio></stampa>",
     "f.rpt, riga 1: manca la parentesi \"]\""},
    {"Format", "<stampa origine='Q'><dettaglio><testo>{A:euro}</testo></dettaglio></stampa>",
     "f.rpt, riga 1: formato \"euro\" sconosciuto"},
    {"Quantity", "<stampa origine='Q'><dettaglio><testo>{@somma}</testo></dettaglio></stampa>",
     "f.rpt, riga 1: valore \"@somma\" sconosciuto"},
    {"Condition", "<stampa origine='Q'><dettaglio><linea se='A B'/></dettaglio></stampa>",
     "f.rpt, riga 1: condizione \"A B\" non valida"},
    {"Style", "<stampa origine='Q'><dettaglio><testo stile='x'/></dettaglio></stampa>",
     "f.rpt, riga 1: valore \"x\" non valido per \"stile\""},
    {"Bomb",
     "<!DOCTYPE a [<!ENTITY a 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa'><!ENTITY b "
     "'&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c "
     "'&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'>]><stampa origine='Q'><dettaglio>"
     "<testo>&c;&c;</testo></dettaglio></stampa>",
     "f.rpt, riga 1: il file non è in XML corretto"},
};

TEST_P(Refused, NamesFileAndLine) {
  QString told;
  try {
    readDefinition(GetParam().content, "f.rpt");
  } catch (const store::Failure& failure) {
    EXPECT_EQ(failure.number(), kBadDefinition);
    told = failure.description();
  }
  EXPECT_EQ(told.left(QString(GetParam().description).size()), QString(GetParam().description));
}

INSTANTIATE_TEST_SUITE_P(Reader, Refused, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return std::string(row.param.name); });

// Reports on the sample archive.
class Reports : public ::testing::Test {
 protected:
  Reports() { platform::ClockSeam::setFixed(QDateTime(QDate(1998, 3, 7), QTime(12, 0))); }
  ~Reports() override { platform::ClockSeam::clear(); }

  std::unique_ptr<Document> document(const QByteArray& content) const {
    Definition definition = readDefinition(content, "f.rpt");
    Names names{"esempio.tvx", definition.title, {}, [](qint64) { return QString(); }};
    return std::make_unique<Document>(db_, std::move(definition), names);
  }
  static QByteArray delivered(const QString& name) {
    QFile file(qEnvironmentVariable("TAVOLIX_SOURCE") + "/data/report/" + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return file.readAll();
  }
  // A report of one band for each row.
  static QByteArray report(const QByteArray& source, const QByteArray& parts,
                           const QByteArray& attributes = {}) {
    return "<stampa titolo='Prova' origine='" + source + "' " + attributes +
           "><foglio largo='100' alto='60' sopra='5' sotto='5' sinistra='5' destra='5'/>" + parts +
           "</stampa>";
  }
  // The texts of a page, parted by bars.
  static QString texts(Document& document, int page) {
    QStringList all;
    for (const Drawn& drawn : document.texts(page)) all << drawn.text;
    return all.join('|');
  }
  static QStringList pages(Document& document) {
    document.layOutAll();
    QStringList all;
    for (int page = 0; page < document.pages(); ++page) all << texts(document, page);
    return all;
  }
  // Without blanks, and without the ligatures that a PDF has.
  static QString letters(const QString& text) {
    return text.normalized(QString::NormalizationForm_KC).remove(' ');
  }
  QString pdfText(Document& document) const {
    writePdf(document, folder_.path("prova.pdf"));
    QProcess program;
    program.start("pdftotext", {"-raw", folder_.path("prova.pdf"), "-"});
    EXPECT_TRUE(program.waitForFinished()) << "pdftotext (poppler-utils)";
    return letters(QString::fromUtf8(program.readAllStandardOutput()).simplified());
  }

  const ProgramFolder folder_;
  const store::DatabasePtr db_ = store::OpenDatabase(folder_.path("esempio.tvx"));
};

// The last record's first text, filter and order of the list: the PDF has the same rows, all and in
// order, and their number.
TEST_F(Reports, PrintTheListOfEachCollection) {
  const QStringList names = {"libri",    "riviste",    "audio",   "video",
                             "software", "medicinali", "oggetti", "persone"};
  for (int i = 0; i < names.size(); ++i) {
    SCOPED_TRACE(qPrintable(names[i]));
    const QString query = QString("Q_REP_%1").arg(i);
    db_->DeleteQueryDef(query);
    db_->CreateQueryDef(query,
                        QString("SELECT * FROM %1 WHERE MAIN.Cod <> '' ORDER BY MAIN.Cod DESC")
                            .arg(aRaccolte(i).sQuery));
    const auto rows = db_->OpenRecordset(query, store::RecordsetType::Snapshot);
    const QString title = i == 1 ? "Testata" : "Titolo";
    ASSERT_GT(rows->RecordCount(), 5);
    const auto report = document(delivered(names[i] + "-elenco.rpt"));
    const QString text = pdfText(*report);
    qsizetype at = 0;
    double worth = 0;
    for (qint64 row = 0; row < rows->RecordCount(); ++row) {
      const QString wanted = letters(rows->ValueAt(row, rows->FieldIndex(title)).toString());
      at = text.indexOf(wanted, at);
      ASSERT_GE(at, 0) << row << ' ' << wanted.toStdString();
      at += wanted.size();
      worth += rows->ValueAt(row, rows->FieldIndex("Valore")).toDouble();
    }
    const QString count = QString("%1schede").arg(rows->RecordCount());
    EXPECT_GE(text.indexOf(count, at), 0);
    EXPECT_EQ(text.contains("L." + QLocale().toString(worth, 'f', 0)), i < 7);
    EXPECT_TRUE(text.contains(QString("pagina%1di%1").arg(report->pages())));
  }
}

TEST_F(Reports, BreakPagesBetweenBandsAndLinesOfText) {
  // 50 mm of page: three bands of 14 mm each, a text that fills pages, and a band that is kept.
  const auto bands = document(report("Q_LIB",
                                     "<dettaglio alto='14'><testo largo='90' alto='4'>{@conta}"
                                     "</testo></dettaglio>"));
  const QStringList counted = pages(*bands);
  EXPECT_EQ(counted.value(0), QString("1|2|3"));
  EXPECT_EQ(counted.value(1), QString("4|5|6"));
  QByteArray words;
  for (int i = 0; i < 400; ++i) words += "parola" + QByteArray::number(i) + ' ';
  const auto text = document(report(
      "Q_LIB", "<dettaglio><testo largo='90' cresce='si'>" + words + "{Cod}</testo></dettaglio>"));
  QString joined;
  for (int page = 0; page < 10; ++page) {
    text->layOutPage();
    joined += texts(*text, page).remove('|').remove(' ');
  }
  EXPECT_TRUE(joined.startsWith(QString(words).remove(' ')));
  EXPECT_LT(text->texts(0).size(), 20U);
}

TEST_F(Reports, GroupCountAndSum) {
  const auto grouped = document(report(
      "Q_LIB",
      "<inizio alto='4'><testo largo='90' alto='4'>{@conta}</testo></inizio>"
      "<gruppo campo='Genere'><testa alto='4'><testo largo='90' alto='4'>{Genere}</testo></testa>"
      "<coda alto='4'><testo largo='90' alto='4'>{@conta} {@somma Valore:numero}"
      " {@quota}</testo></coda></gruppo><fine alto='4'><testo largo='90' alto='4'>{@conta} "
      "{@somma Valore:numero} {@quota}</testo></fine>",
      "ordine='Genere, Titolo'"));
  QStringList wanted{folder_.found("SELECT count(*) FROM LIB")};
  const QStringList groups =
      folder_
          .found(
              "SELECT coalesce(g.\"Desc\", ''), count(*), coalesce(sum(Valore), 0), "
              "100.0 * count(*) / (SELECT count(*) FROM LIB) FROM MAIN LEFT JOIN TAB g ON "
              "TABGenereID = g.ID WHERE MAIN.TipoRac = 0 GROUP BY g.\"Desc\" ORDER BY g.\"Desc\"")
          .split('\n');
  const auto number = [](const QString& text) {
    return QLocale().toString(text.toDouble(), 'f', 0);
  };
  QString whole = "0";
  for (const QString& group : groups) {
    const QStringList part = group.split('|');
    if (!part[0].isEmpty()) wanted << part[0];
    wanted << number(part[1]) + ' ' + number(part[2]) + ' ' + number(part[3]) + '%';
    whole = QString::number(whole.toDouble() + part[2].toDouble());
  }
  wanted << wanted[0] + ' ' + number(whole) + " 100%";
  EXPECT_EQ(pages(*grouped).join('|'), wanted.join('|'));
}

// The rows below each disc are those of its own query, in its order, with their count.
TEST_F(Reports, HaveSubreportsBelowTheirRows) {
  const auto laid = document(
      report("Q_AUD",
             "<dettaglio alto='4'><testo largo='90' alto='4' corpo='5'>{Titolo}</testo></dettaglio>"
             "<sottostampa origine='Q_AUDSUB' chiave='AUDSUB.AudID' legame='RacID' "
             "ordine='AUDSUB.NrBrano DESC'><dettaglio alto='4'><testo largo='90' alto='4'>{NrBrano}"
             "</testo></dettaglio><coda alto='4'><testo largo='90' alto='4'>{@conta} {@somma "
             "Durata:numero}"
             "</testo></coda></sottostampa>",
             "ordine='MAIN.ID DESC'"));
  QStringList wanted;
  for (const QString& disc :
       folder_.found("SELECT RacID, Titolo FROM MAIN WHERE TipoRac = 2 ORDER BY ID DESC")
           .split('\n')) {
    wanted << disc.section('|', 1);
    const QString where = " FROM AUDSUB WHERE AudID = " + disc.section('|', 0, 0);
    const QString pieces =
        folder_.found("SELECT CAST(NrBrano AS INT)" + where + " ORDER BY NrBrano DESC, ID");
    if (pieces.isEmpty()) continue;
    wanted << pieces.split('\n')
           << folder_.found("SELECT count(*) || ' ' || CAST(total(Durata) AS INT)" + where);
  }
  const QString all = pages(*laid).join('|').remove('.');
  EXPECT_EQ(all, wanted.join('|').remove('.'));
  EXPECT_GT(wanted.size(), 50);
}

TEST_F(Reports, AreLaidOutFromOneMomentOfTheArchive) {
  Outside other(folder_.path("esempio.tvx"));
  other.setBusyTimeout(0);
  const auto isFree = [&other] {
    const bool free = other.tryExec("BEGIN EXCLUSIVE") == 0;
    if (free) other.exec("ROLLBACK");
    return free;
  };
  const auto laid = document(report(
      "Q_LIB", "<dettaglio alto='20'><testo largo='90' alto='4'>{Titolo}</testo></dettaglio>"));
  EXPECT_FALSE(isFree());
  // What this program writes is not held up, and is seen.
  const auto rows = db_->OpenRecordset("Q_LIB", store::RecordsetType::Dynaset);
  rows->Edit();
  rows->SetValue("Titolo", "Appena scritto");
  rows->Update();
  EXPECT_TRUE(isFree());
  EXPECT_EQ(laid->layOutPage(), Document::Layout::BegunAnew);
  EXPECT_TRUE(texts(*laid, 0).startsWith("Appena scritto"));
  EXPECT_FALSE(isFree());
  laid->layOutAll();
  EXPECT_TRUE(isFree());
  EXPECT_FALSE(laid->isOld());
  other.exec("UPDATE MAIN SET Titolo = 'Altrui' WHERE Titolo = 'Appena scritto'");
  EXPECT_TRUE(laid->isOld());
}

TEST_F(Reports, TellTheFilterInWords) {
  const QString genre = folder_.found(
      "SELECT ID || '|' || \"Desc\" FROM TAB WHERE TipoTab = 'GENERE' AND TipoRac = 0 LIMIT 1");
  const std::pair<QString, QString> cases[] = {
      {"", ""},
      {" WHERE (MAIN.Titolo Like '*l''ora*')", "Titolo contiene \"l'ora\""},
      {" WHERE (MAIN.Cod = 'A[*]')", "Codice uguale a \"A[*]\""},
      {" WHERE (MAIN.Cod Like '*A[*]b*')", "Codice contiene \"A*b\""},
      {" WHERE ((MAIN.Cod <> '' and MAIN.Cod Is Not Null) )", "Codice diverso da \"\""},
      {" WHERE ((MAIN.Cod = '' or MAIN.Cod Is Null) )", "Codice uguale a \"\""},
      {" WHERE (MAIN.TABGenereID = " + genre.section('|', 0, 0) + ")",
       "Genere uguale a " + genre.section('|', 1)},
      {" WHERE (MAIN.TABGenereID = 0)", "Genere uguale a nessuno"},
      {" WHERE (MAIN.Valore >= 12.5)", "Valore maggiore o uguale a 12,5"},
      {" WHERE ((MAIN.Anno > 1980) AND MAIN.Anno < 1990)",
       "Anno maggiore di 1980 e Anno minore di 1990"},
      {" WHERE ((MAIN.Anno = 1980) OR MAIN.Anno <= 1900)",
       "Anno uguale a 1980 oppure Anno minore o uguale a 1900"},
      {" WHERE (MAIN.DtaAcq > 35000)", "Data di acquisto maggiore di 28/10/1995"},
      {" WHERE (MAIN.Titolo Like '*WHERE*') ORDER BY MAIN.Cod", "Titolo contiene \"WHERE\""},
      {" WHERE (MAIN.Titolo Like '* ORDER BY x*') ORDER BY MAIN.Cod",
       "Titolo contiene \" ORDER BY x\""},
  };
  for (const auto& [filter, words] : cases) {
    db_->DeleteQueryDef("Q_REP_0");
    db_->CreateQueryDef("Q_REP_0", "SELECT * FROM Q_LIB" + filter);
    EXPECT_EQ(filterInWords(*db_, "Q_REP_0"), words);
  }
  EXPECT_EQ(filterInWords(*db_, "Q_LIB"), QString());
}

TEST_F(Reports, TellWhatTheArchiveDoesNotHave) {
  const std::pair<QByteArray, int> cases[] = {
      {report("Q_NESSUNA", ""), store::failure::kTableNotFound},
      {report("Q_LIB", "<dettaglio><testo>{Assente}</testo></dettaglio>"),
       store::failure::kItemNotFound},
      {report("Q_AUD", "<sottostampa origine='Q_AUDSUB' chiave='Assente' legame='ID'/>"),
       store::failure::kItemNotFound}};
  for (const auto& [content, number] : cases) {
    int told = 0;
    try {
      document(content);
    } catch (const store::Failure& failure) {
      told = failure.number();
    }
    EXPECT_EQ(told, number) << content.toStdString();
  }
}

}  // namespace
}  // namespace tavolix::report
