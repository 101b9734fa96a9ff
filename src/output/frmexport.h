#pragma once

#include "core/entry_focus.h"
#include "output/export_line.h"
#include "platform/form.h"

namespace tavolix {

// Writes the current collection to a text file with separators. Made for each use.
class frmExport final : public platform::Form {
  Q_OBJECT
 public:
  frmExport();

 private:
  QWidget* build() override;
  void loaded() override;

  text_export::Format format();
  void cmdEsporta_Click();
  // False if the user broke it off.
  bool write(const QString& path);

  EntryFocus focus_;
};

void RegistraFormExport();

}  // namespace tavolix
