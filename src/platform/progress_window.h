#pragma once

#include <QElapsedTimer>
#include <QString>
#include <memory>

namespace platform {

// Tells how far long work has come, once it takes longer than a moment, and lets it be broken off.
// Lives as long as the work. While the window is there no other one gets input.
class ProgressWindow final {
 public:
  // `what` is what is being done, for the user. Milliseconds until the window comes. What is
  // counted.
  explicit ProgressWindow(const QString& what, int patience = 1000,
                          const QString& unit = QStringLiteral("byte"));
  ~ProgressWindow();
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  // Units done and in all. False once the user has broken off.
  bool report(qint64 done, qint64 total);

 private:
  class Window;

  QString what_;
  int patience_;
  QString unit_;
  QElapsedTimer since_;
  QElapsedTimer sinceShown_;
  std::unique_ptr<Window> window_;
};

}  // namespace platform
