#pragma once

#include <QString>

namespace tavolix {

// Settings files: file and section are global, so each use sets both first.
void ImpostaFileIni(const QString& path);
void ImpostaSezioneIni(const QString& sezione);
// True if the key was found; otherwise the value is empty or 0. A text of "non trovato" and the
// number -32768 count as not found.
bool bLeggiStr(const QString& chiave, QString& valore);
bool bLeggiInt(const QString& chiave, int& valore);
bool bScriviStr(const QString& chiave, const QString& valore);

}  // namespace tavolix
