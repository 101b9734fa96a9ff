#include "store/archive.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "model/raccolte.h"
#include "store/outside.h"
#include "store/text_order.h"

namespace store {
namespace {

constexpr const char* kRecords = R"(
  INSERT INTO TAB (ID, TipoTab, TipoRac, "Desc", "Default") VALUES
    (1, 'AUTORE', 0, 'Eco', 0), (2, 'AUTORE', 0, 'Calvino', -1), (3, 'AUTORE', 0, 'Èlia', 0),
    (4, 'AUTORE', 0, 'calvino jr', 0), (5, 'GENERE', 0, 'Romanzo', 0), (6, 'GENERE', 0, 'Saggio', -1),
    (7, 'TESTATA', 1, 'Il Mese', 0), (8, 'PROPR', NULL, 'Mia', 0);
  INSERT INTO MAIN (ID, RacID, TipoRac, Titolo, TABAutoreID, Anno, Valore, TabProprietaID) VALUES
    (1, 17, 0, 'Il nome della rosa', 1, 1980, 12.5, 8), (2, 16, 0, 'Il barone rampante', 2, 1957, 10, 8),
    (3, 15, 0, 'Barolo & rosé', NULL, 1999, NULL, NULL), (4, 14, 0, 'perché', 2, 1991, 5, 8),
    (5, 13, 0, 'PERCHE', 1, 1995, 20, NULL), (6, 12, 0, '', 4, NULL, 1, NULL),
    (7, 11, 0, NULL, 3, 2000, 2, 8), (8, 21, 1, 'vecchio', NULL, NULL, 3, 8),
    (9, 22, 1, NULL, NULL, NULL, NULL, NULL);
  INSERT INTO LIB (ID, SottoTitolo) VALUES
    (11, 'sette'), (12, 'sei'), (13, 'cinque'), (14, 'quattro'), (15, 'tre'), (16, 'due'), (17, 'uno');
  INSERT INTO RIV (ID, TABTestataID, Numero) VALUES (21, 7, 5), (22, 7, NULL);
  INSERT INTO CFG VALUES ('uno', 1, NULL), ('due', 2, 'x');
)";

QString sourceFolder() {
  const QString given = qEnvironmentVariable("TAVOLIX_SOURCE");
  return given.isEmpty() ? QStringLiteral(__FILE__).section(u'/', 0, -4) : given;
}

}  // namespace

QByteArray sourceFile(const QString& path) {
  QFile file(sourceFolder() + u'/' + path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
  return file.readAll();
}

Archive::Archive() : path_(folder_.filePath(QStringLiteral("prova.tvx"))) {
  database_ = CreateDatabase(path_, sourceFile("data/schema/archivio.sql") + kRecords);
  const QDir queries(sourceFolder() + QStringLiteral("/data/queries"));
  Transaction transaction(*database_);
  for (int i = 0; i < tavolix::kRaccolte; ++i) {
    database_->CreateQueryDef(tavolix::aRaccolte(i).sQuery, tavolix::sQueryElenco(i));
  }
  for (const QFileInfo& file : queries.entryInfoList({"*.sql"})) {
    database_->CreateQueryDef(file.completeBaseName(),
                              QString::fromUtf8(sourceFile("data/queries/" + file.fileName())));
  }
  transaction.Commit();
}

void Archive::outside(const QByteArray& statements) const {
  Outside(path_).exec(statements.toStdString());
}

std::shared_ptr<void> Archive::hold(const QByteArray& statements) const {
  auto program = std::make_shared<Outside>(path_);
  program->exec(statements.toStdString());
  return program;
}

QString Archive::outsideValues(const QByteArray& statement) const {
  return Outside(path_).found(statement, u' ', u' ');
}

QString randomText(std::mt19937& random) {
  static const QStringList pieces = {"a", "A", "à", "b", "B", "è", "e",
                                     "É", " ", "'", "“", "3", "z", "ß"};
  QString text;
  for (auto count = random() % 4; count > 0; --count) {
    text += pieces[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size()))];
  }
  return text;
}

std::vector<std::string> split(const std::string& line, char separator) {
  std::vector<std::string> texts(1);
  for (const char each : line) {
    if (each == separator) {
      texts.emplace_back();
    } else {
      texts.back() += each;
    }
  }
  return texts;
}

void setAll(Recordset& rows, const Values& values) {
  for (const auto& [field, value] : values) rows.SetValue(field, value);
}

void add(Recordset& rows, const Values& values) {
  rows.AddNew();
  setAll(rows, values);
  rows.Update();
}

void change(Recordset& rows, const Values& values) {
  rows.Edit();
  setAll(rows, values);
  rows.Update();
}

QString textOf(const QVariant& value) {
  return value.isValid() ? value.toString() : QStringLiteral("-");
}

QString valuesOf(Recordset& rows, const QString& field) {
  QStringList values;
  if (rows.RecordCount() > 0) rows.MoveFirst();
  for (; !rows.Eof(); rows.MoveNext()) values.append(textOf(rows.Value(field)));
  return values.join(u' ');
}

int compareValues(const QVariant& left, const QVariant& right) {
  if (!left.isValid() || !right.isValid()) return int(left.isValid()) - int(right.isValid());
  const bool isText = left.typeId() == QMetaType::QString;
  if (isText != (right.typeId() == QMetaType::QString)) return isText ? 1 : -1;
  if (isText) return compareText(left.toString().toStdString(), right.toString().toStdString());
  return left.toDouble() < right.toDouble() ? -1 : int(left.toDouble() > right.toDouble());
}

}  // namespace store
