// Brings an archive of the earlier record engine over into a new one, from the shell.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <cstdio>

#include "model/cifratura.h"
#include "model/vecchio_archivio.h"
#include "store/failure.h"

using namespace tavolix;

namespace {

// Results of the process.
enum Result { kDone = 0, kFailed = 1, kWrongUse = 2, kWrongCode = 3 };

constexpr const char* kHelp =
    "Uso: tavolix-importa [opzioni] VECCHIO.mdb NUOVO.tvx\n"
    "Porta un vecchio archivio in uno nuovo. Il vecchio non viene modificato.\n"
    "\n"
    "  --codice CODICE  codice d'accesso del vecchio archivio\n"
    "  --modello FILE   archivio vuoto da cui nasce il nuovo\n"
    "  -h, --help       mostra questo aiuto\n"
    "\n"
    "Risultato: 0 riuscito, 1 non riuscito, 2 uso errato, 3 codice d'accesso mancante o errato.\n";

// Beside the program in a build, under share in an installation.
QString installedModel() {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* folder : {"share/tavolix", "../share/tavolix"}) {
    const QFileInfo model(program.filePath(QString::fromLatin1(folder)) +
                          QStringLiteral("/modello.tvx"));
    if (model.isFile()) return model.canonicalFilePath();
  }
  return {};
}

bool knowsCode(const QString& old, const QString& given) {
  const QString code = sCodiceVecchioArchivio(old);
  if (code == QLatin1String(kSenzaCodice)) return true;
  if (code.isEmpty()) {
    std::fputs("Codice d'accesso manomesso dall'esterno!\n", stderr);
    return false;
  }
  if (given.trimmed().toUpper() == code) return true;
  std::fputs(given.isEmpty()
                 ? "L'archivio ha un codice d'accesso: va indicato con l'opzione --codice\n"
                 : "Codice d'accesso errato!\n",
             stderr);
  return false;
}

int run(const QString& old, const QString& fresh, const QString& code, const QString& model) {
  try {
    if (!knowsCode(old, code)) return kWrongCode;
    const Trasporto result = PortaVecchioArchivio(old, model, fresh);
    QTextStream(stdout) << sEsitoTrasporto(old, fresh, result) << '\n';
    return kDone;
  } catch (const store::Failure& failure) {
    std::fprintf(stderr, "%s (%d)\n", failure.what(), failure.number());
    return kFailed;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  const QCommandLineOption code(QStringLiteral("codice"), {}, QStringLiteral("codice"));
  const QCommandLineOption model(QStringLiteral("modello"), {}, QStringLiteral("file"),
                                 installedModel());
  const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
  parser.addOptions({code, model, help});
  const bool isUnderstood = parser.parse(QCoreApplication::arguments());
  if (isUnderstood && parser.isSet(help)) {
    std::fputs(kHelp, stdout);
    return kDone;
  }
  const QStringList files = parser.positionalArguments();
  if (!isUnderstood || files.size() != 2) {
    std::fputs("Uso: tavolix-importa [--codice CODICE] VECCHIO.mdb NUOVO.tvx (aiuto: --help)\n",
               stderr);
    return kWrongUse;
  }
  return run(files[0], files[1], parser.value(code), parser.value(model));
}
