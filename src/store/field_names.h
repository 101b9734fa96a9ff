#pragma once

#include <QVector>

#include "store/field_info.h"

namespace store {

// Place of a field by name or "table.column", without case; else -1, or failure 3265.
int findField(const QVector<FieldInfo>& fields, const QString& name);
int fieldIndex(const QVector<FieldInfo>& fields, const QString& name);

}  // namespace store
