#include "workspace/form_pages.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QWheelEvent>

#include "core/modcuore.h"
#include "core/modutil.h"
#include "model/campi.h"
#include "model/raccolte.h"
#include "platform/check_box.h"
#include "platform/data_combo.h"
#include "platform/data_control.h"
#include "platform/date_box.h"
#include "platform/form.h"
#include "platform/handlers.h"
#include "platform/icons.h"
#include "platform/masked_box.h"
#include "platform/memo_box.h"
#include "platform/screen_reader.h"
#include "platform/text_box.h"
#include "platform/time_box.h"

namespace tavolix {
namespace {

using platform::BoundControl;

// The wheel over the tabs scrolls nothing, and turns no page.
class PageTabs final : public QTabBar {
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};
class Pages final : public QTabWidget {
 public:
  explicit Pages(QWidget* parent) : QTabWidget(parent) { setTabBar(new PageTabs); }
};

// Columns of a page: label, and what stands behind it.
enum Column { kLabel, kBox };

QString text(const char* utf8) {
  return QString::fromUtf8(utf8);
}

template <typename Edit>
Edit* limited(Edit* edit, int length) {
  edit->setMaxLength(length);
  return edit;
}

QWidget* digitsBox(const Box& box, QWidget* parent) {
  auto* digits = new platform::MaskedBox(parent);
  digits->SetMask(text(box.mask));
  if (*box.format != '\0') digits->SetFormat(text(box.format));
  return digits;
}

QWidget* maskedText(const Box& box, QWidget* parent) {
  auto* masked = new platform::MaskedBox(parent);
  masked->SetMaxText(box.maxLength);
  return masked;
}

QWidget* memo(const Box& box, QWidget* parent) {
  auto* edit = new platform::MemoBox(parent);
  edit->SetMaxLength(box.maxLength);
  edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  return edit;
}

QWidget* makeBox(const Box& box, QWidget* parent) {
  switch (box.kind) {
    case BoxKind::Text:
      return limited(new platform::TextBox(parent), box.maxLength);
    case BoxKind::Memo:
      return memo(box, parent);
    case BoxKind::Masked:
      return maskedText(box, parent);
    case BoxKind::Digits:
      return digitsBox(box, parent);
    case BoxKind::Date:
      return new platform::DateBox(parent);
    case BoxKind::Time:
      return new platform::TimeBox(parent);
    case BoxKind::Combo:
      return new platform::DataCombo(parent);
    case BoxKind::Check:
      break;
  }
  auto* check = new platform::CheckBox(parent);
  check->setText(text(box.label));
  return check;
}

// Boxes of few characters do not stretch over the page.
int widthInCharacters(const Box& box) {
  if (box.kind == BoxKind::Digits) return static_cast<int>(qstrlen(box.mask)) + 4;
  if (box.kind == BoxKind::Date) return 12;
  if (box.kind == BoxKind::Time) return 11;
  if (box.kind == BoxKind::Text && box.maxLength <= 20) return box.maxLength + 3;
  return 0;
}

class PageBuilder {
 public:
  PageBuilder(int iRac, ControlNumbers& numbers) : iRac_(iRac), numbers_(numbers) {}

  void build(QTabWidget* panRecord) {
    int page = 0;
    for (const QString& caption : aRaccolte(iRac_).sPagine) {
      buildPage(page, nullptr)->setObjectName(QStringLiteral("picRecord(%1)").arg(page));
      platform::nameControl(*page_, caption);
      panRecord->addTab(scrolling(page_, panRecord), caption);
      ++page;
    }
  }

  // The boxes of the fields that the field table puts on a page.
  QWidget* buildPage(int page, QWidget* parent) {
    page_ = new QWidget(parent);
    grid_ = new QGridLayout(page_);
    grid_->setColumnStretch(kBox, 1);
    grid_->setHorizontalSpacing(8);
    grid_->setVerticalSpacing(6);
    row_ = -1;
    bool stretches = false;
    for (int campo = 0; campo < iNumeroCampi(iRac_); ++campo) {
      if (aCampi(iRac_, campo).iPagina != page) continue;
      stretches = addField(campo) || stretches;
    }
    if (!stretches) grid_->setRowStretch(row_ + 1, 1);
    return page_;
  }

 private:
  // True if the field's row takes what height is left.
  bool addField(int campo) {
    const Box& box = aCampi(iRac_, campo).box;
    QWidget* widget = makeBox(box, page_);
    widget->setObjectName(aCampi(iRac_, campo).sControllo);
    limitWidth(widget, box);
    if (box.kind == BoxKind::Check) {
      grid_->addWidget(widget, ++row_, kBox);
    } else if (line_ != nullptr && sharesRow(campo)) {
      addHiddenLabel(campo, widget);
      addToRow(campo, box, widget);
    } else {
      addLabel(box, widget);
      beginRow(campo, box, widget);
    }
    widget->setToolTip(text(box.tip));
    if (box.kind == BoxKind::Memo) grid_->setRowStretch(row_, 1);
    return box.kind == BoxKind::Memo;
  }

  // A box without a label of its own stands beside the one before.
  bool sharesRow(int campo) const {
    if (campo == 0 || aCampi(iRac_, campo - 1).iPagina != aCampi(iRac_, campo).iPagina)
      return false;
    const char* label = aCampi(iRac_, campo).box.label;
    return *label == '\0' || qstrcmp(label, aCampi(iRac_, campo - 1).box.label) == 0;
  }

  void beginRow(int campo, const Box& box, QWidget* widget) {
    if (box.kind == BoxKind::Memo) {
      grid_->addWidget(widget, row_, kBox);
      return;
    }
    // A layout and no widget: a label names its buddy to screen readers among its siblings only.
    line_ = new QHBoxLayout;
    line_->setSpacing(4);
    grid_->addLayout(line_, row_, kBox);
    addToRow(campo, box, widget);
    const bool more = campo + 1 < iNumeroCampi(iRac_) && sharesRow(campo + 1);
    if (isNarrow(widget) && !more) line_->addStretch(1);
  }

  void addToRow(int campo, const Box& box, QWidget* widget) {
    line_->addWidget(widget, isNarrow(widget) ? 0 : (box.kind == BoxKind::Combo ? 2 : 3));
    QToolButton* button = buttonFor(campo, box, widget);
    if (button != nullptr) line_->addWidget(button);
  }

  static bool isNarrow(const QWidget* widget) { return widget->maximumWidth() < QWIDGETSIZE_MAX; }

  void limitWidth(QWidget* widget, const Box& box) const {
    const int characters = widthInCharacters(box);
    if (characters > 0) {
      widget->setMaximumWidth(widget->fontMetrics().horizontalAdvance(u'0') * characters + 16);
    }
  }

  QLabel* newLabel(const QString& caption, QWidget* buddy) {
    auto* label = new QLabel(caption, page_);
    label->setObjectName(QStringLiteral("Label1(%1)").arg(numbers_.labels++));
    label->setBuddy(buddy);
    return label;
  }

  void addLabel(const Box& box, QWidget* widget) {
    QLabel* label = newLabel(text(box.label), widget);
    const bool tall = box.kind == BoxKind::Memo;
    grid_->addWidget(label, ++row_, kLabel,
                     tall ? Qt::AlignTop | Qt::AlignRight : Qt::AlignVCenter | Qt::AlignRight);
  }

  // A box that shares the label of another one still tells a screen reader its own name.
  void addHiddenLabel(int campo, QWidget* widget) {
    newLabel(aCampi(iRac_, campo).sTitolo, widget)->hide();
  }

  QToolButton* buttonFor(int campo, const Box& box, QWidget* widget) {
    const QString title = *box.label == '\0' ? aCampi(iRac_, campo).sTitolo : text(box.label);
    if (box.kind == BoxKind::Combo) {
      QToolButton* button = listButton(campo);
      button->setAccessibleName(QStringLiteral("Voci di ") + title);
      static_cast<platform::DataCombo*>(widget)->SetValuesWindow([button] { button->click(); });
      return button;
    }
    if (*box.button == '\0') return nullptr;
    QToolButton* button = calendarButton(text(box.button), widget);
    button->setAccessibleName(QStringLiteral("Calendario di ") + title);
    return button;
  }

  QToolButton* smallButton(const QString& name, const char* icon, const char* tip,
                           const char* form) const {
    auto* button = new QToolButton(page_);
    button->setObjectName(name);
    button->setIcon(platform::icon(QString::fromLatin1(icon)));
    button->setToolTip(text(tip));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setEnabled(platform::forms().has(QString::fromLatin1(form)));
    return button;
  }

  QToolButton* listButton(int campo) {
    QToolButton* button =
        smallButton(QStringLiteral("cmdApriTabella(%1)").arg(numbers_.lists++), "lookup",
                    "Modifica e aggiunta delle voci disponibili", "frmTab");
    button->setProperty("Tag", QString::number(campo));
    platform::onCommand(button, &QToolButton::clicked, button,
                        [button] { ApriTabella(button->property("Tag").toString().toInt()); });
    return button;
  }

  QToolButton* calendarButton(const QString& name, QWidget* box) const {
    QToolButton* button = smallButton(name, "calendario", "Calendario", "frmCalendario");
    platform::onCommand(button, &QToolButton::clicked, button,
                        [box] { ApriCalendario(static_cast<platform::DateBox&>(*box)); });
    return button;
  }

  int iRac_;
  ControlNumbers& numbers_;
  QWidget* page_ = nullptr;
  QGridLayout* grid_ = nullptr;
  QHBoxLayout* line_ = nullptr;
  int row_ = -1;
};

}  // namespace

// In a window too small for a page nothing is cut off.
QScrollArea* scrolling(QWidget* page, QWidget* parent) {
  auto* area = new QScrollArea(parent);
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->viewport()->setAutoFillBackground(false);
  page->setAutoFillBackground(false);
  // Enter, commands and letters lead to boxes as well as the Tab key.
  QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* box) {
    if (box != nullptr && area->widget()->isAncestorOf(box)) area->ensureWidgetVisible(box);
  });
  return area;
}

QWidget* buildForm(int iRac, QWidget* parent) {
  auto* form = new QWidget(parent);
  auto* dbCurr = new platform::DataControl(form);
  dbCurr->setObjectName(QStringLiteral("dbCurr"));
  auto* panRecord = new Pages(form);
  panRecord->setObjectName(QStringLiteral("panRecord"));
  platform::nameControl(*panRecord, QStringLiteral("Scheda ") + aRaccolte(iRac).sNome);
  ControlNumbers numbers;
  PageBuilder(iRac, numbers).build(panRecord);
  return form;
}

QWidget* buildPanel(int iRac, platform::DataControl& source, ControlNumbers& numbers,
                    QWidget* parent) {
  constexpr int ofPanels = -1;
  QWidget* panel = PageBuilder(iRac, numbers).buildPage(ofPanels, parent);
  panel->setObjectName(QStringLiteral("panRecord(%1)").arg(iRac));
  platform::nameControl(*panel, QStringLiteral("Scheda ") + aRaccolte(iRac).sNome);
  for (int campo = 0; campo < iNumeroCampi(iRac); ++campo) {
    auto* box = panel->findChild<QWidget*>(aCampi(iRac, campo).sControllo);
    BoundControl::of(box)->SetDataSource(&source);
  }
  return panel;
}

}  // namespace tavolix
