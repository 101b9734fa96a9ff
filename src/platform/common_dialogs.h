#pragma once

#include <QString>

namespace platform {

// The dialogs for files and folders, over the active window. `filter` is in the way of Qt
// ("Archivi (*.mdb);;Tutti i file (*)"), `folder` a path as the settings have it, empty for the
// current folder. The result is a full path of the system, empty if the user gave up.
QString openFile(const QString& title, const QString& filter, const QString& folder = {});
// A name typed without an extension gets the first one of the filter.
QString saveFile(const QString& title, const QString& filter, const QString& folder = {});
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
