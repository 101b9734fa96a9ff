#pragma once

#include <QString>
#include <QVector>

namespace tavolix {

// What is mounted.
struct Volume {
  QString sRadice;
  QString sDispositivo;
  QString sTipo;  // of file system
  bool bRimovibile = false;
  bool operator==(const Volume&) const = default;
};
QVector<Volume> Volumi();

// The folders of drives A and B, empty for a drive without medium: what the settings name, else
// the first and the second removable medium in the order they are mounted.
struct Unita {
  QString sA;
  QString sB;
};
Unita UnitaDischetti(const QVector<Volume>& volumi, const Unita& impostate);
// Looks what is mounted now, and tells the file layer. `sFileIni` has the settings.
Unita AggiornaUnita(const QString& sFileIni);

// What a folder may be picked from: the root, the user's own folder, what is mounted for people.
QStringList sRadici(const QVector<Volume>& volumi, const QString& sPersonale);
// Place in that list of the one that a folder lies in; the root at least.
int iRadiceDi(const QStringList& radici, const QString& sDir);

}  // namespace tavolix
