#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QRadioButton>

#include "archives/codice_accesso.h"
#include "archives/frmcopiesicurezza.h"
#include "archives/frmmanarc.h"
#include "archives/modmanarc.h"
#include "core/modcuore.h"
#include "core/modini.h"
#include "core/program_folder.h"
#include "platform/common_dialogs.h"
#include "platform/file_system.h"
#include "platform/frame.h"
#include "platform/message_box.h"
#include "user.h"

namespace tavolix {
namespace {

using platform::forms, platform::kNo, platform::kOk, platform::kYes;
using platform::MessageBoxSeam, platform::CommonDialogSeam;

// The windows for archives, on the settings' archives in a folder of their own.
class Windows : public ::testing::Test {
 protected:
  Windows() {
    RegistraArchivi();
    RegistraFormArchivi();
    CaricaRegistroRaccolte();
    MessageBoxSeam::setNoWindow(true);
    CommonDialogSeam::setNoWindow(true);
    QDir(folder_.path()).mkdir("archivi");
    folder_.set("ManArc", "db_DirArc", folder_.path("archivi") + '/');
    settings("ManArc");
  }
  ~Windows() override {
    forms().clear();
    store::CloseWorkspace();
    MessageBoxSeam::reset();
    CommonDialogSeam::reset();
  }

  void settings(const char* section) const {
    ImpostaFileIni(folder_.path("tvx.ini"));
    ImpostaSezioneIni(section);
  }
  template <typename T>
  static T* part(const char* form, const char* name) {
    return forms()[form].control<T>(name);
  }
  static void answer(int pressed) { MessageBoxSeam::setNextAnswer(pressed); }
  static QString lastMessage() {
    const auto all = MessageBoxSeam::shown();
    MessageBoxSeam::reset();
    MessageBoxSeam::setNoWindow(true);
    return all.isEmpty() ? QString() : all.last().text;
  }
  static QListWidget* list() { return part<QListWidget>("frmManArc", "lstFile"); }
  // The names in the manager's list, the selected one in brackets.
  static QString names() {
    QStringList all;
    for (int i = 0; i < list()->count(); ++i) {
      const QString name = list()->item(i)->text();
      all << (i == list()->currentRow() ? '[' + name + ']' : name);
    }
    return all.join(' ');
  }
  QString inFolder(const char* folder) const {
    return QDir(folder_.path(folder)).entryList(QDir::Files).join(' ');
  }
  // Does something in the manager, then leaves it.
  void manage(const std::function<void()>& work) {
    user_.in("frmManArc", [this, work] {
      work();
      user_.in("frmManArc", [] { User::press(Qt::Key_Escape); });
    });
    EXPECT_EQ(sScegliArchivio(), QString());
    EXPECT_EQ(user_.left(), 0U);
  }
  // Presses a button of the manager and types into the prompt that comes.
  void nameBy(const char* button, const QString& name, const QString& prompt) {
    user_.in("frmAsk", [this, name, prompt] {
      EXPECT_EQ(part<QLabel>("frmAsk", "lblAsk")->text(), prompt);
      QTest::keyClicks(QApplication::focusWidget(), name);
      User::press(Qt::Key_Return);
    });
    User::click("frmManArc", button);
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }));
  }
  QStringList lines() const {
    QFile file(folder_.path("tvx.ini"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split('\n')
                                          : QStringList();
  }
  // The lines of the settings that some work changes or adds.
  QString changesBy(const std::function<void()>& work) const {
    const QStringList before = lines();
    work();
    QStringList changed;
    for (const QString& line : lines()) {
      if (!before.contains(line)) changed << line;
    }
    return changed.join(' ');
  }

  ProgramFolder folder_;
  User user_;
};

TEST_F(Windows, TheManagerMakesNamesCopiesAndDeletesArchives) {
  const auto enabled = [](const char* name) {
    return part<QWidget>("frmManArc", name)->isEnabled();
  };
  const auto info = [] { return part<QLabel>("frmManArc", "lblFileInfo")->text(); };
  manage([&] {
    EXPECT_EQ(part<QLabel>("frmManArc", "lblDir")->text(), ' ' + folder_.path("archivi") + '/');
    EXPECT_TRUE(part<QLabel>("frmManArc", "lblConsiglio")->isVisible());
    EXPECT_EQ(info(), QString());
    for (const char* name : {"cmdAprire", "cmdEliminare", "cmdRinominare", "cmdCorreggere",
                             "cmdEseguiCopie", "cmdDuplica"}) {
      EXPECT_FALSE(enabled(name)) << name;
    }
    for (const char* name : {"cmdCreare", "cmdRecupero", "cmdDirectory", "cmdImpostazioni"}) {
      EXPECT_TRUE(enabled(name)) << name;
    }
    nameBy("cmdCreare", "Casa", "Nome del nuovo archivio");
    EXPECT_EQ(names(), QString("[Casa.tvx]"));
    EXPECT_EQ(QApplication::focusWidget(), list());
    EXPECT_TRUE(list()->isVisible() && enabled("cmdAprire"));
    EXPECT_EQ(info(), QString(" Archivio selezionato: Casa.tvx (%1 bytes)")
                          .arg(QLocale().toString(platform::fileLength("modello.tvx"))));
    nameBy("cmdDuplica", "copia", "Nome del nuovo archivio ");
    nameBy("cmdDuplica", "", "Nome del nuovo archivio ");
    EXPECT_EQ(names(), QString("[Casa.tvx] copia.tvx"));
    list()->setCurrentRow(1);
    nameBy("cmdRinominare", "altra.tvx", "Nuovo nome arc. copia.tvx");
    nameBy("cmdRinominare", "Altra", "Nuovo nome arc. altra.tvx");
    EXPECT_EQ(names(), QString("[Altra.tvx] Casa.tvx"));
    User::press(Qt::Key_Delete);
    EXPECT_EQ(lastMessage(), QString());
    answer(kNo);
    User::click("frmManArc", "cmdEliminare");
    EXPECT_EQ(lastMessage(),
              QString("Sei veramente sicuro di volere eliminare l'archivio Altra.tvx "
                      "con tutti i dati in esso contenuti?"));
    EXPECT_EQ(inFolder("archivi"), QString("Altra.tvx Casa.tvx"));
    answer(kYes);
    User::click("frmManArc", "cmdEliminare");
    lastMessage();
    EXPECT_EQ(inFolder("archivi"), QString("Casa.tvx"));
    folder_.outside("INSERT INTO TAB (TipoTab) VALUES ('x'); DELETE FROM TAB", "archivi/Casa.tvx");
    answer(kOk);
    User::click("frmManArc", "cmdCorreggere");
    EXPECT_EQ(lastMessage(),
              QString("Riparazione e compressione dell'archivio avvenuta con successo!"));
    EXPECT_EQ(folder_.found("PRAGMA integrity_check", "archivi/Casa.tvx"), QString("ok"));
    EXPECT_EQ(inFolder("archivi"), QString("Casa.tvx"));
  });
  // What is gone when it is to be used is told, and the manager stays.
  manage([&] {
    QFile::remove(folder_.path("archivi/Casa.tvx"));
    for (const char* name : {"cmdDuplica", "cmdRinominare"}) {
      answer(kOk);
      nameBy(
          name, "Nuova",
          *name == 'c' && name[3] == 'D' ? "Nome del nuovo archivio " : "Nuovo nome arc. Casa.tvx");
      EXPECT_TRUE(lastMessage().contains("Codice errore: 53")) << name;
    }
    EXPECT_EQ(names(), QString("[Casa.tvx]"));
  });
}

TEST_F(Windows, CopiesAreMadeAndPutBack) {
  QFile::copy(folder_.path("modello.tvx"), folder_.path("archivi/Casa.tvx"));
  folder_.set("ManArc", "db_DirCopie", folder_.path("copie"));
  const auto copyBy = [&](const char* button) {
    user_.clicks("frmCopieSicurezza", button);
    answer(kOk);
    User::click("frmManArc", "cmdEseguiCopie");
    EXPECT_FALSE(forms()["frmCopieSicurezza"].IsVisible());
    return lastMessage();
  };
  const auto restore = [&](const QString& name, std::initializer_list<int> answers) {
    CommonDialogSeam::setNextPath(name.isEmpty() ? name : folder_.path(name));
    for (const int pressed : answers) answer(pressed);
    User::click("frmManArc", "cmdRecupero");
    return lastMessage();
  };
  manage([&] {
    const QString done = "Copia di sicurezza eseguita!",
                  back = "Recupero copia di sicurezza eseguito!";
    EXPECT_EQ(copyBy("cmdCopieSicurezzaHD"), done);
    EXPECT_EQ(inFolder("copie"), QString("Casa.tvx"));
    CommonDialogSeam::setNextPath(folder_.path("copie/altra.tvx"));
    EXPECT_EQ(copyBy("cmdManuale"), done);
    CommonDialogSeam::cancel();
    EXPECT_EQ(copyBy("cmdManuale"), QString());
    EXPECT_EQ(inFolder("copie"), QString("altra.tvx Casa.tvx"));
    folder_.outside("DELETE FROM CFG", "archivi/Casa.tvx");
    EXPECT_TRUE(restore("copie/Casa.tvx", {kNo}).startsWith("Il recupero di questa copia"));
    EXPECT_EQ(folder_.found("SELECT count(*) FROM CFG", "archivi/Casa.tvx"), QString("0"));
    EXPECT_EQ(restore("copie/Casa.tvx", {kYes, kOk}), back);
    EXPECT_EQ(folder_.found("SELECT count(*) FROM CFG", "archivi/Casa.tvx"), QString("3"));
    EXPECT_EQ(restore("copie/altra.tvx", {kOk}), back);
    EXPECT_EQ(inFolder("archivi"), QString("altra.tvx Casa.tvx"));
    QFile::rename(folder_.path("copie/altra.tvx"), folder_.path("copie/casa.tvx"));
    folder_.outside("DELETE FROM CFG", "archivi/Casa.tvx");
    EXPECT_EQ(restore("copie/casa.tvx", {kYes, kOk}), back);
    EXPECT_EQ(folder_.found("SELECT count(*) FROM CFG", "archivi/Casa.tvx"), QString("3"));
    EXPECT_EQ(inFolder("archivi"), QString("altra.tvx Casa.tvx"));
    EXPECT_EQ(restore("", {}), QString());
    CommonDialogSeam::setNextPath(folder_.path("archivi/Casa.tvx"));
    answer(kOk);
    EXPECT_EQ(restore("", {}),
              QString("Non ha senso recuperare un archivio dalla directory nella quale deve poi "
                      "essere posizionato!!"));
  });
  // A folder two levels deep is not made.
  folder_.set("ManArc", "db_DirCopie", folder_.path("uno/due"));
  user_.in("frmCopieSicurezza", [&] {
    answer(kOk);
    User::click("frmCopieSicurezza", "cmdCopieSicurezzaHD");
    EXPECT_TRUE(lastMessage().endsWith("Procedura: frmCopieSicurezza!cmdCopieSicurezzHD"));
    EXPECT_TRUE(forms()["frmCopieSicurezza"].IsVisible());
    User::press(Qt::Key_Escape);
  });
  FrmCopieSicurezza().SetPath(folder_.path("esempio.tvx"));
  FrmCopieSicurezza().ShowModal(nullptr);
  // Nothing is asked before an older copy is replaced.
  CommonDialogSeam::reset();
  user_.clicks("frmCopieSicurezza", "cmdManuale");
  user_.in("QFileDialog", [&] {
    auto* dialog = QApplication::activeModalWidget();
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(folder_.path("copie/casa.tvx"));
    QTimer::singleShot(500, dialog, [] {
      auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (question == nullptr) return;
      ADD_FAILURE() << qPrintable(question->text());
      question->reject();
    });
    answer(kOk);
    User::press(Qt::Key_Return);
  });
  FrmCopieSicurezza().ShowModal(nullptr);
  EXPECT_EQ(lastMessage(), QString("Copia di sicurezza eseguita!"));
}

TEST_F(Windows, CodesAreAskedAndChanged) {
  const QString archive = folder_.path("esempio.tvx");
  const QString wrong = "Codice d'accesso errato!";
  const QString differ = "I due codici non coincidono: codice d'accesso non modificato!";
  const store::DatabasePtr db = store::OpenDatabase(archive);
  const store::RecordsetPtr rs = db->OpenRecordset("CFG", store::RecordsetType::Table);
  rs->SetIndex("1u");
  // In this order, from an archive without a code; "?" is the question.
  const struct {
    bool agreed;
    QStringList entries;
    QString message;
    bool changed;
  } changes[] = {
      {false, {}, "", false},
      {true, {"uno", "due"}, differ, false},
      {true, {" segreto", "Segreto "}, "", true},
      {true, {"sbagliato"}, wrong, false},
      {true, {"segreto", "nuovo", "nuovo"}, "", true},
      {true, {"NUOVO", "  "}, "", true},
  };
  for (const auto& c : changes) {
    SCOPED_TRACE(qPrintable(c.entries.join(',')));
    for (const QString& entry : c.entries) user_.types("frmAskPassword", entry);
    if (c.message != wrong) answer(c.agreed ? kYes : kNo);
    if (!c.message.isEmpty()) answer(kOk);
    EXPECT_EQ(bModificaCodiceAccesso(rs, archive), c.changed);
    const QString told = lastMessage();
    EXPECT_TRUE(c.message.isEmpty() ? told.endsWith("VUOI VERAMENTE MODIFICARLO?")
                                    : told == c.message)
        << qPrintable(told);
    EXPECT_EQ(user_.left(), 0U);
    const QString code = sLeggiCodiceAccesso(archive);
    EXPECT_TRUE(c.entries.value(1) != "Segreto " || code == "SEGRETO") << qPrintable(code);
  }
  EXPECT_TRUE(bRichiediPWD(archive)) << "the code is gone";
  ConfWrite(rs, "PWD", "", 0);
  answer(kOk);
  EXPECT_FALSE(bRichiediPWD(archive));
  EXPECT_EQ(lastMessage(), QString("Codice d'accesso manomesso dall'esterno!"));
  for (const char* entry : {"uno", "uno"}) user_.types("frmAskPassword", entry);
  answer(kYes);
  EXPECT_TRUE(bModificaCodiceAccesso(rs, archive)) << "changing it repairs it";
  lastMessage();
  for (const char* entry : {"due", " uno "}) user_.types("frmAskPassword", entry);
  answer(kOk);
  EXPECT_TRUE(bRichiediPWD(archive));
  EXPECT_EQ(lastMessage(), wrong);
  user_.in("frmAskPassword", [&] {
    EXPECT_EQ(part<platform::Frame>("frmAskPassword", "pan")->Caption(),
              " Digitare codice di accesso archivio: " + archive + ' ');
    User::press(Qt::Key_Escape);
    EXPECT_TRUE(forms()["frmAskPassword"].IsVisible());
    QTest::keyClicks(QApplication::focusWidget(), "uno");
    User::click("frmAskPassword", "cmdConferma");
  });
  EXPECT_TRUE(bRichiediPWD(archive));
}

TEST_F(Windows, SettingsOfTheProgramShowAndWriteFourValues) {
  const struct {
    const char *rac, *sugg, *ext, *pos;
    const char *options, *written;
  } cases[] = {
      {"3", "1", "-1", "0", "optExtMin optPosPred", "3 1 -1 0"},
      {"99", "0", "0", "-1", "optExtMax optPosUlt", "0 0 0 -1"},
      {"x", "2", "5", "5", "optExtMax optPosPred", "0 0 0 0"},
  };
  for (const auto& c : cases) {
    folder_.set("Application", "RacAvvio", c.rac);
    folder_.set("Application", "SuggAvvio", c.sugg);
    folder_.set("Application", "ElencoExt", c.ext);
    folder_.set("Application", "Win_RePos", c.pos);
    user_.in("frmConfig", [&] {
      QStringList on;
      for (const char* name : {"optExtMax", "optExtMin", "optPosUlt", "optPosPred"}) {
        if (part<QRadioButton>("frmConfig", name)->isChecked()) on << name;
      }
      EXPECT_EQ(on.join(' '), QString(c.options));
      User::press(Qt::Key_Return);
    });
    const QStringList before = lines();
    forms()["frmConfig"].ShowModal(nullptr);
    QStringList written;
    for (const char* key : {"RacAvvio", "SuggAvvio", "ElencoExt", "Win_RePos"}) {
      written << folder_.setting("Application", key);
    }
    EXPECT_EQ(written.join(' '), QString(c.written));
    EXPECT_EQ(lines().size(), before.size()) << "nothing else in the file";
  }
  user_.in("frmConfig", [&] {
    part<QComboBox>("frmConfig", "cboRac")->setCurrentIndex(7);
    User::press(Qt::Key_Escape);
  });
  EXPECT_EQ(changesBy([] { forms()["frmConfig"].ShowModal(nullptr); }), QString());
}

TEST_F(Windows, SettingsOfArchivesAreKeptAsTheyAreSpelled) {
  QFile::copy(folder_.path("modello.tvx"), folder_.path("archivi/Casa.tvx"));
  QFile::copy(folder_.path("modello.tvx"), folder_.path("archivi/Zia.tvx"));
  const QString spelled = "C:" + folder_.path("archivi").replace('/', '\\');
  folder_.set("ManArc", "db_DirArc", spelled);
  const auto change = [&](const std::function<void()>& work) {
    user_.in("frmManArcCfg", [work] {
      work();
      User::press(Qt::Key_Return);
    });
    return changesBy([] { forms()["frmManArcCfg"].ShowModal(nullptr); });
  };
  auto* cfg = "frmManArcCfg";
  EXPECT_EQ(change([&] {
              EXPECT_FALSE(part<QWidget>(cfg, "txtDirArc")->isEnabled());
              EXPECT_FALSE(part<QWidget>(cfg, "cboArc")->isEnabled());
              User::click(cfg, "optApri");
              EXPECT_TRUE(part<QWidget>(cfg, "cboArc")->isEnabled());
              part<QComboBox>(cfg, "cboArc")->setCurrentIndex(1);
            }),
            QString("db_LastOpen=0 db_DefaultOpen=-1 db_DirCopie=%1/copie/ "
                    "db_DefaultNameOpen=%1/archivi/Zia.tvx")
                .arg(folder_.path()));
  EXPECT_EQ(folder_.setting("ManArc", "db_DirArc"), spelled);
  EXPECT_EQ(change([&] {
              EXPECT_EQ(part<QComboBox>(cfg, "cboArc")->currentText(), QString("Zia.tvx"));
              part<QCheckBox>(cfg, "chkModPos")->click();
              auto* box = part<QLineEdit>(cfg, "txtDirArc");
              EXPECT_TRUE(box->isEnabled());
              EXPECT_EQ(box->text(), folder_.path("archivi") + '/');
              box->setText(folder_.path("copie"));
            }),
            QString("db_DirArc=%1 db_DefaultNameOpen=%2/copie/Zia.tvx")
                .arg(QString(folder_.path("copie") + '/').replace('/', '\\'), folder_.path()));
  user_.in("frmManArcCfg", [&] {
    User::click(cfg, "optAsk");
    User::press(Qt::Key_Escape);
  });
  EXPECT_EQ(changesBy([] { forms()["frmManArcCfg"].ShowModal(nullptr); }), QString());
}

}  // namespace
}  // namespace tavolix
