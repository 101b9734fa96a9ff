#pragma once

#include <QColor>

namespace platform {

// The colour of a row of a chart (from 0). Neighbours, the last and the first as well, are told
// apart by eyes that lack one of the three kinds of cones; on light and on dark ground.
QColor chartColor(int row, int rows);
// What stands for several rows that are too thin to be told apart; neighbours differ.
QColor gatheredColor(int place);
// A face that gets less light: 1 is the colour itself.
QColor shaded(const QColor& color, double light);

}  // namespace platform
