#include "model/cifratura.h"

#include <algorithm>
#include <array>

#include "store/failure.h"

namespace tavolix {
namespace {

constexpr const char* kChiave = "CorvoBiancoLagoVerdeMontagnaAlta2041";

// Windows-1252 from 128 to 159; elsewhere its codes are those of Unicode.
constexpr ushort kFirst = 0x80;
constexpr std::array<ushort, 32> kLetters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// 1 to 255; 0 for a letter outside of the set.
int codeOf(QChar letter) {
  const ushort unicode = letter.unicode();
  const auto found = std::find(kLetters.begin(), kLetters.end(), unicode);
  if (found != kLetters.end()) return kFirst + static_cast<int>(found - kLetters.begin());
  const bool special = unicode >= kFirst && unicode < kFirst + kLetters.size();
  return unicode > 0xFF || special ? 0 : unicode;
}

QChar letterOf(int code) {
  const int place = code - kFirst;
  const bool special = place >= 0 && place < static_cast<int>(kLetters.size());
  return QChar(special ? kLetters[static_cast<std::size_t>(place)] : static_cast<ushort>(code));
}

// Codes run from 1 to 255: both ways wrap round without the code 0.
int shifted(int code, int by) {
  const int sum = code + by;
  return sum > 255 ? sum - 255 : sum;
}

int shiftedBack(int code, int by) {
  const int difference = code - by;
  return difference < 1 ? difference + 255 : difference;
}

void requireCodes(const QString& testo) {
  for (const QChar letter : testo) {
    if (codeOf(letter) != 0) continue;
    throw store::Failure(
        store::failure::kConversion,
        QStringLiteral("La lettera '%1' non e' ammessa in un codice d'accesso").arg(letter));
  }
}

}  // namespace

bool bCifrabile(const QString& testo) {
  return std::all_of(testo.begin(), testo.end(), [](QChar letter) { return codeOf(letter) != 0; });
}

void CifraStringa(QString& testo, const QString& chiave) {
  requireCodes(testo + chiave);
  int carry = 0;
  for (qsizetype i = 0; i < testo.size() && !chiave.isEmpty(); ++i) {
    const int code = codeOf(testo[i]);
    const int key = codeOf(chiave[i % chiave.size()]);
    testo[i] = letterOf(shifted(shifted(code, key), carry));
    carry = code;
  }
}

void DecifraStringa(QString& testo, const QString& chiave) {
  requireCodes(testo + chiave);
  int carry = 0;
  for (qsizetype i = 0; i < testo.size() && !chiave.isEmpty(); ++i) {
    const int key = codeOf(chiave[i % chiave.size()]);
    carry = shiftedBack(shiftedBack(codeOf(testo[i]), key), carry);
    testo[i] = letterOf(carry);
  }
}

QString sCodiceCifrato(const QString& sCodice) {
  QString text = sCodice.trimmed().toUpper();
  if (text.isEmpty()) text = QString::fromLatin1(kSenzaCodice);
  CifraStringa(text, QString::fromLatin1(kChiave));
  return text;
}

QString sCodiceDecifrato(const QString& sVal) {
  QString text = sVal;
  if (bCifrabile(text)) {
    DecifraStringa(text, QString::fromLatin1(kChiave));
  } else {
    text.clear();
  }
  return text;
}

QString sCodiceInLettere(const QString& sVal) {
  QString text = sVal;
  for (QChar& letter : text) {
    if (letter.unicode() <= 0xFF) letter = letterOf(letter.unicode());
  }
  return text;
}

}  // namespace tavolix
