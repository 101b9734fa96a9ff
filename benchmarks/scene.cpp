#include "scene.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QThread>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "platform/data_grid.h"
#include "platform/message_box.h"

int tavolixMain(int argc, char** argv);

namespace bench {
namespace {

constexpr int kPatience = 20;  // milliseconds between looks for the program's event loop

// Set before the program starts: what follows its first painted list.
std::function<void()> whenPainted;

[[noreturn]] void endProcess(int result) {
  std::fflush(stdout);
  std::_Exit(result);
}

bool isFilledList(const QObject* painted) {
  const auto* grid = qobject_cast<const platform::DataGrid*>(painted->parent());
  return grid != nullptr && painted == grid->viewport() && grid->model()->rowCount() > 0;
}

class ListWatch final : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && isFilledList(watched)) {
      qApp->removeEventFilter(this);
      // Comes after the painting that is about to be done.
      QMetaObject::invokeMethod(
          this, [] { whenPainted(); }, Qt::QueuedConnection);
    }
    return false;
  }
};

void watchList() {
  if (whenPainted) qApp->installEventFilter(new ListWatch(qApp));
}
Q_COREAPP_STARTUP_FUNCTION(watchList)

// The first painting happens while the program still starts.
void onceRunning(const std::function<void()>& work) {
  if (QThread::currentThread()->loopLevel() > 0) {
    work();
  } else {
    QTimer::singleShot(kPatience, qApp, [work] { onceRunning(work); });
  }
}

[[noreturn]] void runProgram(const char* program, const QString& archive) {
  QByteArray name(program);
  QByteArray file = QFile::encodeName(archive);
  char* argv[] = {name.data(), file.data(), nullptr};
  tavolixMain(2, argv);
  // The scene ends the process: the program has not come to it.
  endProcess(2);
}

}  // namespace

void runScene(const char* program, const Scene& scene, const QStringList& files) {
  // A message would wait for a user.
  platform::MessageBoxSeam::setNoWindow(true);
  whenPainted = [scene, files] {
    onceRunning([scene, files] {
      scene(files);
      endProcess(0);
    });
  };
  runProgram(program, files.first());
}

void runStart(const char* program, const QString& archive) {
  whenPainted = [] {
    std::puts("painted");
    endProcess(0);
  };
  runProgram(program, archive);
}

void report(const char* name, double value) {
  std::printf("%s %.9g\n", name, value);
}

void report(const char* name, const QVector<double>& values) {
  for (const double value : values) report(name, value);
}

}  // namespace bench
