#include "platform/common_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QRegularExpression>
#include <QStringList>
#include <stdexcept>

#include "platform/commands.h"
#include "platform/file_system.h"
#include "platform/form.h"
#include "platform/key_handover.h"

namespace platform {
namespace {

struct Seam {
  bool noWindow = false;
  QStringList paths;
};

Seam& seam() {
  static Seam state;
  return state;
}

QString suffixOf(const QString& filter) {
  static const QRegularExpression extension("\\*\\.(\\w+)");
  return extension.match(filter).captured(1);
}

QString run(QFileDialog& dialog) {
  Seam& state = seam();
  if (!state.paths.isEmpty()) return state.paths.takeFirst();
  if (state.noWindow) {
    throw std::logic_error("unexpected dialog: " + dialog.windowTitle().toStdString());
  }
  const Commands::Question question;
  KeyHandover::to(&dialog);
  const int answer = dialog.exec();
  if (QWidget* front = windowInFront()) KeyHandover::to(front);
  if (answer != QDialog::Accepted) return {};
  return dialog.selectedFiles().value(0);
}

QString startFolder(const QString& folder) {
  return folder.isEmpty() ? currentDirectory() : systemPath(folder);
}

}  // namespace

QString openFile(const QString& title, const QString& filter, const QString& folder) {
  QFileDialog dialog(QApplication::activeWindow(), title, startFolder(folder), filter);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return run(dialog);
}

QString saveFile(const QString& title, const QString& filter, const QString& folder) {
  QFileDialog dialog(QApplication::activeWindow(), title, startFolder(folder), filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffixOf(filter));
  return run(dialog);
}

QString chooseFolder(const QString& title, const QString& folder) {
  QFileDialog dialog(QApplication::activeWindow(), title, startFolder(folder));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return run(dialog);
}

void CommonDialogSeam::setNextPath(const QString& path) {
  seam().paths.append(path);
}

void CommonDialogSeam::setNoWindow(bool noWindow) {
  seam().noWindow = noWindow;
}

void CommonDialogSeam::reset() {
  seam() = {};
}

}  // namespace platform
