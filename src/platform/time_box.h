#pragma once

#include "platform/line_box.h"

namespace platform {

// A length of time in hours, minutes and seconds; the value is its seconds. Digits alone fill up
// from the right ("345" is 0:03:45); with colons each part counts as it is written, and parts
// missing on the left are 0.
class TimeBox final : public LineBox {
  Q_OBJECT
 public:
  explicit TimeBox(QWidget* parent = nullptr);

 protected:
  QVariant parsed(const QString& text) const override;
  QString shown(const QVariant& value) const override;
  bool takes(QChar letter) const override;
  void clean(QString& text, int& cursor) const override;
  QString complaint() const override { return QStringLiteral("Durata non valida"); }
};

}  // namespace platform
