#include "hits.h"

#include "raw_file.h"
#include "store/page_checksum.h"

namespace bench {
namespace {

// Books that belong together are spread over the list.
const QByteArray kPart = "(RacID * 7919 % 100)";

QByteArray wordsOf(QString (*word)(int)) {
  QByteArray words;
  for (int i = 0; i < Hits::kWords; ++i) words += " " + word(i).toUtf8();
  return words;
}

void markBooks(RawFile& file) {
  const QByteArray author = QByteArray::number(Hits::author(file, 0));
  const QByteArray marked = "UPDATE MAIN SET Titolo = substr(Titolo, 1, 140) || ' nr' || " + kPart +
                            " || '.', Anno = 1800 + " + kPart + ", TABAutoreID = " + author +
                            " + " + kPart + " WHERE TipoRac = 0";
  file.run(marked.constData());
  const auto name = [&](const char* which, const QByteArray& words) {
    const QByteArray named = "UPDATE MAIN SET Titolo = '" + words +
                             "' WHERE TipoRac = 0 AND RacID = (SELECT " + which +
                             "(RacID) FROM MAIN WHERE TipoRac = 0)";
    file.run(named.constData());
  };
  name("min", wordsOf(&Hits::firstWord));
  name("max", wordsOf(&Hits::lastWord));
}

}  // namespace

QStringList Hits::archives(const Ground& ground) {
  const QStringList paths = ground.twoCopies();
  for (const QString& path : paths) {
    RawFile file(path, store::checkedFileLayer());
    markBooks(file);
  }
  RawFile(paths[1]).run(
      "CREATE INDEX best_author ON MAIN (TABAutoreID, TipoRac, RacID);"
      "CREATE INDEX best_year ON MAIN (Anno, TipoRac, RacID)");
  return paths;
}

qint64 Hits::author(const RawFile& file, int part) {
  // The plain engine does not know the archive's own order of texts.
  RawStatement first(file,
                     "SELECT min(ID) FROM TAB NOT INDEXED WHERE TipoRac = 0 AND "
                     "TipoTab COLLATE BINARY = 'AUTORE'");
  first.step();
  return first.number(0) + part;
}

}  // namespace bench
