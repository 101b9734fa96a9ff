#pragma once

#include "store/database.h"

namespace tavolix {

// Brings an accepted archive to what the program expects of it, before its records are read: the
// columns of all fields are there, and the counter of keys is above every key. Fails if the file
// cannot be written and would have to be.
void PreparaArchivio(store::Database& db);

}  // namespace tavolix
