// Any text, in any place where the program hands text to the record store.

#include <QFile>
#include <cstdio>
#include <cstdlib>

#include "hostile/victim.h"

// Inputs that are kept as one text file become the first corpus.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  int number = 0;
  for (const QByteArray& line : store::sourceFile("tests/hostile/inputs.txt").split('\n')) {
    QFile file(QStringLiteral("%1/seed%2").arg((*argv)[*argc - 1]).arg(number++));
    if (file.open(QIODevice::WriteOnly)) file.write(QByteArray::fromPercentEncoding(line));
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  static auto* const victim = new store::Victim;
  const QString fault = victim->run(QByteArray(data, static_cast<qsizetype>(size)));
  if (fault.isEmpty()) return 0;
  std::fprintf(stderr, "Fault: %s\n", qUtf8Printable(fault));
  std::abort();
}
