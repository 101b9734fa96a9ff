#include "ground.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

#include "platform/settings_file.h"
#include "scene.h"

namespace bench {
namespace {

constexpr int kLongest = 20 * 60 * 1000;  // milliseconds a scene may take

QString besideProgram(const char* name) {
  return QCoreApplication::applicationDirPath() + u'/' + QString::fromLatin1(name);
}

void finish(QProcess& process) {
  const bool done = process.waitForFinished(kLongest);
  if (!done || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
    qFatal("%s failed", qPrintable(process.arguments().join(u' ')));
  }
}

// What is written later must not wait for the pages of a copy.
void flush(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite) || ::fsync(file.handle()) != 0) {
    qFatal("%s cannot be written", qPrintable(path));
  }
}

Found parsed(const QByteArray& output) {
  Found found;
  for (const QByteArray& line : output.split('\n')) {
    const qsizetype blank = line.indexOf(' ');
    if (blank > 0) found[QString::fromUtf8(line.left(blank))] += line.mid(blank + 1).toDouble();
  }
  return found;
}

}  // namespace

Sides sidesOf(const Found& found, const char* ours, const char* other) {
  return {found[QString::fromLatin1(ours)], found[QString::fromLatin1(other)]};
}

Ground::Ground(QString archive)
    : archive_(QDir().absoluteFilePath(archive)), folder_(besideProgram("bench-XXXXXX")) {
  if (!folder_.isValid()) qFatal("no folder for copies: %s", qPrintable(folder_.errorString()));
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // That platform warns of what it leaves out.
  qputenv("QT_LOGGING_RULES", "default.warning=false");
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder_.path()));
  qputenv("XDG_DATA_HOME", QFile::encodeName(folder_.path()));
}

QString Ground::sample() const {
  return besideProgram("share/tavolix/esempio.tvx");
}

QString Ground::copy(const QString& name) const {
  const QString path = folder_.filePath(name);
  QFile::remove(path);
  if (!QFile::copy(archive_, path)) qFatal("%s cannot be made", qPrintable(path));
  QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOwner);
  flush(path);
  return path;
}

QStringList Ground::twoCopies() const {
  return {copy(QStringLiteral("ours.tvx")), copy(QStringLiteral("raw.tvx"))};
}

QString Ground::generated(const QString& name, const QStringList& options) const {
  const QString path = folder_.filePath(name);
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(besideProgram("tavolix-generate"), QStringList(path) + options);
  finish(process);
  return path;
}

void Ground::prepareProgramFolder(int collection) const {
  const QString folder = folder_.filePath(QStringLiteral("tavolix"));
  const QString settings = folder + QStringLiteral("/tvx.ini");
  QDir().mkpath(folder);
  QFile::remove(settings);
  const bool made = QFile::copy(besideProgram("share/tavolix/tvx.ini"), settings);
  if (!made ||
      !platform::writeString(settings, QStringLiteral("Application"), QStringLiteral("RacAvvio"),
                             QString::number(collection)) ||
      !platform::writeString(settings, QStringLiteral("Application"), QStringLiteral("SuggAvvio"),
                             QStringLiteral("0"))) {
    qFatal("%s cannot be written", qPrintable(settings));
  }
}

Found Ground::play(const QString& scene, const QStringList& files, int collection) const {
  prepareProgramFolder(collection);
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(),
                QStringList{QString::fromLatin1(kSceneOption), scene} + files);
  finish(process);
  return parsed(process.readAllStandardOutput());
}

double Ground::start(const QString& archive) const {
  prepareProgramFolder(0);
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  const double seconds = secondsOf([&] {
    process.start(QCoreApplication::applicationFilePath(),
                  {QString::fromLatin1(kStartOption), archive});
    process.waitForReadyRead(kLongest);
  });
  finish(process);
  return seconds;
}

}  // namespace bench
