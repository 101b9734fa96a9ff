#include "platform/lookup_list.h"

#include "store/text_order.h"

namespace platform {
namespace {

int compare(const QString& left, const QString& right) {
  const QByteArray a = left.toUtf8();
  const QByteArray b = right.toUtf8();
  return store::compareText({a.constData(), static_cast<std::size_t>(a.size())},
                            {b.constData(), static_cast<std::size_t>(b.size())});
}

QString withoutAccents(const QString& text) {
  QString letters = text.normalized(QString::NormalizationForm_KD);
  letters.removeIf([](QChar letter) { return letter.isMark(); });
  return letters;
}

}  // namespace

LookupList::LookupList(Source source, QObject* parent)
    : QAbstractListModel(parent), source_(std::move(source)) {}

void LookupList::ensureLoaded() {
  if (isLoaded()) return;
  const store::RecordsetPtr rows = source_.open();
  keyField_ = rows->FieldIndex(source_.keyField);
  textField_ = rows->FieldIndex(source_.textField);
  rows->ExpectFields({keyField_, textField_});
  connect(rows.get(), &store::Recordset::closed, this, &LookupList::drop);
  beginResetModel();
  rows_ = rows;
  count_ = static_cast<int>(rows->RecordCount()) + 1;
  endResetModel();
}

void LookupList::drop() {
  beginResetModel();
  if (rows_ != nullptr) rows_->disconnect(this);
  rows_.reset();
  count_ = 0;
  singleTexts_.clear();
  endResetModel();
}

void LookupList::invalidate() {
  drop();
  Q_EMIT changed();
}

QString LookupList::text(qint64 key) const {
  if (key == 0) return {};
  auto known = singleTexts_.constFind(key);
  if (known == singleTexts_.constEnd()) known = singleTexts_.insert(key, source_.textOf(key));
  return *known;
}

QVariant LookupList::valueAt(int row, int field) const {
  return row < 1 || row >= count_ ? QVariant() : rows_->ValueAt(row - 1, field);
}

qint64 LookupList::keyAt(int row) const {
  return valueAt(row, keyField_).toLongLong();
}

QString LookupList::textAt(int row) const {
  return valueAt(row, textField_).toString();
}

int LookupList::rowOfKey(qint64 key) {
  ensureLoaded();
  if (key == 0) return 0;
  rows_->FindFirst(source_.keyField + QStringLiteral(" = ") + QString::number(key));
  return rows_->NoMatch() ? -1 : static_cast<int>(rows_->AbsolutePosition()) + 1;
}

// The first row, the blank one included, whose text does not come before another.
int LookupList::firstNotBefore(const QString& text) const {
  int low = 0;
  int high = count_;
  while (low < high) {
    const int middle = low + (high - low) / 2;
    if (compare(textAt(middle), text) < 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

int LookupList::rowOfText(const QString& text) {
  ensureLoaded();
  const int row = firstNotBefore(text);
  return row < count_ && compare(textAt(row), text) == 0 ? row : -1;
}

int LookupList::rowOfPrefix(const QString& prefix) {
  ensureLoaded();
  const QString letters = withoutAccents(prefix);
  int alike = -1;
  // Texts that begin so but for accents stand together, those with the very accents among them.
  for (int row = firstNotBefore(letters); row < count_; ++row) {
    const QString text = textAt(row);
    if (text.startsWith(prefix, Qt::CaseInsensitive)) return row;
    if (!withoutAccents(text).startsWith(letters, Qt::CaseInsensitive)) break;
    if (alike < 0) alike = row;
  }
  return alike;
}

int LookupList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count_;
}

// Views ask while they paint: a failure must not pass through them.
QVariant LookupList::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
  try {
    return textAt(index.row());
  } catch (const store::Failure&) {
    return {};
  }
}

}  // namespace platform
