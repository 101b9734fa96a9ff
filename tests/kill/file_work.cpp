#include "file_work.h"

#include <unistd.h>

#include <QFile>
#include <QHash>
#include <cstdio>
#include <functional>

#include "archives/copie_sicurezza.h"
#include "archives/file_archivio.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "platform/common_dialogs.h"
#include "platform/message_box.h"
#include "platform/system_path.h"

namespace tavolix {
namespace {

void restore(const QString& folder, const QString& copy) {
  platform::MessageBoxSeam::reset();
  platform::MessageBoxSeam::setNoWindow(true);
  platform::MessageBoxSeam::setNextAnswer(platform::kYes);
  platform::MessageBoxSeam::setNextAnswer(platform::kOk);
  platform::CommonDialogSeam::setNextPath(copy);
  if (!bRecuperaCopia(folder + u'/', QStringLiteral(".tvx"))) ::_exit(1);
}

}  // namespace

void workOnFiles(const QString& work, const QString& folder) {
  ImpostaCartellaProgramma(folder);
  platform::setCurrentDirectory(folder);
  ImpostaFileIni(folder + "/tvx.ini");
  ImpostaSezioneIni("ManArc");
  platform::MessageBoxSeam::setNoWindow(true);
  const auto path = [&](const char* name) { return folder + u'/' + QLatin1String(name); };
  const QString archive = path("casa.tvx"), other = path("altro.tvx");
  const QHash<QString, std::function<void()>> works{
      {"backup",
       [&] {
         EseguiCopiaSicur(path("uno.tvx"), archive, false);
         EseguiCopiaSicur(path("due.tvx"), archive, false);
       }},
      {"restore",
       [&] {
         restore(folder, path("una/casa.tvx"));
         restore(folder, path("altra/casa.tvx"));
       }},
      {"duplicate",
       [&] {
         CopiaArchivio(archive, other, "Duplicazione archivio");
         EliminaArchivio(other);
       }},
      {"rename",
       [&] {
         RinominaArchivio(archive, other);
         RinominaArchivio(other, archive);
       }},
      {"compact", [&] { ComprimiArchivio(archive); }},
      {"repair",
       [&] {
         QFile::copy(path("guasto"), path("posto"));
         ::rename(path("posto").toUtf8().constData(), archive.toUtf8().constData());
         RiparaArchivio(archive);
       }},
  };
  std::puts("ready");
  std::fflush(stdout);
  for (const auto& once = works[work];;) once();
}

}  // namespace tavolix
