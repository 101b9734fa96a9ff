#pragma once

#include <QString>
#include <array>

namespace tavolix {

inline constexpr int kInformazioni = 8;

// What a call for support needs to know of machine and program, in the order of frmSysInfo's
// labels. What cannot be found out stays empty.
std::array<QString, kInformazioni> RaccogliInformazioni();

// Of a kernel's version ("6.1.0-25-amd64") the major, the minor and the build number, then the
// name of the distribution.
QString sSistema(const QString& kernel, const QString& distribuzione);
// The type of a processor by the machine's name for its kind ("i586"); `modello` is its own name.
QString sProcessore(const QString& tipo, const QString& modello);
// A time in milliseconds as "3h 25m 45s".
QString sTempo(qint64 millisecondi);

}  // namespace tavolix
