#include "store/field_names.h"

#include "store/failure.h"

namespace store {
namespace {

bool sameName(const QString& a, const QString& b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

}  // namespace

int findField(const QVector<FieldInfo>& fields, const QString& name) {
  for (int i = 0; i < fields.size(); ++i) {
    if (sameName(fields[i].name, name)) return i;
  }
  const qsizetype dot = name.indexOf(u'.');
  if (dot < 0) return -1;
  for (int i = 0; i < fields.size(); ++i) {
    if (sameName(fields[i].table, name.left(dot)) &&
        sameName(fields[i].column, name.mid(dot + 1))) {
      return i;
    }
  }
  return -1;
}

int fieldIndex(const QVector<FieldInfo>& fields, const QString& name) {
  const int field = findField(fields, name);
  if (field < 0) {
    throw Failure(failure::kItemNotFound,
                  QStringLiteral("Campo '%1' non presente nell'elenco").arg(name));
  }
  return field;
}

}  // namespace store
