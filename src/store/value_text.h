#pragma once

#include <QDate>
#include <QString>
#include <QVariant>
#include <optional>

namespace store {

// How stored values read, in the system's locale, and what a typed text means.

// Days are counted from 30 December 1899, which is day 0.
QDate dateOfDay(qint64 day);
qint64 dayOfDate(const QDate& date);

enum class Grouping { None, Thousands };

// Whole numbers exactly, others with the fifteen digits that a decimal number keeps: sums show no
// trace of binary fractions.
QString numberText(const QVariant& number, Grouping grouping = Grouping::None);
// The number that a text stands for as the locale writes it, else as SQL does; none for other texts
// and for what is beyond all numbers.
std::optional<double> numberIn(const QString& text);

// Seconds as h:mm:ss.
QString durationText(qint64 seconds);

}  // namespace store
