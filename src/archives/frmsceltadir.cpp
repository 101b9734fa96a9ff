#include "archives/frmsceltadir.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "archives/percorsi.h"
#include "archives/unita.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modutil.h"
#include "platform/drop_down.h"
#include "platform/file_system.h"
#include "platform/handlers.h"
#include "platform/path_label.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"
#include "store/failure.h"

namespace tavolix {
namespace {

constexpr QSize kCharacters(52, 20);  // of the window
const QString kUp = QStringLiteral("..");

QString withSlash(const QString& folder) {
  return folder.endsWith(u'/') ? folder : folder + u'/';
}

// The folder itself, or the nearest one above that exists.
QString existing(QString folder) {
  while (!QFileInfo(folder).isDir() && folder != u'/') folder = QFileInfo(folder).path();
  return folder;
}

QLabel* newLabel(const char* text, QWidget* buddy) {
  auto* label = new QLabel(QString::fromUtf8(text), buddy->parentWidget());
  label->setBuddy(buddy);
  return label;
}

}  // namespace

QStringList sSottocartelle(const QString& sDir, const QString& sVerso) {
  QStringList folders;
  const auto kinds = QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
  for (const QString& name : QDir(sDir).entryList(kinds, QDir::Name | QDir::IgnoreCase)) {
    const bool onTheWay = withSlash(sVerso).startsWith(withSlash(withSlash(sDir) + name));
    if (!name.startsWith(u'.') || onTheWay) folders.append(name);
  }
  return folders;
}

frmSceltaDir::frmSceltaDir()
    : platform::Form(QStringLiteral("frmSceltaDir"),
                     {.title = "Selezione directory", .icon = "archivi", .escape = "cmdAnnulla"}) {}

QWidget* frmSceltaDir::build() {
  auto* window = new QDialog;
  auto* cboDrive = new platform::DropDown(window);
  cboDrive->setObjectName(QStringLiteral("cboDrive"));
  auto* lstDir = new QListWidget(window);
  lstDir->setObjectName(QStringLiteral("lstDir"));
  lstDir->setUniformItemSizes(true);
  auto* lblDir = new platform::PathLabel(window);
  lblDir->setObjectName(QStringLiteral("lblDir"));
  auto* column = new QVBoxLayout(window);
  column->addWidget(newLabel("&Unita':", cboDrive));
  column->addWidget(cboDrive);
  column->addWidget(newLabel("&Directory:", lstDir));
  column->addWidget(lstDir, 1);
  column->addWidget(lblDir);
  column->addLayout(rigaConferma(window));
  const QSize wanted(platform::widthOfCharacters(window, kCharacters.width()),
                     window->fontMetrics().lineSpacing() * kCharacters.height());
  window->resize(wanted.boundedTo(platform::roomOnScreen()));
  return window;
}

QComboBox& frmSceltaDir::cboDrive() {
  return *control<QComboBox>(QStringLiteral("cboDrive"));
}

QListWidget& frmSceltaDir::lstDir() {
  return *control<QListWidget>(QStringLiteral("lstDir"));
}

QString frmSceltaDir::lblDir() {
  return control<QLabel>(QStringLiteral("lblDir"))->text();
}

void frmSceltaDir::loaded() {
  PreparaDialogo(*this);
  radici_ = sRadici(Volumi(), QDir::homePath());
  for (const QString& root : radici_) cboDrive().addItem(root);
  platform::onSignal(&cboDrive(), &QComboBox::activated, this,
                     [this](int place) { openFolder(radici_.value(place)); });
  platform::onSignal(&lstDir(), &QListWidget::itemDoubleClicked, this, [this] { enterSelected(); });
  platform::onClick(this, "cmdConferma", [this] { Hide(); });
  platform::onClick(this, "cmdAnnulla", [this] { cmdAnnulla_Click(); });
  lstDir().setFocus();
}

void frmSceltaDir::Path(const QString& sDir) {
  sDir_ = sDir;
  protetto("frmSceltaDir!Path", [&] {
    const QString given = platform::systemPath(sDir);
    const QString folder = existing(given.isEmpty() ? platform::currentDirectory() : given);
    cboDrive().setCurrentIndex(iRadiceDi(radici_, folder));
    openFolder(folder);
    if (folder == given) return;
    throw store::Failure(platform::file_failure::kPathNotFound,
                         QStringLiteral("Percorso non trovato: ") + sDir);
  });
}

void frmSceltaDir::openFolder(const QString& folder) {
  const QString from = QDir(folder).relativeFilePath(opened_);
  opened_ = folder;
  control<QLabel>(QStringLiteral("lblDir"))->setText(withSlash(folder));
  lstDir().clear();
  if (folder != u'/') lstDir().addItem(kUp);
  lstDir().addItems(sSottocartelle(folder, platform::systemPath(sDir_)));
  // Coming from below, the list stands on where one was.
  const auto same = lstDir().findItems(from, Qt::MatchExactly);
  lstDir().setCurrentRow(same.isEmpty() || from == kUp ? 0 : lstDir().row(same.first()));
}

void frmSceltaDir::enterSelected() {
  const QListWidgetItem* item = lstDir().currentItem();
  if (item == nullptr) return;
  if (item->text() == kUp) return goUp();
  openFolder(withSlash(opened_) + item->text());
}

void frmSceltaDir::goUp() {
  if (opened_ != u'/') openFolder(QFileInfo(opened_).path());
}

void frmSceltaDir::cmdAnnulla_Click() {
  control<QLabel>(QStringLiteral("lblDir"))->setText(sDir_);
  Hide();
}

// In the list Enter opens; from elsewhere it confirms, unless another button has the focus.
bool frmSceltaDir::keyDown(int key, Qt::KeyboardModifiers) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (lstDir().hasFocus() && (enter || key == Qt::Key_Backspace)) {
    enter ? enterSelected() : goUp();
    return true;
  }
  if (!enter) return false;
  auto* focused = qobject_cast<QPushButton*>(QApplication::focusWidget());
  (focused != nullptr ? focused : control<QPushButton>(QStringLiteral("cmdConferma")))->click();
  return true;
}

QString sScegliDir(platform::Form& owner, const QString& sDir) {
  auto& picker = platform::forms().as<frmSceltaDir>(QStringLiteral("frmSceltaDir"));
  picker.Path(sDir);
  picker.ShowModal(&owner);
  QString chosen = picker.lblDir();
  picker.Unload();
  return chosen;
}

void RegistraFormSceltaDir() {
  platform::forms().add<frmSceltaDir>(QStringLiteral("frmSceltaDir"));
}

}  // namespace tavolix
