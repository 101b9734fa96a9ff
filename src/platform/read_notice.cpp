#include "platform/read_notice.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "platform/push_button.h"

namespace platform {

// Beside the list: screen readers find nothing but cells in it.
ReadNotice::ReadNotice(QWidget& list)
    : QFrame(list.parentWidget()), list_(list), text_(new QLabel(this)) {
  setObjectName(QStringLiteral("avvisoLettura"));
  setFrameShape(StyledPanel);
  setAutoFillBackground(true);
  text_->setObjectName(QStringLiteral("lblLettura"));
  text_->setWordWrap(true);
  auto* row = new QHBoxLayout(this);
  row->addWidget(text_, 1);
  const std::pair<ButtonSpec, void (ReadNotice::*)()> buttons[] = {
      {{"cmdRiprova", "Riprova"}, &ReadNotice::retryAsked},
      {{"cmdLascia", "Esci"}, &ReadNotice::leaveAsked},
  };
  for (const auto& [spec, asked] : buttons) {
    QPushButton* button = newButton(spec, this);
    connect(button, &QPushButton::clicked, this, asked);
    row->addWidget(button);
  }
  list.installEventFilter(this);
  hide();
}

void ReadNotice::Tell(const QString& text) {
  text_->setText(text);
  place();
  show();
  raise();
}

bool ReadNotice::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize && isVisible()) place();
  return false;
}

void ReadNotice::place() {
  const QRect room = list_.geometry();
  const int height = std::max(sizeHint().height(), heightForWidth(room.width()));
  setGeometry(room.left(), room.bottom() + 1 - height, room.width(), height);
}

}  // namespace platform
