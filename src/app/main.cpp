#include <QApplication>
#include <QFile>
#include <QIcon>
#include <cstdio>

#include "analysis/moduli_analysis.h"
#include "app/command_line.h"
#include "app/program_folder.h"
#include "archives/modmanarc.h"
#include "assist/moduli_assist.h"
#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "output/moduli_output.h"
#include "platform/form.h"
#include "platform/icons.h"
#include "platform/key_handover.h"
#include "platform/message_box.h"
#include "platform/screen_reader.h"
#include "platform/session_end.h"
#include "platform/single_instance.h"
#include "platform/theme.h"
#include "query/moduli_query.h"
#include "workspace/frmmain.h"

namespace {

void applyLooks(QApplication& application) {
  tavolix::ImpostaFileIni(tavolix::sPathCompleto(QStringLiteral("tvx.ini")));
  tavolix::ImpostaSezioneIni(QStringLiteral("Application"));
  QString wish;
  tavolix::bLeggiStr(QStringLiteral("Aspetto"), wish);
  platform::applyTheme(application, wish);
  QApplication::setWindowIcon(platform::windowIcon(QStringLiteral("tavolix")));
}

QString commandLineOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QFile::decodeName(argv[i]);
  return arguments.join(u' ');
}

// Another start has found this one: its window comes to the front, a dialog above it.
void showRunning() {
  QWidget* front = QApplication::activeModalWidget();
  const QString main = QStringLiteral("frmMain");
  if (platform::forms().isLoaded(main)) {
    QWidget* window = platform::forms()[main].Window();
    if (window->isMinimized()) window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    if (front == nullptr) front = window;
  }
  if (front == nullptr) return;
  front->raise();
  front->activateWindow();
}

int tellOfFirst(const platform::SingleInstance& instance) {
  instance.callFirst();
  platform::MsgBox(QStringLiteral("Attenzione: programma gia' in esecuzione!"),
                   platform::kOkOnly + platform::kSetForeground);
  return 1;
}

// What was typed is written as if its box had been left; what cannot be is told.
void saveTyped() {
  if (QWidget* focus = QApplication::focusWidget()) focus->clearFocus();
}

int run(const QString& commandLine) {
  tavolix::RegistraArchivi();
  tavolix::RegistraFormArchivi();
  tavolix::RegistraFormAssist();
  tavolix::RegistraFormWorkspace();
  tavolix::RegistraFormQuery();
  tavolix::RegistraFormAnalysis();
  tavolix::RegistraFormOutput();
  const bool started = tavolix::bAvvia(commandLine);
  const int result = started ? QApplication::exec() : 1;
  platform::forms().clear();
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const QString commandLine = commandLineOf(argc, argv);
  if (const auto answer = tavolix::answerTo(commandLine)) {
    std::fputs(answer->toLocal8Bit().constData(), stdout);
    return 0;
  }
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tavolix"));
  QApplication::setQuitOnLastWindowClosed(false);
  tavolix::ImpostaCartellaProgramma(tavolix::programFolder());
  platform::SingleInstance instance;
  if (instance.isFirst()) {
    instance.listen(showRunning);
    tavolix::prepareProgramFolder();
  }
  applyLooks(application);
  const platform::FocusTeller focusTeller;
  platform::KeyHandover::watch();
  platform::onSessionEnd(saveTyped, [] { QCoreApplication::exit(0); });
  return instance.isFirst() ? run(commandLine) : tellOfFirst(instance);
}
