#pragma once

#include <QString>
#include <QVector>

namespace platform {

// A kind of files: what the dialog calls it, and the pattern of their names.
struct FileKind {
  QString text;
  QString pattern;
};

// What a dialog for files begins with.
struct FileRequest {
  QString title;
  QVector<FileKind> kinds;
  int kind = 1;               // the one that is chosen at first, from 1
  QString folder;             // a path as the settings have it; empty for the current folder
  QString name;               // proposed
  bool asksToReplace = true;  // saveFile: before an older file is replaced
};

// The dialogs for files and folders, over the active window. The result is a full path of the
// system, empty if the user gave up.
QString openFile(const FileRequest& request);
// A name typed without an extension gets that of the kind that is chosen.
QString saveFile(const FileRequest& request);
QString chooseFolder(const QString& title, const QString& folder = {});

// Answers the dialogs in a test, without a window.
class CommonDialogSeam final {
 public:
  // Queues the path that a dialog to come returns.
  static void setNextPath(const QString& path);
  // The same for a dialog that is given up.
  static void cancel() { setNextPath({}); }
  // With true, a dialog with no path queued throws std::logic_error instead of waiting.
  static void setNoWindow(bool noWindow);
  static void reset();
};

}  // namespace platform
