#include "platform/push_button.h"

#include <QHelpEvent>
#include <QPushButton>
#include <QToolTip>

#include "platform/icons.h"
#include "platform/screen_reader.h"

namespace platform {

namespace {

class TipKeys final : public QObject {
 public:
  TipKeys(QWidget& control, const QString& keys) : QObject(&control), keys_(keys) {
    control.installEventFilter(this);
  }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return false;
    auto* control = static_cast<QWidget*>(watched);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       control->toolTip() + QStringLiteral(" (") + keys_ + u')', control);
    return true;
  }

  QString keys_;
};

}  // namespace

void setCaption(QAbstractButton& button, const QString& caption) {
  button.setText(caption);
  nameControl(button, QString(caption).remove(u'&').trimmed());
}

void showKeysInTip(QWidget& control, const QString& keys) {
  new TipKeys(control, keys);
}

QPushButton* newButton(const ButtonSpec& spec, QWidget* parent) {
  auto* button = new QPushButton(parent);
  button->setObjectName(QString::fromLatin1(spec.name));
  button->setToolTip(QString::fromUtf8(spec.tip));
  if (*spec.icon != '\0') button->setIcon(icon(QString::fromLatin1(spec.icon)));
  setCaption(*button, QString::fromUtf8(spec.caption));
  if (*spec.caption == '\0') nameControl(*button, QString::fromUtf8(spec.tip));
  if (*spec.keys != '\0') showKeysInTip(*button, QString::fromUtf8(spec.keys));
  // Enter leads from field to field, and presses no button on its way.
  button->setAutoDefault(false);
  return button;
}

}  // namespace platform
