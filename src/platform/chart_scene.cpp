#include "platform/chart_scene.h"

#include <QFontMetricsF>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "platform/chart_colors.h"
#include "platform/number_format.h"

namespace platform {
namespace {

constexpr double kFlat = 90;            // elevation of a pie seen from above
constexpr double kLeastOnScreen = 0.8;  // pixels that show
constexpr double kLeastOnPaper = 0.25;
constexpr double kGap = 6;
constexpr double kStepHeight = 44;   // pixels between two lines of the scale, about
constexpr double kNameWidth = 64;    // from which a name below a bar is written in its line
constexpr double kNameShare = 0.24;  // of the plot's height: the most for names that stand
const QString kWhole = QStringLiteral("#,##0");

QString counted(int count, const char* one, const char* many) {
  return count == 1 ? QString::fromUtf8(one)
                    : QString::fromUtf8(many).arg(formatNumber(count, kWhole));
}

}  // namespace

ChartScene::ChartScene(ChartData data, const QSizeF& size, const QFont& font, ChartMedium medium)
    : data_(std::move(data)),
      font_(font),
      medium_(medium),
      layout_(layOutChart(data_, size, font)),
      shares_(sharesOf(data_.rows)) {
  if (isPie(data_.type)) {
    const double least = medium == ChartMedium::Paper ? kLeastOnPaper : kLeastOnScreen;
    const QRectF room = layout_.plot.adjusted(kGap, kGap, -kGap, -kGap);
    pie_.emplace(shares_, room, isSolid(data_.type) ? data_.elevation : kFlat, least);
  } else {
    makeBars();
  }
}

void ChartScene::makeBars() {
  const QFontMetricsF metrics(font_);
  const double least = medium_ == ChartMedium::Paper ? kLeastOnPaper : kLeastOnScreen;
  QRectF room = layout_.plot;
  const ChartAxis axis =
      axisFor(data_.rows, std::max(1, static_cast<int>(room.height() / kStepHeight)));
  const double widest = std::max(metrics.horizontalAdvance(axisText(axis, axis.low)),
                                 metrics.horizontalAdvance(axisText(axis, axis.high)));
  room.adjust(widest + 2 * kGap, metrics.height() / 2, 0, -metrics.height() / 2);
  const double pitch = room.width() / std::max(1, rows());
  namesLie_ = pitch >= kNameWidth;
  if (namesLie_) nameRoom_ = metrics.height() + kGap;
  if (!namesLie_ && pitch >= metrics.height() * 1.05) {
    double longest = 0;
    for (const ChartRow& row : data_.rows) {
      longest = std::max(longest, metrics.horizontalAdvance(row.label));
    }
    nameRoom_ = std::min(longest + 1, room.height() * kNameShare) + kGap;
  }
  room.adjust(0, 0, 0, -nameRoom_);
  const bool solid = isSolid(data_.type);
  const ChartView view = solid ? ChartView{data_.elevation, data_.rotation} : ChartView{};
  bars_.emplace(data_.rows, axis, room, view, least);
  for (const ChartRow& row : data_.rows) {
    low_ += row.value != 0 && bars_->heightOf(row.value) < least ? 1 : 0;
  }
}

QString axisText(const ChartAxis& axis, double value) {
  int decimals = 0;
  for (double step = axis.step; decimals < 6 && step < 1 - 1e-9; step *= 10) ++decimals;
  const QString format = decimals == 0 ? kWhole : kWhole + u'.' + QString(decimals, u'0');
  return formatNumber(value, format);
}

ChartPart ChartScene::partAt(const QPointF& point) const {
  if (layout_.title.contains(point)) return ChartPart::Title;
  if (layout_.legend.contains(point)) return ChartPart::Legend;
  if (layout_.footnote.contains(point)) return ChartPart::Footnote;
  if (rowAt(point) >= 0) return ChartPart::Point;
  return layout_.plot.contains(point) ? ChartPart::Plot : ChartPart::None;
}

int ChartScene::rowAt(const QPointF& point) const {
  return pie_ ? pie_->rowAt(point) : bars_->rowAt(point);
}

QColor ChartScene::colorOf(int row) const {
  if (pie_) {
    const auto& wedges = pie_->wedges();
    const auto behind = std::upper_bound(wedges.begin(), wedges.end(), row,
                                         [](int i, const auto& wedge) { return i < wedge.first; });
    if (behind != wedges.begin()) {
      const auto wedge = behind - 1;
      const auto place = static_cast<int>(wedge - wedges.begin());
      if (wedge->isGathered() && row <= wedge->last) return gatheredColor(place);
    }
  }
  return chartColor(row, rows());
}

QStringList ChartScene::pieOmissions() const {
  QStringList texts;
  const int gathered = pie_->gatheredRows();
  if (gathered > 0) {
    texts << counted(gathered, "", "%1 valori troppo piccoli, riuniti in grigio");
  }
  const auto below = std::count_if(shares_.begin(), shares_.end(), [](double s) { return s < 0; });
  if (below > 0) {
    texts << counted(static_cast<int>(below), "un valore negativo non compare nella torta",
                     "%1 valori negativi non compaiono nella torta");
  }
  return texts;
}

QStringList ChartScene::barOmissions() const {
  QStringList texts;
  if (bars_->rowsPerBar() > 1) {
    texts << counted(bars_->rowsPerBar(), "", "ogni barra è la maggiore di %1");
  }
  if (low_ > 0) {
    texts << counted(low_, "una barra troppo bassa per vedersi",
                     "%1 barre troppo basse per vedersi");
  }
  return texts;
}

QStringList ChartScene::omissions() const {
  QStringList texts = pie_ ? pieOmissions() : barOmissions();
  const bool below = std::any_of(shares_.begin(), shares_.end(), [](double s) { return s < 0; });
  if (below) texts << QStringLiteral("percentuali sulla somma dei valori positivi");
  const int listed = layout_.entriesInSight();
  if (medium_ != ChartMedium::Screen && listed < rows()) {
    texts << QStringLiteral("legenda: le prime %1 voci di %2")
                 .arg(formatNumber(listed, kWhole), formatNumber(rows(), kWhole));
  }
  return texts;
}

QString ChartScene::footnote() const {
  const QStringList texts = omissions();
  if (texts.isEmpty()) return data_.footnote;
  return data_.footnote + u'\n' + texts.join(QStringLiteral("; "));
}

}  // namespace platform
