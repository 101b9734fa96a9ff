#pragma once

#include <QTableView>

#include "analysis/result_model.h"

namespace tavolix {

// Shows what an analysis has found. Rows can be copied, as texts parted by tabs; nothing else is
// done with them.
class ResultGrid final : public QTableView {
  Q_OBJECT
 public:
  ResultGrid(ResultModel* model, QWidget* parent);

  // Makes the columns as wide as their texts.
  void fitColumns();
  // What is shown instead of rows that could not be had; empty where there are simply none.
  void tellMissing(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void copy();
  int widthOf(int column) const;

  ResultModel* model_;
  QString missing_;
};

}  // namespace tavolix
