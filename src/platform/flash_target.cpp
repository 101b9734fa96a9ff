#include "platform/flash_target.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVariant>
#include <array>

namespace platform {
namespace {

constexpr const char* kFilledByUs = "platform_filled";

struct Roles {
  QPalette::ColorRole text;
  QPalette::ColorRole background;
};

bool isEntry(const QWidget* widget) {
  const auto* combo = qobject_cast<const QComboBox*>(widget);
  return qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(widget) != nullptr ||
         qobject_cast<const QAbstractScrollArea*>(widget) != nullptr ||
         (combo != nullptr && combo->isEditable());
}

bool isButton(const QWidget* widget) {
  return qobject_cast<const QPushButton*>(widget) != nullptr ||
         qobject_cast<const QToolButton*>(widget) != nullptr;
}

// Where the style takes a control's colours from.
Roles rolesOf(const QWidget* widget) {
  if (isEntry(widget)) return {QPalette::Text, QPalette::Base};
  // The button of a list would shade the colour: its style lays the base over it.
  if (qobject_cast<const QComboBox*>(widget) != nullptr) {
    return {QPalette::ButtonText, QPalette::Base};
  }
  if (isButton(widget)) return {QPalette::ButtonText, QPalette::Button};
  return {QPalette::WindowText, QPalette::Window};
}

void setColor(QWidget* widget, QPalette::ColorRole role, BgrColor color) {
  QPalette palette = widget->palette();
  palette.setColor(role, fromBgr(color));
  widget->setPalette(palette);
}

}  // namespace

QColor fromBgr(BgrColor color) {
  return QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                static_cast<int>(color >> 16 & 0xFF));
}

BgrColor toBgr(const QColor& color) {
  const QRgb rgb = color.rgb();
  return static_cast<BgrColor>(qRed(rgb) | qGreen(rgb) << 8 | qBlue(rgb) << 16);
}

BgrColor qbColor(int code) {
  static constexpr std::array<BgrColor, 16> kColors = {
      0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
      0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
  return code >= 0 && code < 16 ? kColors[static_cast<size_t>(code)] : 0;
}

BgrColor FlashTarget::ForeColor(const QWidget* widget) {
  return toBgr(widget->palette().color(rolesOf(widget).text));
}

void FlashTarget::SetForeColor(QWidget* widget, BgrColor color) {
  setColor(widget, rolesOf(widget).text, color);
}

BgrColor FlashTarget::BackColor(const QWidget* widget) {
  return toBgr(widget->palette().color(rolesOf(widget).background));
}

void FlashTarget::SetBackColor(QWidget* widget, BgrColor color) {
  SetColors(widget, ForeColor(widget), color);
}

void FlashTarget::SetColors(QWidget* widget, BgrColor text, BgrColor background) {
  const Roles roles = rolesOf(widget);
  QPalette palette = widget->palette();
  palette.setColor(roles.text, fromBgr(text));
  palette.setColor(roles.background, fromBgr(background));
  widget->setPalette(palette);
  // A label or a panel lets its parent show through until it is told to fill itself.
  if (roles.background == QPalette::Window && !widget->autoFillBackground()) {
    widget->setAutoFillBackground(true);
    widget->setProperty(kFilledByUs, true);
  }
}

void FlashTarget::ResetColors(QWidget* widget) {
  widget->setPalette(QPalette());
  if (!widget->property(kFilledByUs).toBool()) return;
  widget->setAutoFillBackground(false);
  widget->setProperty(kFilledByUs, {});
}

}  // namespace platform
