#pragma once

#include "core/entry_focus.h"
#include "platform/form.h"

class QCheckBox;
class QComboBox;
class QRadioButton;

namespace tavolix {

// What the user sets for the program; it counts from the next start on.
class frmConfig final : public platform::Form {
  Q_OBJECT
 public:
  frmConfig();

 private:
  QWidget* build() override;
  void loaded() override;

  QRadioButton& option(const char* name);
  QComboBox& cboRac();
  QCheckBox& chkSugg();
  void readSettings();
  void readOptions(const char* key, const char* notZero, const char* notMinusOne);
  void write(const char* key, const QString& value);
  void cmdConferma_Click();
  void cmdImpostazioniArchivi_Click();

  EntryFocus focus_;
};

void RegistraFormConfig();

}  // namespace tavolix
