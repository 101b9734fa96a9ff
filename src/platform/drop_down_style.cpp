#include "platform/drop_down_style.h"

#include <QApplication>
#include <QComboBox>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleOption>

namespace platform {
namespace {

constexpr int kFrame = 2;  // pixels of outline and mark of the focus

// What a box has from its parent it has not been given.
bool hasOwnBase(const QWidget* widget) {
  const QWidget* parent = widget->parentWidget();
  return qobject_cast<const QComboBox*>(widget) != nullptr && parent != nullptr &&
         widget->palette().color(QPalette::Active, QPalette::Base) !=
             parent->palette().color(QPalette::Active, QPalette::Base);
}

class DropDownStyle final : public QProxyStyle {
 public:
  DropDownStyle() : QProxyStyle("Fusion") {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    if (hint == SH_ComboBox_Popup) return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element != PE_PanelButtonCommand || widget == nullptr || !hasOwnBase(widget)) return;
    painter->fillRect(option->rect.adjusted(kFrame, kFrame, -kFrame, -kFrame),
                      option->palette.base());
  }
};

}  // namespace

QStyle* dropDownStyle() {
  static QPointer<QStyle> style;
  if (style.isNull()) {
    style = new DropDownStyle;
    style->setParent(QApplication::instance());
  }
  return style;
}

}  // namespace platform
