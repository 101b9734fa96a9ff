#include <QAction>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "core/raccolte.h"
#include "desk.h"
#include "platform/form.h"

namespace tavolix {
namespace {

class Start : public Desk {};

TEST_F(Start, ShowsTheFirstCollection) {
  ASSERT_TRUE(start());
  EXPECT_EQ(window()->windowTitle(),
            QString("Velmar Tavolix 98 Rev. 02 - Archivio in uso: esempio.tvx"));
  EXPECT_EQ(title(), QString("Raccolta Libri"));
  EXPECT_EQ(status(), "Elenco completo: " + folder_.found("SELECT count(*) FROM LIB") + " records");
  QStringList captions;
  for (int tab = 1; tab <= tabs()->Count(); ++tab) {
    captions << tabs()->Tag(tab) + ' ' + tabs()->tabText(tab - 1);
  }
  EXPECT_EQ(captions.join(", "),
            QString("7 Persone e contatti, 0 Libri, 1 Riviste, 2 Audio, 3 Video, 4 Software, "
                    "5 Medicinali, 6 Oggetti vari"));
  EXPECT_EQ(tabs()->SelectedTag(), QString("0"));
  EXPECT_TRUE(grid()->hasFocus());
  EXPECT_TRUE(form()->isVisible());
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Start, HasAllCommands) {
  ASSERT_TRUE(start());
  const struct {
    const char* name;
    const char* shortcut;
    bool works;  // without the program's other windows
  } cases[] = {
      {"mnuGestArc", "", false},
      {"mnuFileCopie", "", false},
      {"mnuFileEsporta", "", false},
      {"mnuImportaRubKPZ3", "", false},
      {"mnuCodiceAccesso", "", false},
      {"mnuFileStampe", "", false},
      {"mnuConfigurazione", "", false},
      {"mnuFileChiudi", "", true},
      {"mnuModNuovo", "F12", true},
      {"mnuModElimina", "", true},
      {"mnuCancellaMultiplo", "", true},
      {"mnuModDuplica", "F11", true},
      {"mnuSottoraccolta", "F9", true},
      {"mnuRaccoltePersone", "Ctrl+P", true},
      {"mnuRaccolteLibri", "Ctrl+L", true},
      {"mnuRaccolteRiviste", "Ctrl+R", true},
      {"mnuRaccolteAudio", "Ctrl+A", true},
      {"mnuRaccolteVideo", "Ctrl+V", true},
      {"mnuRaccolteSoftware", "Ctrl+S", true},
      {"mnuRaccolteMedicinali", "Ctrl+M", true},
      {"mnuRaccolteOggetti", "Ctrl+O", true},
      {"mnuAnalisiInfoAcc", "", false},
      {"mnuModFiltra", "", false},
      {"mnuEliminaFiltro", "", true},
      {"mnuModTrova", "", false},
      {"mnuOrdina", "", false},
      {"mnuAnalisiRaggruppamenti", "", false},
      {"mnuMaxExtension", "", true},
      {"mnuVarieSalva", "", true},
      {"mnuGuida", "", false},
      {"mnuSuggerimenti", "", false},
      {"mnuInfo", "", false},
      {"mnuMyInfo", "", false},
  };
  for (const auto& c : cases) {
    const QAction* entry = action(c.name);
    ASSERT_NE(entry, nullptr) << c.name;
    EXPECT_EQ(entry->shortcut().toString(QKeySequence::PortableText), QString(c.shortcut))
        << c.name;
    EXPECT_EQ(entry->isEnabled(), c.works) << c.name;
    EXPECT_FALSE(entry->text().isEmpty()) << c.name;
  }
}

TEST_F(Start, EnablesTheButtonsThatCanBePressed) {
  ASSERT_TRUE(start());
  for (int i = 0; i <= 10; ++i) {
    const QWidget* button = mainControl(QStringLiteral("cmdBar(%1)").arg(i));
    EXPECT_EQ(button->isEnabled(), i == 3) << i;
    EXPECT_FALSE(button->toolTip().isEmpty()) << i;
  }
  for (const char* name : {"cmdAddNew", "cmdCancella", "cmdDuplica", "cmdEspandi"}) {
    EXPECT_TRUE(mainControl(name)->isEnabled() && mainControl(name)->isVisible()) << name;
  }
  EXPECT_FALSE(mainControl("cmdSubRac")->isVisible());
  selectByTab(2);
  EXPECT_TRUE(mainControl("cmdSubRac")->isVisible());
  EXPECT_TRUE(mainControl("cmdSubRac")->isEnabled());
  EXPECT_EQ(static_cast<QPushButton*>(mainControl("cmdSubRac"))->text(), QString("Brani    "));
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Start, FollowsTheSettings) {
  const struct {
    const char* collection;
    const char* extension;
    QString title;
    bool formVisible;
  } cases[] = {
      {"3", "-1", "Raccolta Video", true},
      {"7", "0", "Raccolta Persone", false},
      {"6", "5", "Raccolta Oggetti Vari", false},
      {"due", "-1", "Raccolta Libri", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.collection);
    folder_.set("Application", "RacAvvio", c.collection);
    folder_.set("Application", "ElencoExt", c.extension);
    ASSERT_TRUE(start());
    EXPECT_EQ(title(), c.title);
    EXPECT_EQ(form()->isVisible(), c.formVisible);
    EXPECT_EQ(action("mnuMaxExtension")->isChecked(), !c.formVisible);
    EXPECT_EQ(static_cast<QPushButton*>(mainControl("cmdEspandi"))->isChecked(), c.formVisible);
    end();
  }
}

TEST_F(Start, ExtendsTheListWithoutItsSetting) {
  folder_.writeFile("tvx.ini",
                    "[ManArc]\ndb_LastOpen=-1\ndb_LastNameOpen=esempio.tvx\n"
                    "db_version=1\ndb_application=Tavolix\n");
  ASSERT_TRUE(start());
  EXPECT_TRUE(action("mnuMaxExtension")->isChecked());
  EXPECT_FALSE(form()->isVisible());
  EXPECT_EQ(title(), QString("Raccolta Libri"));
}

TEST_F(Start, OpensTheArchiveOfTheCommandLine) {
  const QString spaced = folder_.path("il mio archivio.tvx");
  QFile::copy(folder_.path("modello.tvx"), spaced);
  const QString lines[] = {'"' + spaced + '"', ' ' + spaced + ' ', "IL MIO ARCHIVIO.TVX"};
  for (const QString& line : lines) {
    ASSERT_TRUE(start(line));
    EXPECT_TRUE(window()->windowTitle().toLower().endsWith("in uso: il mio archivio.tvx"));
    EXPECT_EQ(status(), QString("Elenco completo: 0 records"));
    end();
  }
}

TEST_F(Start, EndsWithoutAnArchive) {
  folder_.set("ManArc", "db_LastNameOpen", "assente.tvx");
  answer(platform::kOk);
  EXPECT_FALSE(start());
  EXPECT_EQ(message(), QString("Attenzione! 48 L'archivio assente.tvx non esiste o non e' "
                               "utilizzabile."));
  EXPECT_FALSE(platform::forms().isLoaded("frmMain"));
}

// A collection that does not exist leaves the program without one until a tab is chosen.
TEST_F(Start, WaitsForACollection) {
  const char* const quiet[] = {"mnuMaxExtension", "mnuMaxExtension", "mnuVarieSalva",
                               "mnuModElimina",   "mnuModDuplica",   "mnuCancellaMultiplo"};
  for (const char* number : {"99", "8", "-3"}) {
    SCOPED_TRACE(number);
    folder_.set("Application", "RacAvvio", number);
    ASSERT_TRUE(start());
    for (const char* name : quiet) trigger(name);
    EXPECT_EQ(message(), QString("-"));
    for (int i = 0; i < 8; ++i) answer(platform::kOk);
    trigger("mnuModNuovo");
    trigger("mnuEliminaFiltro");
    message();
    selectByTab(4);
    EXPECT_EQ(title(), QString("Raccolta Software"));
    EXPECT_EQ(message(), QString("-"));
    end();
  }
}

}  // namespace
}  // namespace tavolix
