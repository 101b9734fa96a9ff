#include "store/progress.h"

#include "store/failure.h"

namespace store {

void interrupted() {
  throw Failure(failure::kInterrupted, QStringLiteral("Operazione interrotta dall'utente"));
}

void tell(const Progress& progress, qint64 done, qint64 total) {
  if (progress && !progress(done, total)) interrupted();
}

}  // namespace store
