#pragma once

#include <QByteArray>
#include <compare>
#include <map>
#include <string>
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

// What is done to a collection: add, copy, title, note, edit (note and detail), delete, clear.
struct Command {
  QByteArray name;
  int collection = 0;
  int key = 0;  // of the record it is done to
  int value = 0;
};

// What an archive holds under each key: how many rows of the main, the detail and the
// sub-collection's table, and the numbers in three of their columns.
struct Ledger {
  struct Row {
    int mains = 1;
    int title = 0;
    int note = 0;
    int details = 1;
    int detail = 0;
    int children = 0;
    auto operator<=>(const Row&) const = default;
  };

  std::map<std::pair<int, int>, Row> rows;  // by collection and key
  int counter = 0;
  bool operator==(const Ledger&) const = default;

  // No half of a record, no row of a sub-collection without one, no key twice.
  bool isSound() const;
  std::vector<int> keys(int collection) const;
  // What a command makes of it.
  Ledger after(const Command& command) const;
  // What a command may leave if it is cut short: nothing done or all.
  std::vector<Ledger> duringOrAfter(const Command& command) const;
  // The first rows in which another one differs, for messages; empty if it is the same.
  std::string differences(const Ledger& other) const;
};

Ledger readLedger(const ProgramFolder& folder);

// Adds records to a collection, each with a row in its sub-collection.
void addRecords(const ProgramFolder& folder, int collection, int count);

}  // namespace tavolix
