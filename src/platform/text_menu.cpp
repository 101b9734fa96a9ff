#include "platform/text_menu.h"

#include <QMenu>

namespace platform {

void showTextMenu(QWidget& box, const QPoint& place, const std::vector<TextCommand>& commands) {
  auto* menu = new QMenu(&box);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const TextCommand& command : commands) {
    if (command.caption == nullptr) {
      menu->addSeparator();
      continue;
    }
    const QString key = QKeySequence(command.key).toString(QKeySequence::NativeText);
    QAction* line = menu->addAction(QString::fromUtf8(command.caption) + u'\t' + key);
    line->setEnabled(command.enabled);
    QObject::connect(line, &QAction::triggered, &box, command.act);
  }
  menu->popup(place);
}

}  // namespace platform
