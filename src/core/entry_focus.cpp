#include "core/entry_focus.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QToolButton>

#include "core/modcuore.h"
#include "core/modutil.h"
#include "platform/check_box.h"
#include "platform/masked_box.h"
#include "platform/memo_box.h"

namespace tavolix {
namespace {

bool isLoneModifier(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
         key == Qt::Key_AltGr || key == Qt::Key_Meta || key == Qt::Key_CapsLock;
}

bool movesFocus(int key) {
  return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

bool isInPopup(const QWidget* widget) {
  return (widget->window()->windowFlags() & Qt::WindowType_Mask) == Qt::Popup;
}

// The control whose list or menu a widget is part of; the widget itself if it is in none.
const QWidget* ownerOf(const QWidget* widget) {
  while (widget != nullptr && isInPopup(widget)) widget = widget->window()->parentWidget();
  return widget;
}

// A list, or the cell of one that is being typed into.
bool isInList(const QWidget* widget) {
  while (widget != nullptr && qobject_cast<const QAbstractItemView*>(widget) == nullptr) {
    widget = widget->parentWidget();
  }
  return widget != nullptr;
}

}  // namespace

void EntryFocus::watch(QWidget* window) {
  window_ = window;
  bInNote_ = false;
  QObject::connect(qApp, &QApplication::focusChanged, this, &EntryFocus::focusMoved,
                   Qt::UniqueConnection);
}

bool EntryFocus::keyDown(int key) const {
  if (isInList(QApplication::focusWidget())) return false;
  bool used = false;
  if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !bInNote_) {
    // On the small button of a list or a date it presses that.
    if (auto* button = qobject_cast<QToolButton*>(QApplication::focusWidget())) {
      button->click();
    } else {
      CampoSuccessivo();
    }
    used = true;
  }
  openList(key);
  return used;
}

void EntryFocus::openList(int key) {
  if (!isLoneModifier(key) && !movesFocus(key)) ApriComboAttivo();
}

bool EntryFocus::holds(const QWidget* widget) const {
  return window_ != nullptr && (widget == window_ || window_->isAncestorOf(widget));
}

void EntryFocus::focusMoved(QWidget* from, QWidget* to) {
  // While a combo's list is open its box stays marked.
  if (to != nullptr && isInPopup(to)) return;
  if (from != nullptr && holds(ownerOf(from))) {
    EvidenziaFocus(false);
    bInNote_ = false;
  }
  if (to != nullptr && holds(to)) gotFocus(to);
}

void EntryFocus::gotFocus(QWidget* control) {
  const bool list = qobject_cast<QComboBox*>(control) != nullptr;
  if (platform::BoundControl::of(control) == nullptr && !list) return;
  if (qobject_cast<platform::CheckBox*>(control) != nullptr) return;
  EvidenziaFocus(true);
  auto* digits = qobject_cast<platform::MaskedBox*>(control);
  if (digits != nullptr && digits->IsNumber()) digits->SetSelStart(0);
  bInNote_ = qobject_cast<platform::MemoBox*>(control) != nullptr;
}

}  // namespace tavolix
