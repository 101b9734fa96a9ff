#pragma once

#include "store/archive.h"

namespace store {

// An archive that takes any text, in each of the places where the program hands text on.
class Victim final {
 public:
  Victim();

  // Runs a text: its first character says where it goes. L list, W condition of a list, F condition
  // of a search, O order, Q stored query that is opened and run, K pattern and subject of Like,
  // parted by a line end. What is wrong with what came of it; empty if a result or a failure that
  // says what it should, and the file is as before.
  QString run(const QByteArray& input);
  // Number of the failure that the last text ended with, 0 for a result.
  int number() const { return number_; }

 private:
  void take(char way, const QString& text);
  void storeAndRun(const QString& sql) const;
  QString faultOfFile() const;

  Archive archive_;
  RecordsetPtr books_;
  QByteArray file_;
  int number_ = 0;
  QString fault_;
};

}  // namespace store
