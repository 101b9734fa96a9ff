// The guide: its pages against the program that they tell about, and the key that opens them.

#include <QCryptographicHash>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTextBrowser>

#include "assist/frmguida.h"
#include "assist/pagine_guida.h"
#include "core/comandi.h"
#include "desk.h"

namespace tavolix {
namespace {

QString sourceFolder() {
  return qEnvironmentVariable("TAVOLIX_SOURCE");
}
QString contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
QStringList captures(const QString& pattern, const QString& text) {
  QStringList all;
  for (const auto& match : QRegularExpression(pattern).globalMatch(text)) all << match.captured(1);
  return all;
}

class Guide : public Desk {
 protected:
  Guide() {
    QFile::copy(qEnvironmentVariable("TAVOLIX_DATA") + "/tvx.hlp", folder_.path("tvx.hlp"));
  }

  static QTextBrowser& page() {
    return *static_cast<QTextBrowser*>(control("frmGuida", "txtPagina"));
  }
  // The page that F1 opens, with the key given to whatever has the focus; closes the guide again.
  static QString pageAtKey() {
    press("F1");
    if (!QTest::qWaitFor([] { return platform::forms()["frmGuida"].IsVisible(); })) return "-";
    const QString name = page().source().fileName().section('.', 0, 0);
    click(control("frmGuida", "cmdChiudi"));
    return name;
  }

  const QString help_ = sourceFolder() + "/data/help";
  const PagineGuida pages_{help_};
};

TEST_F(Guide, PagesLeadToPagesAndPictures) {
  QStringList known;
  for (const PaginaGuida& page : pages_.Pagine()) {
    known << page.sNome + ".html";
    const QString html = contentOf(help_ + '/' + known.last());
    EXPECT_EQ(captures("<h1>(.*)</h1>", html).size(), 1) << qPrintable(page.sNome);
    for (const QString& target : captures("(?:href|src)=\"([^\"]+)\"", html)) {
      EXPECT_TRUE(QFile::exists(help_ + '/' + target)) << qPrintable(page.sNome + ' ' + target);
    }
  }
  known.sort();
  EXPECT_EQ(QDir(help_, "*.html").entryList(), known);
}

// A picture is as old as the texts of its window that it was taken of.
TEST_F(Guide, PicturesShowTheWindowsOfToday) {
  const QString folder = help_ + "/immagini/";
  QStringList listed;
  for (const QString& row : contentOf(folder + "immagini.tsv").split('\n').mid(1)) {
    const QStringList cells = row.split('\t');
    if (cells.size() != 3) continue;
    listed << cells[0];
    QString source = contentOf(sourceFolder() + '/' + cells[1]);
    source.remove(QRegularExpression("^#include.*\n", QRegularExpression::MultilineOption));
    const QString texts = captures("\"((?:[^\"\\\\]|\\\\.)*)\"", source).join('\n');
    const auto hash = QCryptographicHash::hash(texts.toUtf8(), QCryptographicHash::Sha1).toHex();
    EXPECT_EQ(hash.left(12), cells[2].toLatin1())
        << qPrintable(cells[1]) << " has changed: tools/pictures.py help";
    EXPECT_LE(QFileInfo(folder + cells[0]).size(), 60 * 1024) << qPrintable(cells[0]);
  }
  listed.sort();
  EXPECT_FALSE(listed.isEmpty());
  EXPECT_EQ(QDir(folder, "*.png").entryList(), listed);
}

TEST_F(Guide, EachCommandAndWindowHasItsPage) {
  int numbers = 0;
  for (const Comando* command : Comandi()) {
    if (command->guida == 0) continue;
    ++numbers;
    EXPECT_NE(pages_.PerContesto(command->guida), "") << command->nome;
  }
  EXPECT_GT(numbers, 15);
  // frmBasic is never shown.
  QDirIterator files(sourceFolder() + "/src", {"*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString source = contentOf(files.next());
    for (const QString& form : captures("QStringLiteral\\(\"(frm[A-Z]\\w+)\"\\)", source)) {
      if (form == "frmBasic") continue;
      EXPECT_NE(pages_.PerNome(form), "") << qPrintable(form);
    }
  }
}

TEST_F(Guide, FindsWordsWithoutCaseAndAccents) {
  const std::pair<const char*, const char*> cases[] = {
      {"SCADENZA", "medicinali"},    {"piu film nastro", "video"},      {"chiavetta", "copie"},
      {"segreto cifrato", "codice"}, {"PERCENTUALI", "raggruppamenti"}, {"zzz", "-"}};
  for (const auto& [text, name] : cases) {
    const auto found = pages_.Cerca(text);
    EXPECT_EQ(found.isEmpty() ? "-" : found.first()->sNome, name) << text;
  }
}

TEST_F(Guide, OpensAtThePageOfWhatHasTheKeyboard) {
  ASSERT_TRUE(start());
  leave();
  EXPECT_EQ(pageAtKey(), "elenco");
  enter("cboAutore");  // any other key opens its list
  EXPECT_EQ(pageAtKey(), "libri");
  enter("cboAutore");
  press(Qt::Key_F4);
  EXPECT_EQ(pageAtKey(), "libri");
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  mainControl("cmdAddNew")->setFocus();
  EXPECT_EQ(pageAtKey(), "record");
  inForm(
      "frmOrdina", [] { trigger("mnuOrdina"); },
      [] {
        EXPECT_EQ(pageAtKey(), "ordina");
        EXPECT_TRUE(platform::forms()["frmOrdina"].IsVisible());
        click(control("frmOrdina", "cmdEsci"));
      });
  // The way back leads through the pages seen.
  click(control("frmGuida", "cmdIndietro"));
  EXPECT_EQ(page().source().fileName(), "record.html");
}

}  // namespace
}  // namespace tavolix
