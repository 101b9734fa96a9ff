#include "file_work.h"

#include <unistd.h>

#include <QFile>
#include <cstdio>

#include "model/riparazione.h"
#include "store/safe_copy.h"

namespace tavolix {

void workOnFiles(const QString& work, const QString& folder) {
  const auto path = [&](const char* name) { return folder + u'/' + QLatin1String(name); };
  const QString archive = path("casa.tvx");
  const store::RepairPlan plan = PianoRiparazione(path("modello.tvx"));
  std::puts("ready");
  std::fflush(stdout);
  for (;;) {
    if (work == QLatin1String("copy")) {
      store::CopyDatabase(path("uno.tvx"), archive);
      store::CopyDatabase(path("due.tvx"), archive);
    } else if (work == QLatin1String("compact")) {
      store::CompactInPlace(archive);
    } else {
      QFile::copy(path("guasto"), path("posto"));
      ::rename(path("posto").toUtf8().constData(), archive.toUtf8().constData());
      store::RepairDatabase(archive, plan);
    }
  }
}

}  // namespace tavolix
