#include <QApplication>
#include <QIcon>

#include "app/program_folder.h"
#include "archives/modmanarc.h"
#include "assist/frmbasic.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "platform/form.h"
#include "platform/icons.h"
#include "platform/message_box.h"
#include "platform/single_instance.h"
#include "platform/theme.h"
#include "query/moduli_query.h"
#include "workspace/frmmain.h"

namespace {

// A failure that no procedure has taken ends the event it came from, not the program.
class Application final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    return tavolix::protetto("", [&] { return QApplication::notify(receiver, event); });
  }
};

void applyLooks(QApplication& application) {
  tavolix::ImpostaFileIni(tavolix::sPathCompleto(QStringLiteral("tvx.ini")));
  tavolix::ImpostaSezioneIni(QStringLiteral("Application"));
  QString wish;
  tavolix::bLeggiStr(QStringLiteral("Aspetto"), wish);
  platform::applyTheme(application, wish);
  QApplication::setWindowIcon(platform::windowIcon(QStringLiteral("tavolix")));
}

int run(QApplication& application) {
  tavolix::RegistraArchivi();
  tavolix::RegistraFormAssist();
  tavolix::RegistraFormWorkspace();
  tavolix::RegistraFormQuery();
  const QString commandLine = application.arguments().mid(1).join(u' ');
  const bool started = tavolix::bAvvia(commandLine);
  const int result = started ? QApplication::exec() : 1;
  platform::forms().clear();
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  Application application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tavolix"));
  QApplication::setQuitOnLastWindowClosed(false);
  tavolix::ImpostaCartellaProgramma(tavolix::programFolder());
  const platform::SingleInstance instance;
  if (!instance.isFirst()) {
    platform::MsgBox(QStringLiteral("Attenzione: programma gia' in esecuzione!"));
    return 1;
  }
  tavolix::prepareProgramFolder();
  applyLooks(application);
  return run(application);
}
