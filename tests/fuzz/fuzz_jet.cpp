// Any bytes as a file of the earlier record engine.

#include <QFile>
#include <QTemporaryDir>

#include "hostile/jet_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  static const auto* const folder = new QTemporaryDir;
  const QString path = folder->filePath(QStringLiteral("file"));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return 0;
  file.write(data, static_cast<qint64>(size));
  file.close();
  store::readEverything(path);
  return 0;
}
