#pragma once

#include <QProgressDialog>

#include "store/progress.h"

namespace tavolix::report {

// Shows how far long work is, once it has lasted a moment, and lets the user break it off.
class WorkWindow final {
 public:
  explicit WorkWindow(const QString& text);
  store::Progress progress();

 private:
  QProgressDialog window_;
};

}  // namespace tavolix::report
