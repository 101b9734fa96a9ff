#include "platform/picture.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace platform {

class Picture::Drawing final {
 public:
  explicit Drawing(const QByteArray& svg) : renderer(svg) {}
  QSvgRenderer renderer;
};

Picture::Picture(const QString& file, const Colors& colors, QWidget* parent) : QWidget(parent) {
  QFile source(file);
  source.open(QIODevice::ReadOnly);
  QByteArray svg = source.readAll();
  for (const auto& [from, to] : colors) svg.replace(from, to);
  drawing_ = std::make_unique<Drawing>(svg);
  setFixedSize(sizeHint());
  setAttribute(Qt::WA_OpaquePaintEvent);
}

Picture::~Picture() = default;

QSize Picture::sizeHint() const {
  return drawing_->renderer.defaultSize();
}

void Picture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawing_->renderer.render(&painter, rect());
}

void Picture::mousePressEvent(QMouseEvent*) {
  Q_EMIT pressed();
}

void Picture::keyPressEvent(QKeyEvent*) {
  Q_EMIT pressed();
}

}  // namespace platform
