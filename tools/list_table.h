#pragma once

#include <QHash>
#include <QVector>

#include "store/database.h"

namespace tavolix::builder {

// A lookup list of the archive: all rows of TAB with one code and collection (-1: all of them).
struct ListName {
  QString code;
  int collection = 0;
};
bool operator==(const ListName& left, const ListName& right);
size_t qHash(const ListName& name, size_t seed);

// The lists of the field table, each once.
QVector<ListName> listNames();

// The lookup lists of an archive. Texts are equal as the archive's order sees them ("Più" is
// "PIÙ"), so that a list holds each text once.
class ListTable final {
 public:
  explicit ListTable(store::Database& database);

  const store::FieldInfo& textColumn() const;
  // Numbers of a list's rows, in the order in which they came.
  const QVector<qint64>& keys(const ListName& name) const;
  // Number of the row with this text; 0 if there is none.
  qint64 find(const ListName& name, const QString& text) const;
  qint64 add(const ListName& name, const QString& text, bool isDefault = false);
  qint64 findOrAdd(const ListName& name, const QString& text);

 private:
  void remember(const ListName& name, const QString& text, qint64 key);

  store::RecordsetPtr rows_;
  int key_, code_, collection_, text_, default_;
  QHash<ListName, QVector<qint64>> keys_;
  QHash<ListName, QHash<QByteArray, qint64>> keyOfText_;
};

}  // namespace tavolix::builder
