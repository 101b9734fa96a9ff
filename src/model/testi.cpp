#include "model/testi.h"

#include <QDate>
#include <QLocale>

namespace tavolix {
namespace {

QString& programFolder() {
  static QString folder;
  return folder;
}

}  // namespace

QString sSepDec = QStringLiteral(",");

QString sCartellaProgramma() {
  return programFolder();
}
void ImpostaCartellaProgramma(const QString& path) {
  programFolder() = path;
}

QString sPathCompleto(const QString& path) {
  const bool full = (path.size() > 1 && path.at(1) == u':') ||
                    path.startsWith(QLatin1String("\\\\")) || path.startsWith(u'/');
  return full ? path : sCartellaProgramma() + u'\\' + path;
}

QString sNomeFile(const QString& path) {
  for (qsizetype i = path.size() - 1; i >= 0; --i) {
    if (QStringLiteral(":\\/").contains(path.at(i))) return path.mid(i + 1);
  }
  return path;
}

void SeparaDrive(const QString& path, QString& drive, QString& resto) {
  const bool has = path.size() > 1 && path.at(1) == u':';
  drive = has ? path.left(2) : QString();
  resto = has ? path.mid(2, 1000) : path;
}

QString sApici(const QString& testo) {
  QString doubled = testo;
  return u'\'' + doubled.replace(u'\'', QLatin1String("''")) + u'\'';
}

QString RaddoppiaCarattere(QString& testo, QChar carattere) {
  return testo.replace(carattere, QString(2, carattere));
}

void TogliACapo(QString& testo) {
  testo.replace(u'\n', u' ').replace(u'\r', u' ');
}

QString NullAStringa(const QVariant& valore) {
  return valore.isValid() ? valore.toString() : QString();
}

QVariant NullAZero(const QVariant& valore) {
  return valore.isValid() ? valore : QVariant(0);
}

void RilevaSepDec() {
  sSepDec = QLocale().toString(1.3, 'f', 1).mid(1, 1);
}

int GiorniNelMese(int mese, int anno) {
  return QDate(anno, mese, 1).daysInMonth();
}

QString sNomeMese(int mese) {
  static const char* const names[] = {"Gennaio",   "Febbraio", "Marzo",    "Aprile",
                                      "Maggio",    "Giugno",   "Luglio",   "Agosto",
                                      "Settembre", "Ottobre",  "Novembre", "Dicembre"};
  return mese >= 1 && mese <= 12 ? QString::fromLatin1(names[mese - 1]) : QString();
}

QTime SecondiAData(int secondi) {
  if (secondi <= 0) return {0, 0, 0};
  return {secondi / 3600 % 24, secondi / 60 % 60, secondi % 60};
}

}  // namespace tavolix
