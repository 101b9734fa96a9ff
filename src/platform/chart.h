#pragma once

#include <QWidget>
#include <optional>

#include "platform/chart_output.h"

class QScrollBar;

namespace platform {

// One series of labelled numbers as a pie or as bars. Each row is a series of its own as far as its
// label goes; rows and series count from 1. What is pressed, or come to by the arrows, is
// announced; whose label shows is up to the window.
class Chart final : public QWidget {
  Q_OBJECT
 public:
  explicit Chart(QWidget* parent = nullptr);

  // Off while much is changed: the picture stays as it is until it is on again.
  void SetRepaint(bool on);
  bool Repaint() const { return repaint_; }
  // Taking rows away takes their labels away; new rows are empty.
  void SetRowCount(int rows);
  int RowCount() const { return static_cast<int>(data_.rows.size()); }
  // The row that SetRowLabel and SetData write; failure 9 for one that there is not.
  void SetRow(int row);
  void SetRowLabel(const QString& label);
  void SetData(double value);
  const ChartRow& RowAt(int row) const;
  void SetChartType(ChartType type);
  ChartType Type() const { return data_.type; }
  void SetElevation(double degrees);
  void SetRotation(double degrees);
  void SetTitleText(const QString& text);
  QString TitleText() const { return data_.title; }
  void SetFootnoteText(const QString& text);
  QString FootnoteText() const { return data_.footnote; }
  void SetPointLabel(int series, const DataPointLabel& label);
  DataPointLabel PointLabel(int series) const { return labels_.value(series - 1); }
  enum BackdropStyle { NoBackdrop = 0, FilledBackdrop = 2 };
  void SetBackdrop(int style);
  int Backdrop() const { return backdrop_; }

  ChartPrintSettings& Printing() { return printing_; }
  // Prints with the settings above. Fails with kNoPrinter.
  void PrintTo(QPrinter& printer);

  // What is on the screen, worked out; null before the first showing.
  const ChartScene* scene();
  QSize sizeHint() const override { return {760, 520}; }
  QSize minimumSizeHint() const override { return {360, 280}; }

 Q_SIGNALS:
  void PointSelected(int series);
  // Any other part. It is selected, which a frame shows, unless that is cancelled.
  void PartSelected(platform::ChartPart part, bool* cancel);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void changed();
  void layOut();
  void placeLegendBar();
  void select(int series);
  void selectPart(ChartPart part);
  void showInLegend(int series);
  void describe();
  QString described(int series) const;
  QString tipAt(const QPointF& point);
  void paintFrame(QPainter& painter);
  int markedRow() const;
  bool moveBy(int key);
  ChartSheet sheet() const;
  void copy();
  void save();

  ChartData data_;
  ChartLabels labels_;
  ChartPrintSettings printing_;
  std::optional<ChartScene> scene_;
  QScrollBar* legendBar_;
  bool repaint_ = true;
  bool stale_ = true;  // the scene is not that of the data
  int backdrop_ = FilledBackdrop;
  int row_ = 0;                       // being written
  int selected_ = 0;                  // series; 0 for none
  ChartPart part_ = ChartPart::None;  // that has a frame
};

}  // namespace platform
