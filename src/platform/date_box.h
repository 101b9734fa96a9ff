#pragma once

#include <QDate>

#include "platform/line_box.h"

namespace platform {

// A date, day first. Digits fill the places of "__-__-____"; "-", "/" and "." go on to the next
// part. As the focus leaves, years of one or two digits get their century: up to 29 the 2000s,
// from 30 the 1900s. Values are day numbers, day 0 being 30 December 1899; years 100 to 9999.
class DateBox final : public LineBox {
  Q_OBJECT
 public:
  explicit DateBox(QWidget* parent = nullptr);

  // What was typed, empty for nothing.
  QString Text() const override;
  // Invalid if there is none, or if what was typed is no date.
  QDate Date() const;
  // Replaces what is there by digits in the order of the places, as if typed.
  void SetRawData(const QString& digits);

 protected:
  QVariant parsed(const QString& text) const override;
  QString shown(const QVariant& value) const override;
  bool takes(QChar letter) const override;
  void clean(QString& text, int& cursor) const override;
  QString complaint() const override { return QStringLiteral("Data non valida"); }
  void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace platform
