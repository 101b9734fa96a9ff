#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

namespace tavolix {

// Texts, paths, numbers and dates that the whole program shares.

// The folder of the program's own files, without a separator at its end.
QString sCartellaProgramma();
void ImpostaCartellaProgramma(const QString& path);
// A path with a drive or a network name, and one from the root, stays; any other is one in the
// program's folder.
QString sPathCompleto(const QString& path);
// What stands behind the last ":", "\" or "/".
QString sNomeFile(const QString& path);
void SeparaDrive(const QString& path, QString& drive, QString& resto);
// The text in single quotes, inner ones doubled: as SQL takes it.
QString sApici(const QString& testo);
QString RaddoppiaCarattere(QString& testo, QChar carattere);
void TogliACapo(QString& testo);
QString NullAStringa(const QVariant& valore);
QVariant NullAZero(const QVariant& valore);

// The decimal separator of the system's locale.
extern QString sSepDec;
void RilevaSepDec();
int GiorniNelMese(int mese, int anno);
QString sNomeMese(int mese);
QTime SecondiAData(int secondi);

}  // namespace tavolix
