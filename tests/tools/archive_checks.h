#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>

#include "store/database.h"

namespace tavolix::builder {

// The folder with the sources of the archives that come with the program.
QString sourceData();

qint64 countOf(store::Database& database, const QString& source);
// All values of some columns, a row after the other.
QVector<QVariantList> rowsOf(store::Database& database, const QString& source,
                             const QStringList& columns);
// All values of a collection's fields, a record after the other.
QVector<QVariantList> recordsOf(store::Database& database, int collection);
// Values of one column.
QVariantList valuesOf(store::Database& database, const QString& source, const QString& column);

// What must hold in every archive, whatever it holds.
void expectEveryRecordInItsList(store::Database& database);
void expectChildrenHaveParents(store::Database& database);
void expectLookupsInTheirLists(store::Database& database);
void expectCounterCoversKeys(store::Database& database);
void expectOneDefaultAList(store::Database& database);

}  // namespace tavolix::builder
