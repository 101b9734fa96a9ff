#include "platform/drop_down_style.h"

#include <QApplication>
#include <QPointer>
#include <QProxyStyle>

namespace platform {
namespace {

class DropDownStyle final : public QProxyStyle {
 public:
  DropDownStyle() : QProxyStyle("Fusion") {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    if (hint == SH_ComboBox_Popup) return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
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
