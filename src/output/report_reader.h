#pragma once

#include <QByteArray>
#include <QString>

#include "output/report_definition.h"

namespace tavolix::report {

// Failure numbers of the report engine.
inline constexpr int kBadDefinition = 510;

// Reads a report file's content, in the format of docs/reports.md. Fails with kBadDefinition; the
// description names the file and the line.
Definition readDefinition(const QByteArray& content, const QString& fileName);

}  // namespace tavolix::report
