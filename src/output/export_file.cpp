#include "output/export_file.h"

#include <QVector>

#include "core/errore.h"
#include "model/campi.h"
#include "model/raccolte.h"
#include "store/unfinished_file.h"

namespace tavolix::text_export {
namespace {

constexpr qint64 kRowsBetweenReports = 128;
constexpr qsizetype kFlush = 1 << 16;
const QString kLineEnd = QStringLiteral("\r\n");

// A field of the collection, and where its value stands in the rows.
struct Column {
  QString sTipo;
  int field = -1;
  int listText = -1;  // of a list's value, where the query brings it along
};

class Rows final {
 public:
  Rows(int iRac, store::Database& archive, store::Recordset& lists)
      : rows_(archive.OpenRecordset(aRaccolte(iRac).sQuery, store::RecordsetType::Dynaset)),
        lists_(lists) {
    QVector<int> read;
    for (int i = 0; i < iNumeroCampi(iRac); ++i) {
      const tCampo& campo = aCampi(iRac, i);
      Column column{campo.sTipo, rows_->FieldIndex(campo.sCampoDB), -1};
      if (campo.sTipo == QLatin1String(CBO)) column.listText = rows_->FindField(sVoceElenco(campo));
      read << column.field << column.listText;
      columns_ << column;
    }
    rows_->ExpectFields(read);
  }
  ~Rows() {
    ignorando([&] { rows_->Close(); });
  }
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;

  qint64 count() const { return rows_->RecordCount(); }

  QString line(qint64 row, const Format& format) {
    QString text;
    for (const Column& column : columns_) {
      if (&column != columns_.constData()) text += format.separator;
      const bool isList = column.sTipo == QLatin1String(CBO);
      text += fieldText(column.sTipo,
                        isList ? listText(row, column) : rows_->ValueAt(row, column.field), format);
    }
    return text;
  }

 private:
  // The text alone does not tell a value without one from none.
  QVariant listText(qint64 row, const Column& column) {
    if (column.listText >= 0) {
      const QVariant text = rows_->ValueAt(row, column.listText);
      if (text.isValid()) return text;
    }
    const QVariant key = rows_->ValueAt(row, column.field);
    if (key.toLongLong() == 0) return {};
    lists_.Seek(QStringLiteral("="), {key});
    if (lists_.NoMatch()) return {};
    const QVariant text = lists_.Value(QStringLiteral("Desc"));
    return text.isValid() ? text : QVariant(QString());
  }

  store::RecordsetPtr rows_;
  store::Recordset& lists_;
  QVector<Column> columns_;
};

}  // namespace

qint64 writeCollection(int iRac, store::Database& archive, store::Recordset& lists,
                       const QString& path, const Format& format, const store::Progress& progress) {
  Rows rows(iRac, archive, lists);
  store::UnfinishedFile file(path);
  QByteArray buffer;
  const auto flush = [&] {
    file.write(buffer.constData(), buffer.size());
    buffer.clear();
  };
  if (format.hasHead) buffer += (headLine(iRac, format) + kLineEnd).toUtf8();
  qint64 unread = 0;
  for (qint64 row = 0; row < rows.count(); ++row) {
    if (row % kRowsBetweenReports == 0) store::tell(progress, row, rows.count());
    QString line;
    if (ignorando([&] { line = rows.line(row, format); })) {
      buffer += (line + kLineEnd).toUtf8();
    } else {
      ++unread;
    }
    if (buffer.size() > kFlush) flush();
  }
  flush();
  file.sync();
  file.putInPlace();
  return unread;
}

}  // namespace tavolix::text_export
