#pragma once

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <ostream>

#include "core/modutil.h"
#include "platform/settings_file.h"
#include "platform/system_path.h"
#include "store/outside.h"

// So that a failed comparison shows texts, not their codes.
inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}

namespace tavolix {

using store::Outside;

// A temporary folder of the program, with its settings and the two archives that come with it.
class ProgramFolder final {
 public:
  ProgramFolder() {
    const QString installed = qEnvironmentVariable("TAVOLIX_DATA");
    for (const char* name : {"tvx.ini", "esempio.tvx", "modello.tvx", "SIN.SIN"}) {
      QFile::copy(installed + '/' + name, path(name));
      QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner);
    }
    set("Application", "SuggAvvio", "0");
    ImpostaCartellaProgramma(folder_.path());
    platform::setCurrentDirectory(folder_.path());
  }
  ~ProgramFolder() { platform::setCurrentDirectory(QDir::currentPath()); }
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  QString path(const QString& name = {}) const { return folder_.filePath(name); }
  void writeFile(const QString& name, const QByteArray& content) const {
    QFile file(path(name));
    file.open(QIODevice::WriteOnly);
    file.write(content);
  }

  void set(const char* section, const char* key, const QString& value) const {
    platform::writeString(path("tvx.ini"), section, key, value);
  }
  // The setting, or "-" if there is none.
  QString setting(const char* section, const char* key) const {
    return platform::readString(path("tvx.ini"), section, key, "-");
  }

  // What another program does to an archive: statements in SQLite's language.
  void outside(const QString& statements, const QString& archive = "esempio.tvx") const {
    Outside(path(archive)).exec(statements.toStdString());
  }
  // What another program finds in the file: fields parted by "|", rows by line ends, Null as "-".
  QString found(const QString& query, const QString& archive = "esempio.tvx") const {
    return Outside(path(archive), SQLite::OPEN_READONLY).found(query, u'|', u'\n');
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace tavolix
