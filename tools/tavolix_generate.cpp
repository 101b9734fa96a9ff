// Makes an archive of any size with made-up records, for trials and measurements.

#include <QCommandLineParser>
#include <QCoreApplication>

#include "tools/archive_template.h"
#include "tools/command_line.h"
#include "tools/generated_archive.h"

using namespace tavolix;

namespace {

constexpr qint64 kMostRecords = 5000000;

QCommandLineOption option(const char* name, const char* description, const char* value,
                          const char* usual = "") {
  return {QString::fromLatin1(name), QString::fromUtf8(description), QString::fromUtf8(value),
          QString::fromLatin1(usual)};
}

// Nothing where an option does not hold what it must.
std::optional<builder::GeneratorOptions> optionsOf(const QCommandLineParser& parser) {
  builder::GeneratorOptions options;
  bool records = false;
  bool seed = false;
  options.records = parser.value(QStringLiteral("records")).toLongLong(&records);
  options.seed = parser.value(QStringLiteral("seed")).toULongLong(&seed);
  if (!records || !seed || options.records < 0 || options.records > kMostRecords) return {};
  for (const QString& text : parser.values(QStringLiteral("list"))) {
    const std::optional<builder::ListSize> size = builder::parseListSize(text);
    if (!size) return {};
    options.lists.append(*size);
  }
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Crea un archivio di prova."));
  const QCommandLineOption data = builder::dataOption();
  parser.addOptions({data,
                     option("records", "Schede delle raccolte principali.", "numero", "200000"),
                     option("seed", "Seme dei valori casuali.", "numero", "1"),
                     option("list", "Righe di una lista, ad esempio AUTORE:0:50000; ripetibile.",
                            "codice:raccolta:righe")});
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("archivio da creare"));
  parser.process(application);
  const std::optional<builder::GeneratorOptions> options = optionsOf(parser);
  if (parser.positionalArguments().size() != 1 || !options) parser.showHelp(2);
  return builder::reportingFailures([&] {
    builder::buildArchive(
        parser.value(data), parser.positionalArguments()[0],
        [&](store::Database& database) { builder::addGeneratedRecords(database, *options); });
  });
}
