#pragma once

#include <QAbstractScrollArea>
#include <QPixmap>
#include <memory>

#include "output/report_document.h"

namespace tavolix::report {

// One page of a report, at some scale.
class PreviewPage final : public QAbstractScrollArea {
  Q_OBJECT
 public:
  enum class Fit { Page, Width, Scale };
  PreviewPage(std::shared_ptr<Document> document, QWidget* parent);

  int page() const { return page_; }
  void showPage(int page);
  // Draws the page anew: what it says of the number of pages has become known.
  void refresh();
  void setFit(Fit fit, double scale = 1);
  double scale() const { return scale_; }
  // Marks the places where a text was found.
  void setMarks(std::vector<QRectF> marks);

 Q_SIGNALS:
  void pageWanted(int page);
  void scaleChanged();

 private:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void adapt();
  void draw();
  QSize pageSize() const;
  QPoint origin() const;
  double pixelsPerUnit() const;

  std::shared_ptr<Document> document_;
  QPixmap picture_;
  std::vector<QRectF> marks_;
  int page_ = 0;
  Fit fit_ = Fit::Page;
  double scale_ = 1;
};

}  // namespace tavolix::report
