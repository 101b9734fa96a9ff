#pragma once

#include <QTabBar>

class QStylePainter;

namespace platform {

// Tabs one below the other along the left border, with an icon and upright text. Tabs are told by
// their place from 1, and carry a tag that says what they stand for.
class TabStrip final : public QTabBar {
  Q_OBJECT
 public:
  explicit TabStrip(QWidget* parent = nullptr);

  void addTab(const QIcon& icon, const QString& caption, const QString& tag);
  int Count() const { return count(); }
  // Empty for a tab that does not exist.
  QString Tag(int tab) const { return tabData(tab - 1).toString(); }
  QString SelectedTag() const { return Tag(currentIndex() + 1); }
  // Selects a tab. The first choice is announced too where that tab is in front by itself.
  void Select(int tab);
  // What the tab in front stands for could not be had: choosing it again is announced again.
  void ForgetChoice() { announced_ = -1; }

 Q_SIGNALS:
  // Another tab has been selected, by the user or by the program.
  void clicked();

 protected:
  QSize tabSizeHint(int index) const override;
  QSize minimumTabSizeHint(int index) const override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void drawTab(QStylePainter& painter, int index) const;
  void drawGround(QStylePainter& painter, const QStyleOptionTab& option) const;
  void drawFocus(QStylePainter& painter, const QStyleOptionTab& option) const;
  void drawContent(QStylePainter& painter, const QStyleOptionTab& option, int index) const;
  void step(int direction);
  void announce(int index);

  int announced_ = -1;
};

}  // namespace platform
