#include <QAction>
#include <QPushButton>

#include "core/raccolte.h"
#include "desk.h"
#include "platform/form.h"

namespace tavolix {
namespace {

class Start : public Desk {};

TEST_F(Start, ShowsTheCollectionOfTheSettings) {
  const struct {
    const char* collection;
    const char* extension;
    QString title;
    bool formVisible;
  } cases[] = {
      {"0", "-1", "Raccolta Libri", true},
      {"7", "0", "Raccolta Persone", false},
      {"6", "5", "Raccolta Oggetti Vari", false},
      {"due", "", "Raccolta Libri", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.collection);
    folder_.set("Application", "RacAvvio", c.collection);
    folder_.set("Application", "ElencoExt", c.extension);
    ASSERT_TRUE(start());
    EXPECT_EQ(window()->windowTitle(),
              QString("Velmar Tavolix 98 Rev. 02 - Archivio in uso: esempio.tvx"));
    EXPECT_EQ(title(), c.title);
    EXPECT_EQ(tabs()->SelectedTag(), QString::number(iRacCorr));
    EXPECT_TRUE(grid()->hasFocus());
    EXPECT_EQ(form()->isVisible(), c.formVisible);
    EXPECT_EQ(action("mnuMaxExtension")->isChecked(), !c.formVisible);
    EXPECT_EQ(static_cast<QPushButton*>(mainControl("cmdEspandi"))->isChecked(), c.formVisible);
    end();
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Start, OpensTheArchiveOfTheCommandLine) {
  const QString spaced = folder_.path("il mio archivio.tvx");
  QFile::copy(folder_.path("modello.tvx"), spaced);
  for (const QString& line : {'"' + spaced + '"', QString(" IL MIO ARCHIVIO.TVX ")}) {
    ASSERT_TRUE(start(line));
    EXPECT_TRUE(window()->windowTitle().toLower().endsWith("in uso: il mio archivio.tvx"));
    EXPECT_EQ(status(), QString("Elenco completo: 0 records"));
    end();
  }
  answer(platform::kOk);
  EXPECT_FALSE(start("assente.tvx"));
  EXPECT_EQ(message(), QString("Attenzione! 48 L'archivio assente.tvx non esiste o non e' "
                               "utilizzabile."));
  EXPECT_FALSE(platform::forms().isLoaded("frmMain"));
}

// A collection that does not exist leaves the program without one until a tab is chosen.
TEST_F(Start, WaitsForACollection) {
  const char* const quiet[] = {"mnuMaxExtension", "mnuMaxExtension", "mnuVarieSalva",
                               "mnuModElimina",   "mnuModDuplica",   "mnuCancellaMultiplo",
                               "mnuModNuovo",     "mnuEliminaFiltro"};
  for (const char* number : {"99", "-3"}) {
    folder_.set("Application", "RacAvvio", number);
    ASSERT_TRUE(start());
    for (const char* name : quiet) trigger(name);
    EXPECT_EQ(message(), QString("-"));
    selectByTab(4);
    EXPECT_EQ(title(), QString("Raccolta Software"));
    EXPECT_EQ(message(), QString("-"));
    end();
  }
}

}  // namespace
}  // namespace tavolix
