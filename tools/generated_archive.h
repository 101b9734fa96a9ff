#pragma once

#include <QVector>
#include <optional>

#include "tools/list_table.h"

namespace tavolix::builder {

struct ListSize {
  ListName list;
  qint64 rows = 0;
};
// Reads "CODE:COLLECTION:ROWS"; nothing if it is none, names no list of the field table, or asks
// for more than 70,000 rows.
std::optional<ListSize> parseListSize(const QString& text);

struct GeneratorOptions {
  qint64 records = 200000;  // of the main collections, half of them books
  quint64 seed = 1;
  QVector<ListSize> lists;  // sizes other than the usual ones
};

// Adds made-up records to an archive, the same ones for the same options: the main collections'
// records, for each 40 of them 4 tracks, an article and a contact, and lists of 50 rows or more.
// Rows that a list already has stay.
void addGeneratedRecords(store::Database& database, const GeneratorOptions& options);

}  // namespace tavolix::builder
