#include <QTest>

#include "core/modmain.h"
#include "desk.h"
#include "platform/common_dialogs.h"

namespace tavolix {
namespace {

class ArchiveCommands : public Desk {
 protected:
  // What the window is about: archive and number of records.
  static QString shown() {
    return window()->windowTitle().section(": ", 1) + ' ' + status().section(": ", 1);
  }
};

// The archive is closed meanwhile: what was typed is in the file before, and shown after.
TEST_F(ArchiveCommands, CloseTheArchiveAndTakeItUpAgain) {
  ASSERT_TRUE(start());
  const QString before = shown();
  enter("txtNote");
  replace("4711");
  QString inFile;
  inForm(
      "frmCopieSicurezza", [] { action("mnuFileCopie")->trigger(); },
      [&] { inFile = folder_.found("SELECT count(*) FROM MAIN WHERE Note = '4711'"); });
  EXPECT_EQ(inFile, QString("1"));
  EXPECT_EQ(shown(), before);
  EXPECT_TRUE(dbArc->IsOpen() && list()->RecordCount() > 0);
  // Another one, then given up. The template is not offered.
  QFile::copy(folder_.path("modello.tvx"), folder_.path("fine.tvx"));
  inForm(
      "frmManArc", [] { action("mnuGestArc")->trigger(); }, [] { press("End Return"); });
  EXPECT_EQ(shown(), QString("fine.tvx 0 records"));
  inForm(
      "frmManArc", [] { action("mnuGestArc")->trigger(); }, [] { press("Escape"); });
  EXPECT_EQ(shown(), QString("fine.tvx 0 records"));
  EXPECT_EQ(folder_.setting("ManArc", "db_LastNameOpen"), folder_.path("fine.tvx"));
}

// Whatever is damaged: an offer to repair it, and a start that asks.
TEST_F(ArchiveCommands, OfferToRecoverWhatCannotBeOpened) {
  for (const char* table : {"CONT", "TAB"}) {
    folder_.set("ManArc", "db_LastOpen", "-1");
    QFile::remove(folder_.path("guasto.tvx"));
    QFile::copy(folder_.path("esempio.tvx"), folder_.path("guasto.tvx"));
    folder_.outside(QStringLiteral("DROP TABLE %1").arg(table), "guasto.tvx");
    answerAll();
    inForm(
        "frmRecupero", [&] { EXPECT_FALSE(start("guasto.tvx")); }, [] {});
    EXPECT_EQ(folder_.setting("ManArc", "db_LastOpen"), QString("0")) << table;
    EXPECT_TRUE(message().endsWith("Procedura: modMain!bApriDB")) << table;
    end();
  }
}

}  // namespace
}  // namespace tavolix
