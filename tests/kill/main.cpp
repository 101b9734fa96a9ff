#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

#include "child.h"
#include "core/errore.h"
#include "platform/theme.h"

namespace {

// As in the program, a failure that no procedure has taken ends the event it came from.
class Application final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    return tavolix::protetto("", [&] { return QApplication::notify(receiver, event); });
  }
};

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  Application application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  platform::applyTheme(application, "chiaro");
  const QByteArray role = qgetenv(tavolix::kRole);
  return role.isEmpty() ? RUN_ALL_TESTS() : tavolix::playRole(role, QApplication::arguments());
}
