#pragma once

#include <QObject>
#include <QVector>

namespace store {

// What a recordset tells the objects that share it: a change names its row and fields, rows come
// and go by about-to/done pairs. Places are those of AbsolutePosition.
class RecordsetSignals : public QObject {
  Q_OBJECT

 Q_SIGNALS:
  // The current row is about to change: write what is pending. Set *stays where that cannot be
  // done; whoever does so tells the user why.
  void aboutToMove(bool* stays);
  void aboutToUpdate();  // Update was called: put pending values into the row
  void addStarted();     // AddNew was called
  void addGivenUp();     // the row being added will not be: the current row counts again
  void moved(qint64 from, qint64 to);
  void rowChanged(qint64 position, const QVector<int>& fields);
  void rowAboutToBeInserted(qint64 position);
  void rowInserted(qint64 position);
  void rowAboutToBeRemoved(qint64 position);
  void rowRemoved(qint64 position);
  void aboutToRequery();
  void requeried();
  void closed();
};

}  // namespace store
