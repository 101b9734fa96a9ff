#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <vector>

#include "store/recordset.h"

// Archives as files: their bytes, and what they hold as SQLite alone sees it.
namespace harm {

QByteArray bytesOf(const QString& path);
void write(const QString& path, const QByteArray& bytes);

// An archive with some records, and lookup lists of five texts or so.
QByteArray smallArchive(int records);
// An archive after statements of another program, which may write the schema itself; after each
// part it opens the file anew.
enum class Checksums { Kept, Spoilt };
QByteArray after(const QByteArray& file, const std::vector<QByteArray>& parts,
                 Checksums checksums = Checksums::Kept);

// Everything that the tables hold, or some of them: a row a line, in the order of their numbers.
QByteArray contentsOf(const QString& path, const QStringList& some = {});

using Row = QVector<QVariant>;
// Everything that a recordset shows.
QVector<Row> rowsOf(const store::Recordset& rows);

}  // namespace harm
