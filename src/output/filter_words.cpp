#include "output/filter_words.h"

#include <QLocale>
#include <QRegularExpression>

#include "model/campi.h"
#include "store/value_text.h"

namespace tavolix::report {
namespace {

struct Sign {
  const char* sql;
  const char* words;
};
constexpr Sign kSigns[] = {
    {"=", " uguale a "},    {"<>", " diverso da "},          {">", " maggiore di "},
    {"<", " minore di "},   {">=", " maggiore o uguale a "}, {"<=", " minore o uguale a "},
    {"Like", " contiene "},
};

QString words(const QString& sign) {
  for (const Sign& row : kSigns) {
    if (sign.compare(QLatin1String(row.sql), Qt::CaseInsensitive) == 0) {
      return QString::fromLatin1(row.words);
    }
  }
  return sign;
}

// The field of a collection with a column's qualified name; -1 if it has none.
int fieldOf(int collection, const QString& column) {
  for (int j = 0; j < iNumeroCampi(collection); ++j) {
    if (sCampoQualificato(collection, j).compare(column, Qt::CaseInsensitive) == 0) return j;
  }
  return -1;
}

QString listText(store::Database& database, const QString& key) {
  const auto rows = database.OpenRecordset(
      QStringLiteral("SELECT [Desc] FROM TAB WHERE ID = ") + key, store::RecordsetType::Snapshot);
  return rows->RecordCount() == 0 ? QStringLiteral("nessuno") : rows->ValueAt(0, 0).toString();
}

// A text as the user typed it: a pattern without its stars at the ends, and its signs unprotected.
QString typedText(const QString& value, bool isPattern) {
  static const QRegularExpression protectedSign(QStringLiteral("\\[(.)\\]"));
  QString text = value.mid(1, value.size() - 2);
  text.replace(QLatin1String("''"), QLatin1String("'"));
  if (!isPattern) return text;
  if (text.startsWith(u'*')) text.remove(0, 1);
  if (text.endsWith(u'*')) text.chop(1);
  return text.replace(protectedSign, QStringLiteral("\\1"));
}

QString valueText(store::Database& database, const tCampo& campo, const QString& sign,
                  const QString& value) {
  if (campo.sTipo == QLatin1String(CBO)) return listText(database, value);
  if (campo.sTipo == QLatin1String(CHK)) return value == u'0' ? "No" : "Sì";
  if (campo.sTipo == QLatin1String(TXTDTA)) {
    return QLocale().toString(store::dateOfDay(value.toLongLong()), QStringLiteral("dd/MM/yyyy"));
  }
  if (!value.startsWith(u'\'')) return QString(value).replace(u'.', QLocale().decimalPoint());
  const bool isPattern = sign.compare(QLatin1String("Like"), Qt::CaseInsensitive) == 0;
  return u'"' + typedText(value, isPattern) + u'"';
}

}  // namespace

QString filterInWords(store::Database& database, const QString& query) {
  static const QRegularExpression number(QStringLiteral("^Q_REP_([0-7])$"));
  static const QRegularExpression where(
      QStringLiteral("\\bWHERE\\b((?:[^']|'(?:[^']|'')*')*?)(\\bORDER BY\\b.*)?;?\\s*$"),
      QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression test(
      QStringLiteral("(\\w+\\.\\w+)\\s*(=|<>|>=|<=|>|<|Like)\\s*('(?:[^']|'')*'|-?[\\d.]+)"
                     "(?: (?:or|and) \\S+ Is (?:Not )?Null)?|\\b(AND|OR)\\b"));
  const auto which = number.match(query);
  const auto filter = which.hasMatch() ? where.match(database.QueryDefSql(query)) : which;
  if (!which.hasMatch() || !filter.hasMatch()) return {};
  const int collection = which.captured(1).toInt();
  QString told;
  for (const auto& part : test.globalMatch(filter.captured(1))) {
    if (!part.captured(4).isEmpty()) {
      told += part.captured(4) == QLatin1String("AND") ? " e " : " oppure ";
      continue;
    }
    const int field = fieldOf(collection, part.captured(1));
    if (field < 0) return filter.captured(1).trimmed();
    const tCampo& campo = aCampi(collection, field);
    told += campo.sTitolo + words(part.captured(2)) +
            valueText(database, campo, part.captured(2), part.captured(3));
  }
  return told;
}

}  // namespace tavolix::report
