#pragma once

#include <QString>
#include <QVector>

#include "platform/common_dialogs.h"

namespace tavolix {

// True if two paths lead to one existing file.
bool bStessoFile(const QString& sA, const QString& sB);
// Copies an archive that is not open, over an older copy if there is one. With `bAvvisi` the user
// is asked for a floppy disk and told of the success.
void EseguiCopiaSicur(QString sOrigine, QString sDestinazione, bool bAvvisi);

// Lets the user choose a copy and puts it into a folder under its own name. True if one was.
bool bRecuperaCopia(const QString& sDir, const QString& sExt);

// What the dialogs for copies offer: all files, and archives.
QVector<platform::FileKind> TipiDiFile(const QString& sExt);

}  // namespace tavolix
