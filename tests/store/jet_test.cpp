// Files of the engine that archives were kept in before, against what their writer put into them.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTime>
#include <cmath>

#include "store/archive.h"
#include "store/jet_file.h"
#include "store/value_text.h"

namespace store {
namespace {

QString dataFolder() {
  return qEnvironmentVariable("TAVOLIX_SOURCE") + "/tests/data/jet/";
}

QString escaped(QString text) {
  return text.replace('\\', "\\\\").replace('\t', "\\t").replace('\n', "\\n").replace('\r', "\\r");
}

QString dateText(double day) {
  const double whole = std::floor(day);
  const qint64 seconds = std::llround((day - whole) * 86400);
  const QString date = dateOfDay(static_cast<qint64>(whole)).toString("yyyy-MM-dd");
  return seconds == 0 ? date
                      : date + QTime(0, 0).addSecs(static_cast<int>(seconds)).toString(" HH:mm:ss");
}

// As the expected files write it.
QString shown(const JetTable& table, int column) {
  const QVariant value = table.value(column);
  if (table.isLost(column)) return "\\?";
  if (!value.isValid()) return "\\N";
  switch (table.columns()[column].kind) {
    case JetKind::Text:
      return escaped(value.toString());
    case JetKind::Date:
      return dateText(value.toDouble());
    case JetKind::Money: {
      const qlonglong amount = value.toLongLong();
      const QString digits = QString::number(amount < 0 ? 0 - static_cast<quint64>(amount)
                                                        : static_cast<quint64>(amount))
                                 .rightJustified(5, '0');
      QString text = digits.chopped(4) + '.' + digits.right(4);
      while (text.endsWith('0')) text.chop(1);
      if (text.endsWith('.')) text.chop(1);
      return (amount < 0 ? "-" : "") + text;
    }
    default:
      return value.toString();
  }
}

// Numbers are compared as such, all else letter by letter.
QString normalized(const QString& field, JetKind kind) {
  bool isNumber = false;
  const double number = field.toDouble(&isNumber);
  return kind == JetKind::Number && isNumber ? QString::number(number, 'g', 17) : field;
}

QStringList rowsOf(JetTable& table) {
  QStringList rows;
  while (table.next()) {
    QStringList fields;
    for (int i = 0; i < table.columns().size(); ++i) {
      fields << normalized(shown(table, i), table.columns()[i].kind);
    }
    rows << fields.join('\t');
  }
  rows.sort();
  return rows;
}

QStringList expectedRows(const QString& file, const JetTable& table) {
  QStringList lines = QString::fromUtf8(sourceFile("tests/data/jet/attesi/" + file)).split('\n');
  lines.removeLast();
  lines.removeFirst();
  for (QString& line : lines) {
    QStringList fields = line.split('\t');
    for (int i = 0; i < fields.size(); ++i) {
      fields[i] = normalized(fields[i], table.columns()[i].kind);
    }
    line = fields.join('\t');
  }
  lines.sort();
  return lines;
}

TEST(Jet, FilesReadAsTheyWereWritten) {
  int tables = 0;
  for (const QString& name :
       QDir(dataFolder() + "attesi").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    ASSERT_TRUE(JetFile::isJet(dataFolder() + name));
    const JetFile file(dataFolder() + name);
    for (const QString& source : QDir(dataFolder() + "attesi/" + name).entryList(QDir::Files)) {
      SCOPED_TRACE((name + ' ' + source).toStdString());
      const auto table = file.open(source.chopped(4).toLower());
      const QStringList expected = expectedRows(name + '/' + source, *table);
      const QStringList found = rowsOf(*table);
      EXPECT_EQ(found.size(), expected.size());
      EXPECT_EQ(table->rowsTold(), expected.size());
      for (int i = 0; i < qMin(found.size(), expected.size()); ++i) {
        ASSERT_EQ(found[i], expected[i]);
      }
      ++tables;
    }
  }
  EXPECT_EQ(tables, 23);
}

TEST(Jet, ForeignCutAndDamagedFiles) {
  const QByteArray whole = sourceFile("tests/data/jet/casa.mdb");
  const QTemporaryDir folder;
  const QString path = folder.filePath("file");
  const auto write = [&](const QByteArray& content) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  };
  const auto books = [&] {
    const auto table = JetFile(path).open("MAIN");
    return rowsOf(*table).size();
  };
  EXPECT_EQ(failureOf([&] { JetFile file(path); }), failure::kFileNotFound);
  for (const QByteArray& content : {QByteArray(), QByteArray("SQLite format 3"), whole.mid(1)}) {
    write(content);
    EXPECT_EQ(failureOf([&] { JetFile file(path); }), failure::kUnknownFormat);
  }
  write(whole.left(5000));
  EXPECT_EQ(failureOf([&] { JetFile file(path); }), failure::kDamaged);
  // A page of rows lost, then a file that ends within its pages.
  constexpr int kPage = 4096;
  write(QByteArray(whole).replace(248 * kPage, kPage, QByteArray(kPage, '\0')));
  EXPECT_EQ(books(), 603);
  qsizetype last = 0;
  for (qsizetype size = whole.size() / 4; size < whole.size(); size += whole.size() / 17) {
    write(whole.left(size));
    qsizetype found = 0;
    failureOf([&] { found = books(); });
    EXPECT_GE(found, last) << size;
    last = found;
  }
  EXPECT_GT(last, 300);
}

}  // namespace
}  // namespace store
