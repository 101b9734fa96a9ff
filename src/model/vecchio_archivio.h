#pragma once

#include <QStringList>
#include <QVector>

#include "store/progress.h"

namespace tavolix {

// Archives of the record engine of earlier years. They are read, never written: what is in one is
// brought over into a new archive.

struct TabellaPortata {
  QString sNome;
  qint64 lDichiarate = 0;  // rows that the old file says it has
  qint64 lLette = 0;       // rows that could be read
  qint64 lScritte = 0;     // rows of the new archive
};

struct Trasporto {
  QVector<TabellaPortata> tabelle;
  // The text file beside the new archive with all that could not be kept as it was; empty if there
  // was nothing.
  QString sElenco;
  qsizetype nAnnotazioni = 0;
};

// True if the content of a file is that of the earlier engine, whatever its name.
bool bVecchioArchivio(const QString& sPath);
// The access code as sCodiceDecifrato gives it. Fails as JetFile does.
QString sCodiceVecchioArchivio(const QString& sPath);
// Makes a new archive, like the one at `sModello`, with everything that an old one holds; it gets
// its name only once it is whole. Paths of the system. Fails with 3343 (without the tables of an
// archive), 3049 (no table can be read), 58 (the new file is there already), 3059 (broken off) and
// what writing a file may fail with; there is then no new archive.
Trasporto PortaVecchioArchivio(const QString& sVecchio, const QString& sModello,
                               const QString& sNuovo, const store::Progress& progress = {});
// What came of it, table by table, as one text for the user.
QString sEsitoTrasporto(const QString& sVecchio, const QString& sNuovo, const Trasporto& esito);

}  // namespace tavolix
