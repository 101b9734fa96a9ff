#include "tools/list_table.h"

#include "model/campi.h"
#include "model/raccolte.h"
#include "store/text_order.h"

namespace tavolix::builder {
namespace {

QByteArray sortKey(const QString& text) {
  std::string key;
  store::appendSortKey(text.toStdString(), key);
  return QByteArray::fromStdString(key);
}

}  // namespace

bool operator==(const ListName& left, const ListName& right) {
  return left.code == right.code && left.collection == right.collection;
}

size_t qHash(const ListName& name, size_t seed) {
  return qHashMulti(seed, name.code, name.collection);
}

QVector<ListName> listNames() {
  QVector<ListName> names;
  for (int i = 0; i < kRaccolte; ++i) {
    for (int j = 0; j < iNumeroCampi(i); ++j) {
      const tCampo& campo = aCampi(i, j);
      const ListName name{campo.sCodTab, campo.iRacTab};
      if (campo.sTipo == QLatin1String(CBO) && !names.contains(name)) names.append(name);
    }
  }
  return names;
}

ListTable::ListTable(store::Database& database)
    : rows_(database.OpenRecordset(QStringLiteral("TAB"), store::RecordsetType::Table)),
      key_(rows_->FieldIndex(QStringLiteral("ID"))),
      code_(rows_->FieldIndex(QStringLiteral("TipoTab"))),
      collection_(rows_->FieldIndex(QStringLiteral("TipoRac"))),
      text_(rows_->FieldIndex(QStringLiteral("Desc"))),
      default_(rows_->FieldIndex(QStringLiteral("Default"))) {
  for (; !rows_->Eof(); rows_->MoveNext()) {
    remember({rows_->Value(code_).toString(), rows_->Value(collection_).toInt()},
             rows_->Value(text_).toString(), rows_->Value(key_).toLongLong());
  }
}

const store::FieldInfo& ListTable::textColumn() const {
  return rows_->Fields()[text_];
}

const QVector<qint64>& ListTable::keys(const ListName& name) const {
  static const QVector<qint64> none;
  const auto found = keys_.constFind(name);
  return found == keys_.constEnd() ? none : *found;
}

qint64 ListTable::find(const ListName& name, const QString& text) const {
  const auto list = keyOfText_.constFind(name);
  return list == keyOfText_.constEnd() ? 0 : list->value(sortKey(text));
}

qint64 ListTable::add(const ListName& name, const QString& text, bool isDefault) {
  rows_->AddNew();
  rows_->SetValue(code_, name.code);
  rows_->SetValue(collection_, name.collection);
  rows_->SetValue(text_, text);
  rows_->SetValue(default_, isDefault);
  rows_->Update();
  rows_->SetBookmark(rows_->LastModified());
  const qint64 key = rows_->Value(key_).toLongLong();
  remember(name, text, key);
  return key;
}

qint64 ListTable::findOrAdd(const ListName& name, const QString& text) {
  const qint64 key = find(name, text);
  return key != 0 ? key : add(name, text);
}

void ListTable::remember(const ListName& name, const QString& text, qint64 key) {
  keys_[name].append(key);
  keyOfText_[name].insert(sortKey(text), key);
}

}  // namespace tavolix::builder
