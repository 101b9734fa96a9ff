#include "child.h"

#include <QCoreApplication>

namespace tavolix {

Child::Child(const char* role, const QStringList& arguments, const QString& temporary) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(kRole, role);
  environment.insert("TMPDIR", temporary);
  process_.setProcessEnvironment(environment);
  process_.start(QCoreApplication::applicationFilePath(), arguments);
}

Child::~Child() {
  kill();
}

bool Child::waitForLines(int count) {
  while (lines().size() < count) {
    if (process_.waitForReadyRead(30000)) continue;
    qWarning("%s", process_.readAllStandardError().constData());
    return false;
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
