#include "child.h"

#include <QCoreApplication>

namespace tavolix {

// Of the frame of the tests it says failures only.
Child::Child(const char* role, const QStringList& arguments, const QString& temporary) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("TAVOLIX_TEST_ROLE", role);
  environment.insert("TMPDIR", temporary);
  process_.setProcessEnvironment(environment);
  process_.start(QCoreApplication::applicationFilePath(),
                 QStringList{"--gtest_brief=1"} + arguments);
}

bool Child::waitForLines(int count) {
  while (lines().size() < count) {
    if (!process_.waitForReadyRead(30000)) return false;
  }
  return true;
}

bool Child::kill() {
  process_.kill();
  process_.waitForFinished();
  if (process_.exitStatus() == QProcess::CrashExit) return true;
  qWarning("%s", process_.readAllStandardError().constData());
  return false;
}

QByteArrayList Child::lines() {
  said_ += process_.readAllStandardOutput();
  QByteArrayList lines = said_.split('\n');
  lines.removeLast();
  return lines;
}

}  // namespace tavolix
