#pragma once

#include <QString>

namespace platform {

// A number in a format like "#,##0", "##0.0%" or "0.00", with the signs of the user's country: the
// zeros behind the point are its decimals, a comma parts thousands, "%" tells hundredths. Halves
// are rounded away from 0.
QString formatNumber(double value, const QString& format);

}  // namespace platform
