#include "output/report_export.h"

#include "platform/system_path.h"
#include "store/unfinished_file.h"

namespace tavolix::report {
namespace {

constexpr qsizetype kBuffer = 1 << 16;
constexpr qint64 kRowsATime = 256;

// Text on its way to a file.
class Sink final {
 public:
  explicit Sink(store::UnfinishedFile& file) : file_(file) {}

  void put(const QString& text) {
    waiting_ += text.toUtf8();
    if (waiting_.size() >= kBuffer) flush();
  }
  void flush() {
    file_.write(waiting_.constData(), waiting_.size());
    waiting_.clear();
  }

 private:
  store::UnfinishedFile& file_;
  QByteArray waiting_;
};

QString quoted(QString text) {
  return u'"' + text.replace(u'"', QLatin1String("\"\"")) + u'"';
}

QString delimitedLine(QStringList texts) {
  for (QString& text : texts) text = text.isEmpty() ? text : quoted(text);
  return texts.join(u';') + QLatin1String("\r\n");
}

QString htmlRow(const QStringList& texts, const char* cell) {
  QString row = QStringLiteral("<tr>");
  for (const QString& text : texts) {
    QString inner = text.toHtmlEscaped();
    inner.replace(u'\n', QLatin1String("<br>"));
    row += QStringLiteral("<%1>%2</%1>").arg(QLatin1String(cell), inner);
  }
  return row + QLatin1String("</tr>\n");
}

QString htmlHead(const QString& title) {
  return QStringLiteral(
             "<!DOCTYPE html>\n<html lang=\"it\"><head><meta charset=\"utf-8\"><title>%1</title>"
             "<style>table{border-collapse:collapse}td,th{border:1px solid #999;padding:2px 6px;"
             "text-align:left;vertical-align:top}</style></head>\n<body><h1>%1</h1>\n<table>\n")
      .arg(title.toHtmlEscaped());
}

QString head(const Document& document, RowFormat format) {
  const QStringList& names = document.definition().main.fields;
  // The mark at the beginning tells spreadsheets which letters there are.
  if (format == RowFormat::Delimited) return QChar(QChar::ByteOrderMark) + delimitedLine(names);
  return htmlHead(document.title()) + htmlRow(names, "th");
}

QString line(const Document& document, qint64 row, RowFormat format) {
  const Facts facts = document.rowFacts(row);
  QStringList texts;
  for (int i = 0; i < document.definition().main.fields.size(); ++i) {
    texts << usualText(facts, i);
  }
  return format == RowFormat::Delimited ? delimitedLine(texts) : htmlRow(texts, "td");
}

}  // namespace

bool writeRows(Document& document, const QString& path, RowFormat format,
               const store::Progress& progress) {
  const auto held = document.hold();
  store::UnfinishedFile file(platform::fullPath(path));
  Sink sink(file);
  sink.put(head(document, format));
  const qint64 rows = document.rowCount();
  for (qint64 row = 0; row < rows; ++row) {
    sink.put(line(document, row, format));
    if (row % kRowsATime == 0 && progress && !progress(row, rows)) return false;
  }
  if (format == RowFormat::Html) sink.put(QStringLiteral("</table></body></html>\n"));
  sink.flush();
  file.sync();
  file.putInPlace();
  return true;
}

}  // namespace tavolix::report
