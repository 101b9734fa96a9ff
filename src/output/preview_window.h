#pragma once

#include <QTimer>
#include <QWidget>

#include "output/preview_page.h"

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace tavolix::report {

// Shows a report on the screen. Its first page stands at once, the others are laid out while the
// user reads.
class PreviewWindow final : public QWidget {
  Q_OBJECT
 public:
  PreviewWindow(std::shared_ptr<Document> document, const QString& title, QWidget* parent);

  // Keeps the window before all others.
  void stayOnTop();
  QString status() const;

 private:
  enum class Direction { Forward, Backward };
  void build();
  void addButtons(QBoxLayout* bar);
  void addSearch(QBoxLayout* bar);
  void addKeys();
  void goTo(int page);
  void layOutSome();
  // Lays out anew, as far as the page that is shown, what no longer is the archive's.
  void renew();
  void showStatus();
  void startSearch(Direction direction);
  void searchSome();
  bool searchPage(int page);
  void zoom(double factor);
  void printAll();
  void savePdf();
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

  std::shared_ptr<Document> document_;
  PreviewPage* page_;
  QLabel* status_;
  QLineEdit* sought_;
  QTimer layout_;
  QTimer search_;
  Direction direction_ = Direction::Forward;
  int searched_ = -1;  // the page that is looked through next
  int found_ = -1;     // the page whose texts are marked
};

}  // namespace tavolix::report
