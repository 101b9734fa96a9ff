#include "platform/icons.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <algorithm>

#include "platform/theme.h"

namespace platform {
namespace {

// Colours in the drawings that stand for the theme's text colour and accent.
constexpr const char* kTextColor = "#1e2329";
constexpr const char* kAccentColor = "#2f6db3";
constexpr double kDisabledOpacity = 0.45;
// Stand out on white as on black.
constexpr QRgb kTitleBarText = 0xFF7D8794;
constexpr QRgb kTitleBarAccent = 0xFF4A86C5;

QString fileOf(const QString& name) {
  return ":/icons/" + name + ".svg";
}

struct Ink {
  QColor text;
  QColor accent;
};

enum class Ground { Theme, TitleBar };

Ink inkOf(QIcon::Mode mode, Ground ground) {
  if (ground == Ground::TitleBar) return {QColor(kTitleBarText), QColor(kTitleBarAccent)};
  const QPalette palette = QGuiApplication::palette();
  if (mode == QIcon::Selected) {
    const QColor color = palette.color(QPalette::HighlightedText);
    return {color, color};
  }
  return {palette.color(QPalette::WindowText), accentColor()};
}

// In shades of grey, half transparent.
QImage faded(const QImage& image) {
  QImage result = image.convertToFormat(QImage::Format_ARGB32);
  for (int row = 0; row < result.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(result.scanLine(row));
    std::for_each(line, line + result.width(), [](QRgb& pixel) {
      const int gray = qGray(pixel);
      pixel = qRgba(gray, gray, gray, qRound(qAlpha(pixel) * kDisabledOpacity));
    });
  }
  return result;
}

QImage draw(const QByteArray& drawing, const QSize& size, const Ink& ink) {
  QByteArray svg = drawing;
  svg.replace(kTextColor, ink.text.name().toLatin1());
  svg.replace(kAccentColor, ink.accent.name().toLatin1());
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  const int side = qMin(size.width(), size.height());
  const QRectF square((size.width() - side) / 2.0, (size.height() - side) / 2.0, side, side);
  QSvgRenderer(svg).render(&painter, square);
  return image;
}

// Draws at the size asked for, in device pixels, with the colours of the moment.
class DrawingEngine final : public QIconEngine {
 public:
  DrawingEngine(QString name, QByteArray drawing, Ground ground)
      : name_(std::move(name)), drawing_(std::move(drawing)), ground_(ground) {}

  QIconEngine* clone() const override { return new DrawingEngine(name_, drawing_, ground_); }
  QString iconName() override { return name_; }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double ratio = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, pixmap(rect.size() * ratio, mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
    const Ink ink = inkOf(mode, ground_);
    const QString key = QString("icon %1 %2x%3 %4 %5 %6")
                            .arg(name_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(static_cast<int>(mode))
                            .arg(ink.text.name(), ink.accent.name());
    QPixmap result;
    if (QPixmapCache::find(key, &result) || size.isEmpty()) return result;
    const QImage image = draw(drawing_, size, ink);
    result = QPixmap::fromImage(mode == QIcon::Disabled ? faded(image) : image);
    QPixmapCache::insert(key, result);
    return result;
  }

 private:
  QString name_;
  QByteArray drawing_;
  Ground ground_;
};

QIcon drawn(const QString& name, Ground ground) {
  QFile file(fileOf(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QIcon(new DrawingEngine(name, file.readAll(), ground));
}

}  // namespace

QIcon icon(const QString& name) {
  return drawn(name, Ground::Theme);
}

QIcon windowIcon(const QString& name) {
  return drawn(name, Ground::TitleBar);
}

QStringList iconNames() {
  QStringList names = QDir(":/icons").entryList({"*.svg"}, QDir::Files, QDir::Name);
  for (QString& name : names) name.chop(4);
  return names;
}

}  // namespace platform
