#include "assist/modsysinfo.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QScreen>
#include <QSysInfo>
#include <ctime>

#include "core/modmain.h"

namespace tavolix {
namespace {

struct TipoProcessore {
  const char* tipo;
  const char* nome;
};

constexpr TipoProcessore kProcessori[] = {
    {"i386", "Intel 386"},   {"i486", "Intel 486"},  {"i586", "Intel Pentium"},
    {"r4000", "MIPS R4000"}, {"ev4", "Alpha 21064"},
};

// The processor's own name, as the kernel tells it; of a processor that it does not name, the
// machine's.
QString sModello() {
  QFile file(QStringLiteral("/proc/cpuinfo"));
  if (file.open(QIODevice::ReadOnly)) {
    static const QRegularExpression model(QStringLiteral("^(?:model name|cpu model)\\s*: *(.+)$"),
                                          QRegularExpression::MultilineOption);
    const auto found = model.match(QString::fromUtf8(file.readAll()));
    if (found.hasMatch()) return found.captured(1).simplified();
  }
  return QSysInfo::currentCpuArchitecture();
}

qint64 lMillisecondiDallAvvio() {
  timespec time = {};
  ::clock_gettime(CLOCK_BOOTTIME, &time);
  return qint64{time.tv_sec} * 1000 + time.tv_nsec / 1000000;
}

QString sSchermo() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return {};
  const QSize size = screen->availableSize() * screen->devicePixelRatio();
  return QStringLiteral("%1x%2 pixel").arg(size.width()).arg(size.height());
}

}  // namespace

QString sSistema(const QString& kernel, const QString& distribuzione) {
  static const QRegularExpression version(QStringLiteral("^(\\d+)\\.(\\d+)(?:\\.(\\d+))?"));
  const auto found = version.match(kernel);
  if (!found.hasMatch()) return distribuzione;
  return QStringLiteral("%1.%2 Build %3 %4")
      .arg(found.captured(1), found.captured(2), QString::number(found.captured(3).toInt()),
           distribuzione);
}

QString sProcessore(const QString& tipo, const QString& modello) {
  for (const auto& [noto, nome] : kProcessori) {
    if (tipo == QLatin1String(noto)) return QString::fromLatin1(nome);
  }
  return QStringLiteral("Non riconosciuto! (%1)").arg(modello);
}

QString sTempo(qint64 millisecondi) {
  const qint64 secondi = millisecondi / 1000;
  return QStringLiteral("%1h %2m %3s").arg(secondi / 3600).arg(secondi / 60 % 60).arg(secondi % 60);
}

std::array<QString, kInformazioni> RaccogliInformazioni() {
  const QFileInfo programma(QCoreApplication::applicationFilePath());
  return {sSistema(QSysInfo::kernelVersion(), QSysInfo::prettyProductName()),
          sProcessore(QSysInfo::currentCpuArchitecture(), sModello()),
          sTempo(lMillisecondiDallAvvio()),
          sSchermo(),
          QCoreApplication::applicationDirPath(),
          programma.completeBaseName(),
          QStringLiteral("%1.0.%2")
              .arg(QLatin1String(kVersione))
              .arg(QString::fromLatin1(kRevisione).toInt()),
          QLocale().toString(programma.lastModified(), QLocale::ShortFormat)};
}

}  // namespace tavolix
