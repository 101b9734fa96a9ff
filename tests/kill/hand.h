#pragma once

#include "ledger.h"
#include "workspace/desk.h"

namespace tavolix {

// Somebody at work in the program, by the commands of the ledger.
class Hand : public Desk {
 protected:
  // The key of the current record, 0 if there is none.
  static int currentKey();
  // Whether a command is asked about before it is done.
  static bool asks(const QByteArray& command) { return command == "delete" || command == "clear"; }
  // Does a command to the current record; a title where the list has it. Without `leaves` the box
  // of a note is not left.
  static void act(const QByteArray& command, int value, bool leaves = true);
};

}  // namespace tavolix
