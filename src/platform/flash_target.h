#pragma once

#include <QColor>

class QWidget;

namespace platform {

// A colour as a 32-bit number 0x00BBGGRR.
using BgrColor = quint32;
QColor fromBgr(BgrColor color);
BgrColor toBgr(const QColor& color);
// Colours 0 to 15 of the old text screens: 0 black, 1 blue, 2 green, 4 red, 7 white, 12 bright
// red, 15 bright white. Any other code is black.
BgrColor qbColor(int code);

// The colours of one control: text and background, whatever part of the palette the control
// takes them from.
class FlashTarget final {
 public:
  static BgrColor ForeColor(const QWidget* widget);
  static void SetForeColor(QWidget* widget, BgrColor color);
  static BgrColor BackColor(const QWidget* widget);
  static void SetBackColor(QWidget* widget, BgrColor color);
  // Both at once: a control repaints itself for each change of its colours.
  static void SetColors(QWidget* widget, BgrColor text, BgrColor background);
  // Gives both colours back to the theme.
  static void ResetColors(QWidget* widget);
};

}  // namespace platform
