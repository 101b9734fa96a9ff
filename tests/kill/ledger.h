#pragma once

#include <QByteArrayList>
#include <map>
#include <utility>
#include <vector>

#include "core/program_folder.h"

namespace tavolix {

// A collection's detail table, a column of it with its box, and the table of its sub-collection.
struct Collection {
  const char* detail;
  const char* column;
  const char* box;
  const char* children = "";
  const char* parent = "";
};

inline constexpr Collection kCollections[] = {
    {"LIB", "Edizione", "txtLibEdizione"},
    {"RIV", "Numero", "txtNumero", "RIVSUB", "RivID"},
    {"AUD", "NrSupporti", "txtAudNrSupporti", "AUDSUB", "AudID"},
    {"VID", "Traccia", "txtNrTraccia"},
    {"COM", "NrSerie", "txtNrSerie"},
    {"MED", "DtaScad", "txtDtaScad"},
    {"OGG", "Numero", "txtNumero"},
    {"PER", "Indirizzo", "txtIndirizzo", "PERSUB", "PerID"},
};

// A command as it is announced: "edit 2 1234 17", with the keys it works on for "clear".
struct Command {
  explicit Command(const QByteArray& line);

  QByteArray name;
  int collection = 0;
  int key = 0;
  int value = 0;
  std::vector<int> keys;
};

// What an archive holds: of every record the number in its note (a column of the main table), the
// number in its collection's column of the detail table, and the rows of its sub-collection.
struct Ledger {
  struct Row {
    int note = 0;
    int detail = 0;
    int children = 0;
    bool operator==(const Row&) const = default;
  };

  std::map<std::pair<int, int>, Row> rows;  // by collection and key
  int counter = 0;
  bool operator==(const Ledger&) const = default;

  int count(int collection) const;
  // What a command makes of it.
  Ledger after(const Command& command) const;
  // What a command may leave if it is cut short: nothing done, all done, or whole groups done.
  std::vector<Ledger> duringOrAfter(const Command& command) const;
  // The rows in which another one differs, for messages.
  QString differences(const Ledger& other) const;
};

Ledger readLedger(const ProgramFolder& folder);

// What is wrong with an archive in itself: halves of records, rows of sub-collections without a
// record, keys that are double or beyond the counter. Empty if nothing is.
QString contradictions(const ProgramFolder& folder);

// Adds records to a collection, each with a row in its sub-collection.
void addRecords(const ProgramFolder& folder, int collection, int count);

}  // namespace tavolix
