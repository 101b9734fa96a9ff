#pragma once

#include <QString>

namespace tavolix {

// Scrambling of an archive's access code, text in place. Letters are turned by their codes in the
// character set Windows-1252, 1 to 255; the five codes that it leaves free are control characters.
// Both fail with 3421, the text unchanged, if it or the key holds a letter outside of that set.
void CifraStringa(QString& testo, const QString& chiave);
void DecifraStringa(QString& testo, const QString& chiave);

// True if every letter of a text is in the character set: a code that is not can't be stored.
bool bCifrabile(const QString& testo);

// What CFG holds in "PWD" of an archive, with 0 in nVal: the code, or the mark of an archive that
// has none. A code is without case, and blanks around it do not count.
QString sCodiceCifrato(const QString& sCodice);
// The code in capital letters; kSenzaCodice for an archive without one; empty for what no archive
// may hold.
QString sCodiceDecifrato(const QString& sVal);

// The same text with the codes 128 to 159 as the letters of Windows-1252: some files hold them as
// control characters of the same numbers.
QString sCodiceInLettere(const QString& sVal);

// Mixed case, so that no typed code can equal it.
inline constexpr const char* kSenzaCodice = "Rosa Di Sole: Lupo 42";

}  // namespace tavolix
