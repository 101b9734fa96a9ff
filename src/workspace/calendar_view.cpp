#include "workspace/calendar_view.h"

#include <QComboBox>
#include <QDialog>
#include <QFrame>
#include <QGridLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>

#include "core/modutil.h"
#include "platform/drop_down.h"
#include "platform/push_button.h"
#include "workspace/calendario.h"

namespace tavolix {
namespace {

constexpr int kColumns = 7;
constexpr QSize kCell(38, 28);
constexpr const char* kDays[] = {"L", "M", "M", "G", "V", "S", "D"};

// The days as a whole, with a mark while the keys walk in it.
class DayPanel final : public QFrame {
 public:
  using QFrame::QFrame;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QFrame::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
};

template <typename Widget>
Widget* named(Widget* widget, const char* name, const char* accessible = "") {
  widget->setObjectName(QString::fromLatin1(name));
  widget->setAccessibleName(QString::fromUtf8(accessible));
  return widget;
}

QPushButton* newArrow(const char* name, const char* caption, QWidget* parent, const char* tip) {
  QPushButton* arrow = platform::newButton({name, caption, tip}, parent);
  arrow->setAccessibleName(QString::fromUtf8(tip));
  arrow->setMaximumWidth(kCell.width());
  return arrow;
}

QWidget* newDays(QWidget* parent) {
  auto* days = named(new DayPanel(parent), "panGiorni", "Giorni del mese");
  days->setFrameShape(QFrame::StyledPanel);
  days->setFocusPolicy(Qt::StrongFocus);
  auto* grid = new QGridLayout(days);
  grid->setSpacing(2);
  for (int column = 0; column < kColumns; ++column) {
    auto* head = new QLabel(QString::fromLatin1(kDays[column]), days);
    head->setObjectName(QStringLiteral("Label1(%1)").arg(column));
    head->setAlignment(Qt::AlignCenter);
    head->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(head, 0, column);
  }
  for (int cell = 0; cell < kCelle; ++cell) {
    auto* day = new DayCell(days);
    day->setObjectName(QStringLiteral("cmdGiorno(%1)").arg(cell));
    grid->addWidget(day, 1 + cell / kColumns, cell % kColumns);
  }
  return days;
}

// A combo box tells screen readers its text: its name has to be a label's.
QComboBox* newCombo(const char* name, const char* label, QWidget* parent) {
  auto* combo = named(new platform::DropDown(parent), name);
  combo->setMaxVisibleItems(12);
  auto* buddy = new QLabel(QString::fromUtf8(label), parent);
  buddy->setBuddy(combo);
  buddy->hide();
  return combo;
}

void addHiddenLabels(QWidget* window) {
  for (const char* name : {"lblGG", "lblMM", "lblAA", "lblBlock"}) {
    named(new QLabel(window), name)->hide();
  }
  window->findChild<QLabel*>(QStringLiteral("lblBlock"))->setText(QStringLiteral("lblClock"));
}

QHBoxLayout* newButtons(QWidget* window) {
  auto* row = new QHBoxLayout;
  row->addWidget(platform::newButton({"cmdOggi", "&Oggi"}, window));
  row->addStretch(1);
  QPushButton* ok = platform::newButton({"cmdOK", "OK"}, window);
  ok->setDefault(true);
  row->addWidget(ok);
  row->addWidget(platform::newButton({"Command1", "Annulla"}, window));
  return row;
}

}  // namespace

DayCell::DayCell(QWidget* parent) : QLabel(parent) {
  setAlignment(Qt::AlignCenter);
  setMinimumSize(kCell);
}

void DayCell::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT clicked();
}

void DayCell::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) Q_EMIT doubleClicked();
}

QWidget* buildCalendarWindow() {
  auto* window = new QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                          Qt::WindowCloseButtonHint);
  auto* column = new QVBoxLayout(window);
  column->setSizeConstraint(QLayout::SetFixedSize);
  auto* head = new QHBoxLayout;
  QWidget* days = newDays(window);
  head->addWidget(newArrow("cmdIndietro", "<", window, "Mese precedente"));
  head->addWidget(newCombo("cboMese", "Mese", window), 1);
  head->addWidget(newCombo("cboAnno", "Anno", window));
  head->addWidget(newArrow("cmdAvanti", ">", window, "Mese successivo"));
  column->addLayout(head);
  column->addWidget(days);
  column->addLayout(newButtons(window));
  addHiddenLabels(window);
  return window;
}

}  // namespace tavolix
