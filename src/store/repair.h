#pragma once

#include <QString>
#include <QVector>

#include "store/database.h"
#include "store/progress.h"

namespace store {

// What a repair has to know of an archive beyond the engine's format.
struct RepairPlan {
  // A table that holds a part of each of a collection's records, and the column that tells which.
  struct Part {
    TableColumn key;
    int collection = 0;
  };
  // A column that holds keys of the lookup values of one list.
  struct Lookup {
    TableColumn column;
    QString list;
    int collection = 0;
  };

  // An archive that the new one is made like: tables, indexes, stored queries, settings.
  QString model;
  // The table with the common part of all records, and its columns.
  QString mainTable;
  QString mainKey;
  QString mainCollection;
  QString mainTitle;
  QVector<Part> details;
  QVector<Part> children;
  // The table of lookup values, and its columns.
  QString lookupTable;
  QString lookupKey;
  QString lookupList;
  QString lookupCollection;
  QString lookupText;
  QVector<Lookup> lookups;
  // See Database::RaiseCounter.
  TableColumn counter;
  QVector<KeyColumn> keys;
  // Tables whose rows come from the model where they are lost.
  QStringList settings;
  // The row of the settings that guards an archive, which never comes from the model.
  TableColumn guard;
  QString guardName;
};

// A row that a repair could not read, or of which it is not sure.
struct RepairedRow {
  enum class State { Lost, Doubtful, Half };
  State state = State::Lost;
  QString table;
  qint64 key = 0;       // in that table
  int collection = -1;  // of the record that it is a part of; -1 if that is not known
  qint64 record = 0;    // its key
  QString title;        // empty if it is not known
};

struct RepairReport {
  struct Table {
    QString name;
    qint64 sure = 0;
    qint64 doubtful = 0;
    qint64 lost = 0;
    bool isLostKnown = true;  // false if more may be lost
  };
  bool isSound = false;  // nothing was touched
  QString original;      // where the damaged file is kept
  QVector<Table> tables;
  QVector<RepairedRow> rows;
  qint64 placeholders = 0;  // lookup values whose text is lost
  // The row that says whether a code guards the archive is lost. The archive stays closed, as one
  // whose code was taken out of it, since it may have had one.
  bool isGuardLost = false;

  qint64 doubtful() const;
  qint64 lost() const;
  bool isAllKnown() const;
};

// Verifies the pages of an archive that is not open, and that its tables and indexes agree. One
// that is sound is left alone. Else its rows are written into a new file, which takes its place in
// one step once it is on the disk and verified; the damaged one is kept beside it, as
// "NAME.danneggiato" with a number where that is taken. Rows of whole pages are as they were. Of
// damaged ones those are taken that are rows of their table, in their place, and that no whole
// index denies: they are told as doubtful, as are rows of whole pages of which it is not sure that
// they were not deleted. A text whose end is lost is cut, and its row doubtful. Tables that the
// model does not have stay in the damaged file.
// Fails with 3024, 3059 (broken off, before the last step), 3260, 3343 (no archive, or nothing
// left of one), 61 or 3026 (disk full), 70, 75 and as OpenDatabase does for the model; the file is
// then as it was.
RepairReport RepairDatabase(const QString& path, const RepairPlan& plan,
                            const Progress& progress = {});

}  // namespace store
