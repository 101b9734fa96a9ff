#include "platform/tab_strip.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionTab>
#include <QStylePainter>
#include <QWheelEvent>

namespace platform {

namespace {

constexpr int kIconSize = 24;
constexpr int kMarkWidth = 4;
constexpr int kSpace = 8;
constexpr int kHoverAlpha = 40;

QFont selectedFont(QFont font) {
  font.setBold(true);
  return font;
}

}  // namespace

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
  setShape(RoundedWest);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  setDrawBase(false);
  setExpanding(false);
  setElideMode(Qt::ElideNone);
  setUsesScrollButtons(true);
  setIconSize(QSize(kIconSize, kIconSize));
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &QTabBar::currentChanged, this, &TabStrip::announce);
}

void TabStrip::announce(int index) {
  announced_ = index;
  Q_EMIT clicked();
}

void TabStrip::Select(int tab) {
  const bool inFront = currentIndex() == tab - 1;
  setCurrentIndex(tab - 1);
  if (signalsBlocked()) {
    announced_ = tab - 1;
  } else if (inFront && announced_ != tab - 1) {
    announce(tab - 1);
  }
}

void TabStrip::addTab(const QIcon& icon, const QString& caption, const QString& tag) {
  // The first tab is selected as it comes, and has to have its tag by then.
  const bool wasBlocked = blockSignals(true);
  const int index = QTabBar::addTab(icon, caption);
  setTabData(index, tag);
  blockSignals(wasBlocked);
  if (count() == 1) Q_EMIT currentChanged(index);
}

// The tab in front may not have been chosen yet.
void TabStrip::mousePressEvent(QMouseEvent* event) {
  const int index = tabAt(event->position().toPoint());
  const bool inFront = index >= 0 && index == currentIndex();
  QTabBar::mousePressEvent(event);
  if (inFront && announced_ != index) announce(index);
}

// Too much is loaded and written by a change of tabs to be done on the way past.
void TabStrip::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

QSize TabStrip::tabSizeHint(int index) const {
  const QFontMetrics metrics(selectedFont(font()));
  const QSize text = metrics.size(Qt::TextShowMnemonic, tabText(index));
  const int height = qMax(text.height(), iconSize().height()) + 2 * kSpace;
  return {kMarkWidth + iconSize().width() + text.width() + 4 * kSpace, height};
}

QSize TabStrip::minimumTabSizeHint(int index) const {
  return tabSizeHint(index);
}

void TabStrip::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  for (int index = 0; index < count(); ++index) {
    if (isTabVisible(index)) drawTab(painter, index);
  }
}

void TabStrip::drawTab(QStylePainter& painter, int index) const {
  QStyleOptionTab option;
  initStyleOption(&option, index);
  if (!isTabEnabled(index)) option.palette.setCurrentColorGroup(QPalette::Disabled);
  drawGround(painter, option);
  if (option.state.testFlag(QStyle::State_HasFocus)) drawFocus(painter, option);
  drawContent(painter, option, index);
}

void TabStrip::drawFocus(QStylePainter& painter, const QStyleOptionTab& option) const {
  QStyleOptionFocusRect focus;
  focus.QStyleOption::operator=(option);
  focus.state |= QStyle::State_KeyboardFocusChange;
  focus.rect = option.rect.adjusted(kMarkWidth + 2, 2, -2, -2);
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

// The selected tab stands on the ground of the page, with a bar at its border.
void TabStrip::drawGround(QStylePainter& painter, const QStyleOptionTab& option) const {
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  QColor mark = option.palette.color(QPalette::Highlight);
  if (selected) {
    painter.fillRect(option.rect, option.palette.base());
    painter.fillRect(QRect(option.rect.topLeft(), QSize(kMarkWidth, option.rect.height())), mark);
  } else if (option.state.testFlag(QStyle::State_MouseOver)) {
    mark.setAlpha(kHoverAlpha);
    painter.fillRect(option.rect, mark);
  }
}

void TabStrip::drawContent(QStylePainter& painter, const QStyleOptionTab& option, int index) const {
  const bool enabled = option.state.testFlag(QStyle::State_Enabled);
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  QRect place = option.rect.adjusted(kMarkWidth + kSpace, 0, -kSpace, 0);
  const QRect icon(place.topLeft(), QSize(iconSize().width(), place.height()));
  tabIcon(index).paint(&painter, icon, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
  place.setLeft(icon.right() + 1 + kSpace);
  painter.setFont(selected ? selectedFont(font()) : font());
  const QString text = painter.fontMetrics().elidedText(tabText(index), Qt::ElideRight,
                                                        place.width(), Qt::TextShowMnemonic);
  painter.drawItemText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic,
                       option.palette, enabled, text,
                       selected ? QPalette::Text : QPalette::WindowText);
}

void TabStrip::keyPressEvent(QKeyEvent* event) {
  const bool vertical = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
  const Qt::KeyboardModifiers held = event->modifiers() & ~Qt::KeypadModifier;
  if (!vertical || held != Qt::NoModifier) {
    event->ignore();
    return;
  }
  step(event->key() == Qt::Key_Up ? -1 : 1);
}

void TabStrip::step(int direction) {
  int next = currentIndex() + direction;
  while (next >= 0 && next < count() && !(isTabEnabled(next) && isTabVisible(next))) {
    next += direction;
  }
  if (next >= 0 && next < count()) setCurrentIndex(next);
}

}  // namespace platform
