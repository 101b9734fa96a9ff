#pragma once

#include <QCheckBox>

#include "platform/bound_control.h"

namespace platform {

// A yes/no value: -1 or 0. Nothing stored shows as no.
class CheckBox final : public QCheckBox, public BoundControl {
  Q_OBJECT
 public:
  explicit CheckBox(QWidget* parent = nullptr);

  QWidget* widget() override { return this; }
  QVariant Value() const override { return isChecked() ? qlonglong{-1} : qlonglong{0}; }
  QString Text() const override;

 protected:
  void setContent(const QVariant& value) override { setChecked(value.toDouble() != 0); }
  void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace platform
