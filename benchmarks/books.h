#pragma once

#include <QVector>
#include <utility>

#include "raw_file.h"

namespace bench {

// The books as the plain engine lists them: the join behind the program's list of them.
inline const QByteArray kBooksJoin =
    " FROM MAIN JOIN LIB ON MAIN.RacID = LIB.ID AND MAIN.TipoRac = 0 ";
inline const QByteArray kBooksOrder = "ORDER BY LIB.ID";

// Keys of rows of MAIN and LIB.
using Keys = QVector<std::pair<qint64, qint64>>;
// Those of the first books in the stored order; a negative number takes all.
Keys firstBooks(const RawFile& file, qint64 count);

}  // namespace bench
