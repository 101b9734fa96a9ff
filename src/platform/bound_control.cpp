#include "platform/bound_control.h"

#include <QFocusEvent>
#include <QWidget>

#include "platform/data_control.h"

namespace platform {

BoundControl::~BoundControl() {
  if (source_ != nullptr) source_->unbind(this);
}

BoundControl* BoundControl::of(QWidget* widget) {
  return dynamic_cast<BoundControl*>(widget);
}

void BoundControl::SetValue(const QVariant& value) {
  setContent(value);
  contentEdited();
}

void BoundControl::contentEdited() {
  changed_ = true;
  if (source_ != nullptr) source_->edited();
}

QVariant BoundControl::ValidValue() const {
  return IsValid() || source_ == nullptr ? Value() : source_->storedValue(*this);
}

void BoundControl::ShowValue(const QVariant& value) {
  setContent(value);
  changed_ = false;
}

void BoundControl::SetDataField(const QString& field) {
  field_ = field;
  if (source_ != nullptr) source_->bind(this);
}

void BoundControl::SetDataSource(DataControl* source) {
  if (source_ != nullptr) source_->unbind(this);
  source_ = source;
  if (source_ != nullptr) source_->bind(this);
}

void BoundControl::focusLeft(const QFocusEvent& event) {
  if (event.reason() != Qt::PopupFocusReason) contentLeft();
}

void BoundControl::contentLeft() {
  if (changed_ && source_ != nullptr) source_->writePending();
}

}  // namespace platform
