#include "platform/number_format.h"

#include <QLocale>
#include <cmath>

namespace platform {

QString formatNumber(double value, const QString& format) {
  const bool isShare = format.endsWith(u'%');
  const qsizetype point = format.indexOf(u'.');
  const int decimals =
      point < 0 ? 0 : static_cast<int>(format.count(u'0') - format.left(point).count(u'0'));
  const double unit = std::pow(10, decimals);
  // 0.125 as a share is 12.5 %, whatever its last bit says.
  const double whole = value * (isShare ? 100 : 1) * unit;
  double rounded = std::round(whole + std::copysign(std::abs(whole) * 1e-14, whole)) / unit;
  if (rounded == 0) rounded = 0;  // not "-0"
  QLocale locale;
  if (!format.contains(u',')) locale.setNumberOptions(QLocale::OmitGroupSeparator);
  return locale.toString(rounded, 'f', decimals) + (isShare ? QStringLiteral("%") : QString());
}

}  // namespace platform
