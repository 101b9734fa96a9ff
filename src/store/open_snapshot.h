#pragma once

#include "store/connection.h"

namespace store {

class Database;

// The connection of an open archive; fails with 3420 where it is closed.
std::shared_ptr<Connection> connectionOf(const Database& database);
// Ends the snapshot that is held by a connection: it is about to write, or is left.
void endSnapshot(const Connection& connection);

}  // namespace store
