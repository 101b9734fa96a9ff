#pragma once

#include <QCommandLineOption>
#include <cstdio>

#include "store/failure.h"

namespace tavolix::builder {

// The folder with the sources of the archives.
inline QCommandLineOption dataOption() {
  return {QStringLiteral("data"), QStringLiteral("Cartella dei sorgenti."),
          QStringLiteral("cartella"), QStringLiteral(TAVOLIX_DATA_SOURCE)};
}

// Runs a tool's work; a failure is told on the error output. Returns the process's result.
template <typename Work>
int reportingFailures(Work&& work) {
  try {
    work();
    return 0;
  } catch (const store::Failure& failure) {
    std::fprintf(stderr, "%s (%d)\n", failure.what(), failure.number());
    return 1;
  }
}

}  // namespace tavolix::builder
