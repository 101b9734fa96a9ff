#include <QFile>

#include "core/modmain.h"
#include "desk.h"
#include "platform/common_dialogs.h"

namespace tavolix {
namespace {

using platform::CommonDialogSeam;
using platform::MessageBoxSeam;

class Import : public Desk {
 protected:
  ~Import() override { CommonDialogSeam::reset(); }

  static QString book(const QString& name) {
    return qEnvironmentVariable("TAVOLIX_SOURCE") + "/tests/data/jet/" + name;
  }
  // The messages of an import, their titles and styles left out.
  static QStringList import(const QString& path) {
    CommonDialogSeam::setNextPath(path);
    MessageBoxSeam::reset();
    MessageBoxSeam::setNoWindow(true);
    for (int i = 0; i < 3; ++i) answer(platform::kOk);
    trigger("mnuImportaRubKPZ3");
    QStringList texts;
    for (const auto& shown : MessageBoxSeam::shown()) texts << shown.text;
    return texts;
  }
  QString found(const QString& select) const { return folder_.found(select); }
};

TEST_F(Import, RefusesWhatIsNoAddressBook) {
  ASSERT_TRUE(start());
  const int people = count("MAIN");
  const QString wrong = "Archivio non compatibile KPZ 3.x!";
  const QString failed = "Errore %1:%2. Impossibile aprire l'archivio per l'importazione";
  // An archive of the old engine has no version of an address book.
  EXPECT_EQ(import(book("rubrica-v3.arc")), QStringList(wrong));
  EXPECT_EQ(import(book("casa.mdb")), QStringList(wrong));
  EXPECT_EQ(import(folder_.path("modello.tvx")), QStringList(wrong));
  for (const char* name : {"tvx.ini", "assente.arc"}) {
    const QStringList told = import(folder_.path(name));
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].startsWith("Errore 3") && told[0].endsWith(failed.section("%2", 1)));
  }
  EXPECT_EQ(import({}), QStringList());
  EXPECT_EQ(import(book("rubrica-vuota.arc")),
            QStringList("Importazione rubrica eseguita con successo!"));
  EXPECT_EQ(count("MAIN"), people);
  EXPECT_EQ(iRacCorr, 7);
}

TEST_F(Import, CopiesEveryEntryAndSharesLookupValues) {
  ASSERT_TRUE(start());
  const int before = count("MAIN WHERE TipoRac = 7");
  const int key = found("SELECT ID FROM CONT").toInt();
  const QStringList told = import(book("rubrica.arc"));
  ASSERT_EQ(told.size(), 2);
  EXPECT_EQ(told[0], QString("Importazione rubrica eseguita con successo!"));
  EXPECT_TRUE(told[1].contains("nelle note"));
  EXPECT_EQ(count("MAIN WHERE TipoRac = 7"), before + 250);
  EXPECT_EQ(list()->RecordCount(), before + 250);
  EXPECT_EQ(found("SELECT ID FROM CONT").toInt(), key + 250);
  const QString ours = QStringLiteral("PER JOIN MAIN ON RacID = PER.ID WHERE RacID > %1").arg(key);
  EXPECT_EQ(count(ours), 250);
  EXPECT_EQ(count(ours + " AND (TabTel1ID IS NULL OR Cod <> '' OR TipoRac <> 7)"), 0);
  EXPECT_EQ(count("(SELECT 1 FROM TAB WHERE TipoTab LIKE 'TIPOTEL%' GROUP BY TipoTab, TipoRac, "
                  "\"Desc\" HAVING count(*) > 1)"),
            0);
  // Every row of the expected file, as our columns have it.
  const QStringList lines = QString::fromUtf8([] {
                              QFile file(book("attesi/rubrica.arc/RUB.tsv"));
                              EXPECT_TRUE(file.open(QIODevice::ReadOnly));
                              return file.readAll();
                            }())
                                .split('\n');
  const QStringList head = lines[0].split('\t');
  const std::pair<const char*, const char*> columns[] = {
      {"den", "Titolo"},    {"ind", "Indirizzo"}, {"Cap", "cap"},  {"Cit", "Citta"},
      {"Prv", "Provincia"}, {"Tel1", "Tel1"},     {"Fax", "Tel3"}, {"Rif", "Riferimento"},
  };
  for (const auto& [from, to] : columns) {
    QStringList expected;
    QString shown = to;
    for (const char* pair : {"'\\','\\\\'", "char(9),'\\t'", "char(10),'\\n'", "char(13),'\\r'"}) {
      shown = QStringLiteral("replace(%1,%2)").arg(shown, pair);
    }
    const QString stored = found(
        QStringLiteral("SELECT group_concat(coalesce(%1,'\\N'),'|') FROM %2").arg(shown, ours));
    for (const QString& line : lines.mid(1, 250)) {
      expected << line.split('\t')[head.indexOf(from)];
    }
    QStringList values = stored.split('|');
    expected.sort();
    values.sort();
    EXPECT_EQ(values, expected) << from;
  }
  // A second time adds all again, and the next new record gets a key of its own.
  import(book("rubrica.arc"));
  EXPECT_EQ(count("MAIN WHERE TipoRac = 7"), before + 500);
  trigger("mnuModNuovo");
  EXPECT_EQ(found("SELECT max(RacID) FROM MAIN").toInt(), key + 501);
}

}  // namespace
}  // namespace tavolix
