#include "analysis/result_model.h"

#include "core/errore.h"
#include "platform/number_format.h"

namespace tavolix {
namespace {

constexpr int kClosingRows = 2;

}  // namespace

QString sIntero(double valore) {
  return platform::formatNumber(valore, QStringLiteral("#,##0"));
}

QString sPercento(double quota) {
  return platform::formatNumber(quota, QStringLiteral("##0.0%"));
}

ResultModel::ResultModel(QStringList headings, QList<int> numbers)
    : headings_(std::move(headings)), numbers_(std::move(numbers)) {}

void ResultModel::setHeading(const QString& ofFirst) {
  headings_.first() = ofFirst;
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, 0);
}

void ResultModel::clear() {
  show({}, {});
  longest_ = QStringList(headings_.size());
}

void ResultModel::show(store::RecordsetPtr rows, QStringList closing) {
  beginResetModel();
  rows_ = std::move(rows);
  closing_ = std::move(closing);
  count_ = rows_ ? static_cast<int>(rows_->RecordCount()) : 0;
  endResetModel();
}

void ResultModel::noteText(int column, const QString& text) {
  if (text.size() > longest_[column].size()) longest_[column] = text;
}

int ResultModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return count_ + (closing_.isEmpty() ? 0 : kClosingRows);
}

int ResultModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return headings_.value(section);
  if (role != Qt::TextAlignmentRole) return {};
  const Qt::Alignment side = numbers_.contains(section) ? Qt::AlignRight : Qt::AlignLeft;
  return QVariant(side | Qt::AlignVCenter);
}

QVariant ResultModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) return shownText(index.row(), index.column());
  if (role == Qt::TextAlignmentRole) return headerData(index.column(), Qt::Horizontal, role);
  return {};
}

// What cannot be read stays empty: it is asked for again with the next paint.
QString ResultModel::shownText(int row, int column) const {
  if (row == count_) return {};
  if (row > count_) return closing_.value(column);
  QString shown;
  ignorando([&] { shown = text(row, column); });
  // A cell is one line, and one cell of what is copied.
  return shown.replace(u'\n', u' ').replace(u'\t', u' ');
}

}  // namespace tavolix
