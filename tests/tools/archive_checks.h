#pragma once

#include "store/database.h"

namespace tavolix::builder {

// The folder with the sources of the archives that come with the program.
QString sourceData();

qint64 countOf(store::Database& database, const QString& source);
// All values of some columns, a row after the other.
QVector<QVariantList> rowsOf(store::Database& database, const QString& source,
                             const QStringList& columns);

// What must hold in every archive, whatever it holds: each record is in its list, each child has
// its parent, each choice is one of its list, keys are counted, a list has one default at most.
void expectConsistent(store::Database& database);

}  // namespace tavolix::builder
