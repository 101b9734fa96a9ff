#include "platform/chart_painter.h"

#include <QLinearGradient>
#include <QPalette>
#include <algorithm>
#include <cmath>

#include "platform/chart_colors.h"

namespace platform {
namespace {

constexpr double kEdgeFrom = 8;  // pixels of arc or width: narrower ones have no edge
constexpr double kEdge = 0.8;    // pixels
constexpr double kEdgeLight = 0.7;
constexpr double kMark = 2.4;
constexpr double kGap = 6;
constexpr double kShadedFrom = 5;  // pixels of rim: narrower ones are of one light

// How much light falls on a rim that looks to the side by x: -1 left, 0 front, 1 right.
double rimLight(double x) {
  const double lamp = -0.45;
  return 0.5 + 0.32 * std::cos((std::asin(std::clamp(x, -1.0, 1.0)) - lamp));
}

QPen edgeOf(const QColor& color, double size) {
  if (size < kEdgeFrom) return QPen(Qt::NoPen);
  return QPen(shaded(color, kEdgeLight), kEdge, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
}

class Drawing final {
 public:
  Drawing(QPainter& painter, const ChartScene& scene, const ChartInk& ink, const ChartState& state)
      : painter_(painter), scene_(scene), ink_(ink), state_(state) {}

  void paint() {
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    texts();
    scene_.pie() ? pie(*scene_.pie()) : bars(*scene_.bars());
    legend();
  }

 private:
  void texts() {
    painter_.setPen(ink_.text);
    painter_.setFont(titleFontOf(scene_.font()));
    painter_.drawText(scene_.layout().title, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                      scene_.data().title);
    painter_.setFont(scene_.font());
    painter_.drawText(scene_.layout().footnote, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                      scene_.footnote());
  }

  void pie(const ChartPie& pie) {
    for (const ChartPie::Wedge& wedge : pie.wedges()) rim(pie, wedge);
    const auto& wedges = pie.wedges();
    for (const ChartPie::Wedge& wedge : wedges) {
      // Each reaches below the next one, so that no ground shines through between them.
      const double below = &wedge == &wedges.back() ? 0 : 0.7 / (pie.arcOf(1) + 1);
      painter_.setPen(Qt::NoPen);
      painter_.setBrush(scene_.colorOf(wedge.first));
      painter_.drawPath(pie.face(wedge.start, std::min(1.0, wedge.span + below)));
    }
    painter_.setBrush(Qt::NoBrush);
    for (const ChartPie::Wedge& wedge : wedges) {
      painter_.setPen(edgeOf(scene_.colorOf(wedge.first), pie.arcOf(wedge.span)));
      if (painter_.pen().style() != Qt::NoPen) painter_.drawPath(pie.face(wedge.start, wedge.span));
    }
    const bool marked = state_.marked >= 0 && pie.spanOf(state_.marked) > 0;
    if (marked) mark(pie.face(pie.startOf(state_.marked), pie.spanOf(state_.marked)));
  }

  void rim(const ChartPie& pie, const ChartPie::Wedge& wedge) {
    const QPainterPath path = pie.rim(wedge.start, wedge.span);
    if (path.isEmpty()) return;
    const QColor color = scene_.colorOf(wedge.first);
    const QRectF place = path.boundingRect();
    const auto lightAt = [&](double x) { return rimLight((x - pie.center().x()) / pie.radius()); };
    painter_.setPen(edgeOf(shaded(color, kEdgeLight), pie.arcOf(wedge.span)));
    if (place.width() < kShadedFrom) {
      painter_.setBrush(shaded(color, lightAt(place.center().x())));
    } else {
      QLinearGradient light(place.topLeft(), place.topRight());
      for (int i = 0; i <= 4; ++i) {
        light.setColorAt(i / 4.0, shaded(color, lightAt(place.left() + place.width() * i / 4.0)));
      }
      painter_.setBrush(light);
    }
    painter_.drawPath(path);
  }

  void bars(const ChartBars& bars) {
    scale(bars);
    for (const ChartBars::Bar& bar : bars.bars()) {
      const QColor color = scene_.colorOf(bar.row);
      // Half a pixel of a narrow bar would be pale: whole ones are painted.
      painter_.setRenderHint(QPainter::Antialiasing, isWide(bar) || isSolid(scene_.data().type));
      for (const ChartBars::Face& face : bars.facesOf(bar)) {
        painter_.setPen(edgeOf(color, bar.right - bar.left));
        painter_.setBrush(shaded(color, face.light));
        painter_.drawPolygon(face.shape);
      }
    }
    painter_.setRenderHint(QPainter::Antialiasing);
    names(bars);
    if (state_.marked < 0) return;
    QPainterPath front;
    front.addPolygon(bars.frontOf(bars.barOf(state_.marked)));
    front.closeSubpath();
    mark(front);
  }

  static bool isWide(const ChartBars::Bar& bar) { return bar.right - bar.left >= kEdgeFrom; }

  void scale(const ChartBars& bars) {
    painter_.setPen(QPen(ink_.line, kEdge));
    for (const ChartBars::Face& wall : bars.walls()) {
      painter_.setBrush(ink_.filled ? QBrush(shaded(ink_.ground, wall.light)) : Qt::NoBrush);
      painter_.drawPolygon(wall.shape);
    }
    const ChartAxis& axis = bars.axis();
    painter_.setFont(scene_.font());
    const double height = QFontMetricsF(scene_.font()).height();
    const int steps = static_cast<int>(std::lround((axis.high - axis.low) / axis.step));
    for (int i = 0; i <= steps; ++i) {
      const double value = axis.low + i * axis.step;
      const bool isZero = std::abs(value) < axis.step / 2;
      painter_.setPen(QPen(isZero ? ink_.dim : ink_.line, kEdge));
      painter_.drawPolyline(bars.gridLine(value));
      const QPointF left = bars.project(0, value, 0);
      const QRectF place(scene_.layout().plot.left(), left.y() - height / 2,
                         left.x() - kGap - scene_.layout().plot.left(), height);
      painter_.setPen(ink_.text);
      painter_.drawText(place, Qt::AlignRight | Qt::AlignVCenter, axisText(axis, value));
    }
  }

  void names(const ChartBars& bars) {
    if (scene_.nameRoom() <= 0) return;
    painter_.setPen(ink_.text);
    const QFontMetricsF metrics(scene_.font());
    const double room = scene_.namesLie() ? bars.pitch() - kGap : scene_.nameRoom() - kGap;
    for (const ChartBars::Bar& bar : bars.bars()) {
      const QString& label = scene_.data().rows[static_cast<std::size_t>(bar.row)].label;
      painter_.save();
      painter_.translate(bars.footOf(bar) + QPointF(0, kGap));
      QRectF place(-room / 2, 0, room, metrics.height());
      if (!scene_.namesLie()) {
        painter_.rotate(-90);
        place = QRectF(-room, -metrics.height() / 2, room, metrics.height());
      }
      const auto side = scene_.namesLie() ? Qt::AlignHCenter : Qt::AlignRight;
      painter_.drawText(place, side | Qt::AlignVCenter,
                        metrics.elidedText(label, Qt::ElideRight, room));
      painter_.restore();
    }
  }

  void mark(const QPainterPath& path) {
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(ink_.mark, kMark, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.drawPath(path);
  }

  void legend() {
    const ChartLayout& layout = scene_.layout();
    const int first = state_.firstLine * layout.columns;
    const int end = std::min(scene_.rows(), first + layout.entriesInSight());
    for (int row = first; row < end; ++row) entry(row);
  }

  void entry(int row) {
    const QRectF place = legendEntry(scene_.layout(), row, state_.firstLine);
    QFont font = scene_.font();
    font.setBold(row == state_.marked);
    const QFontMetricsF metrics(font);
    const double side = std::round(metrics.ascent());
    const QColor color = scene_.colorOf(row);
    painter_.setPen(QPen(shaded(color, kEdgeLight), kEdge));
    painter_.setBrush(color);
    painter_.drawRect(QRectF(place.left(), place.center().y() - side / 2, side, side));
    const QRectF text = place.adjusted(side + kGap, 0, -kGap, 0);
    painter_.setPen(ink_.text);
    painter_.setFont(font);
    const QString& label = scene_.data().rows[static_cast<std::size_t>(row)].label;
    painter_.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                      metrics.elidedText(label, Qt::ElideRight, text.width()));
  }

  QPainter& painter_;
  const ChartScene& scene_;
  const ChartInk& ink_;
  const ChartState& state_;
};

}  // namespace

ChartInk screenInk(const QPalette& palette) {
  ChartInk ink;
  ink.text = palette.color(QPalette::Text);
  ink.mark = ink.text;
  ink.dim = palette.color(QPalette::PlaceholderText);
  ink.ground = palette.color(QPalette::Base);
  ink.groundBelow = palette.color(QPalette::AlternateBase);
  ink.line = palette.color(QPalette::Midlight);
  // Lines of the scale are no lighter than the ground they cross.
  if (std::abs(qGray(ink.line.rgb()) - qGray(ink.ground.rgb())) < 30) {
    ink.line = palette.color(QPalette::Mid);
  }
  return ink;
}

ChartInk paperInk() {
  return {Qt::black, QColor(90, 90, 90), Qt::white, Qt::white, QColor(190, 190, 190), Qt::black,
          false};
}

void paintChart(QPainter& painter, const ChartScene& scene, const ChartInk& ink,
                const ChartState& state) {
  Drawing(painter, scene, ink, state).paint();
}

}  // namespace platform
