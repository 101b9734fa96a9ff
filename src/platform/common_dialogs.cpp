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

// "tvx" of "*.tvx"; empty for a pattern of other kinds.
QString suffixOf(const QString& pattern) {
  static const QRegularExpression extension("^\\*\\.(\\w+)$");
  return extension.match(pattern).captured(1);
}

// "*.*" means all files, those without an extension, too.
QString patternOf(const FileKind& kind) {
  return kind.pattern == "*.*" ? QString("*") : kind.pattern;
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

void prepare(QFileDialog& dialog, const FileRequest& request) {
  // The texts stand alone: their patterns are not told behind them.
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  QStringList filters;
  for (const FileKind& kind : request.kinds) {
    filters << kind.text + " (" + patternOf(kind) + ")";
  }
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(request.kind - 1));
  if (!request.name.isEmpty()) dialog.selectFile(request.name);
}

}  // namespace

QString openFile(const FileRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), request.title, startFolder(request.folder));
  dialog.setFileMode(QFileDialog::ExistingFile);
  prepare(dialog, request);
  return run(dialog);
}

QString saveFile(const FileRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), request.title, startFolder(request.folder));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.asksToReplace);
  prepare(dialog, request);
  const auto follow = [&](const QString& filter) {
    for (const FileKind& kind : request.kinds) {
      if (filter.startsWith(kind.text)) dialog.setDefaultSuffix(suffixOf(kind.pattern));
    }
  };
  follow(dialog.selectedNameFilter());
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
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
