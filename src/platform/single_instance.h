#pragma once

#include <QString>
#include <functional>
#include <memory>

class QLocalServer;

namespace platform {

// The program's lock on itself: one copy at a time for each user, whatever archive it shows. The
// system drops the lock with the process, so a killed copy never stands in the way.
class SingleInstance final {
 public:
  // Folder of the lock file; empty: the program's folder in the user's data folder.
  explicit SingleInstance(const QString& folder = {});
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // True unless another copy holds the lock. Where no lock file can be made the program may run.
  bool isFirst() const { return first_; }

  // The first copy: `called` runs, in the event loop, whenever another one calls.
  void listen(std::function<void()> called);
  // Another copy: calls the first. False if that does not listen.
  bool callFirst() const;

 private:
  QString socket_;
  int descriptor_;
  bool first_;
  std::unique_ptr<QLocalServer> server_;
};

}  // namespace platform
