#pragma once

#include "platform/line_box.h"

namespace platform {

// A line of text of a fixed length, or a whole number of a fixed count of digits. Underscores show
// how much still goes in.
class MaskedBox final : public LineBox {
  Q_OBJECT
 public:
  using LineBox::LineBox;

  // Any text of up to `length` characters.
  void SetMaxText(int length);
  // A whole number; one '9', '0' or '#' a digit. The value is a number.
  void SetMask(const QString& mask);
  // With a comma ("#,##0") a number shows its thousands apart while it has not the focus.
  void SetFormat(const QString& format);
  bool IsNumber() const { return number_; }

 protected:
  QVariant parsed(const QString& text) const override;
  QString shown(const QVariant& value) const override;
  bool takes(QChar letter) const override;
  void clean(QString& text, int& cursor) const override;
  QString complaint() const override { return QStringLiteral("Numero non valido"); }
  void paintEvent(QPaintEvent* event) override;

 private:
  void overtype(QString& text, int cursor) const;

  int places_ = 0;
  bool number_ = false;
  bool grouped_ = false;
};

}  // namespace platform
