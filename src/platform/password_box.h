#pragma once

#include <QLineEdit>

namespace platform {

// A line of text that shows "*" for each letter. It gives nothing to the clipboard.
class PasswordBox final : public QLineEdit {
  Q_OBJECT
 public:
  explicit PasswordBox(QWidget* parent = nullptr);
};

}  // namespace platform
