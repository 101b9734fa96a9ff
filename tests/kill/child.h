#pragma once

#include <QByteArrayList>
#include <QProcess>

namespace tavolix {

// A process in which the test program plays another role. It says "ready" before it begins, and
// has no temporary files but in a folder that is given.
class Child final {
 public:
  Child(const char* role, const QStringList& arguments, const QString& temporary);
  ~Child() { kill(); }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // Waits until it has said so many lines in all; false if it has not in half a minute.
  bool waitForLines(int count);
  // SIGKILL; false if the process had ended before.
  bool kill();
  // What it has said, in lines; a last line that is not whole is left out.
  QByteArrayList lines();

 private:
  QProcess process_;
  QByteArray said_;
};

}  // namespace tavolix
