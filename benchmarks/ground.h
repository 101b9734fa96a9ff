#pragma once

#include <QHash>
#include <QStringList>
#include <QTemporaryDir>

#include "runner.h"

namespace bench {

// What a scene found, by name.
using Found = QHash<QString, Samples>;
Sides sidesOf(const Found& found, const char* ours = "ours", const char* other = "raw");

// Where the figures are taken: the archive measured on, which is never written, and a folder on
// the disk of the build for copies, made archives and the program's own files.
class Ground final {
 public:
  explicit Ground(QString archive);

  const QString& archive() const { return archive_; }
  // The small archive that comes with the program.
  QString sample() const;
  // A new copy of the archive, on the disk before this returns.
  QString copy(const QString& name) const;
  QStringList twoCopies() const;
  // An archive made by tavolix-generate with these options.
  QString generated(const QString& name, const QStringList& options) const;

  // Runs a scene in a program of its own that has opened the first of the files, with the
  // collection that the settings name for its start.
  Found play(const QString& scene, const QStringList& files, int collection = 0) const;
  // Seconds from the start of a program of its own to its painted list.
  double start(const QString& archive) const;

 private:
  void prepareProgramFolder(int collection) const;

  QString archive_;
  QTemporaryDir folder_;
};

}  // namespace bench
