#include "core/modini.h"

#include "core/errore.h"
#include "platform/settings_file.h"

namespace tavolix {
namespace {

QString currentFile;
QString currentSection;

constexpr int kMissingNumber = -32768;
const QString& missingText() {
  static const QString text = QStringLiteral("non trovato");
  return text;
}

}  // namespace

void ImpostaFileIni(const QString& path) {
  currentFile = path;
}
void ImpostaSezioneIni(const QString& sezione) {
  currentSection = sezione;
}

bool bLeggiStr(const QString& chiave, QString& valore) {
  valore.clear();
  return protetto("modIni!bLeggiStr", [&] {
    const QString read = platform::readString(currentFile, currentSection, chiave, missingText());
    if (read == missingText()) return false;
    valore = read;
    return true;
  });
}

bool bLeggiInt(const QString& chiave, int& valore) {
  valore = 0;
  return protetto("modIni!bLeggiInt", [&] {
    const qint64 read = platform::readInt(currentFile, currentSection, chiave, kMissingNumber);
    if (read == kMissingNumber) return false;
    valore = static_cast<int>(read);
    return true;
  });
}

bool bScriviStr(const QString& chiave, const QString& valore) {
  return protetto("modIni!bScriviStr", [&] {
    return platform::writeString(currentFile, currentSection, chiave, valore);
  });
}

}  // namespace tavolix
