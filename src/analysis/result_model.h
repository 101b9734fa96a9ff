#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include "store/recordset.h"

namespace tavolix {

// A number as "#,##0" and a share of 1 as "##0.0%" show it.
QString sIntero(double valore);
QString sPercento(double quota);

// What an analysis has found, over its open snapshot, which is asked for the rows that are shown.
// Behind the rows there can be an empty row and a closing one.
class ResultModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  // Fields that hold numbers stand at the right, under their headings.
  ResultModel(QStringList headings, QList<int> numbers);

  void setHeading(const QString& ofFirst);
  void clear();
  // The longest text of a column, as far as it is known without a look at the rows.
  QString longestText(int column) const { return longest_.value(column); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 protected:
  void show(store::RecordsetPtr rows, QStringList closing);
  void noteText(int column, const QString& text);
  QVariant valueAt(int row, int field) const { return rows_->ValueAt(row, field); }

 private:
  // Of a row of the snapshot. Fails as the store does.
  virtual QString text(int row, int column) const = 0;
  QString shownText(int row, int column) const;

  QStringList headings_;
  QList<int> numbers_;
  store::RecordsetPtr rows_;
  QStringList closing_;
  QStringList longest_;
  int count_ = 0;
};

}  // namespace tavolix
