// Makes the archives that come with the program from their text sources.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>

#include "tools/archive_template.h"
#include "tools/command_line.h"
#include "tools/sample_archive.h"
#include "tools/tips_archive.h"

using namespace tavolix;

namespace {

int run(const QString& kind, const QString& out, const QString& data) {
  return builder::reportingFailures([&] {
    if (kind == QLatin1String("tips")) return builder::buildTips(data, out);
    builder::buildArchive(data, out, [&](store::Database& database) {
      if (kind == QLatin1String("sample")) {
        builder::addSampleRecords(database, data + QStringLiteral("/sample"));
      }
    });
  });
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Crea gli archivi distribuiti con il programma."));
  const QCommandLineOption data = builder::dataOption();
  parser.addOption(data);
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("tipo"), QStringLiteral("template, sample o tips"));
  parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("archivio da creare"));
  parser.process(application);
  const QStringList arguments = parser.positionalArguments();
  const QStringList kinds = {QStringLiteral("template"), QStringLiteral("sample"),
                             QStringLiteral("tips")};
  if (arguments.size() != 2 || !kinds.contains(arguments[0])) parser.showHelp(2);
  return run(arguments[0], arguments[1], parser.value(data));
}
