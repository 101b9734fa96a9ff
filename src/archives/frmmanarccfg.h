#pragma once

#include "core/entry_focus.h"
#include "platform/form.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;

namespace tavolix {

// Which archive is opened at the start, and where archives and copies lie. Settings file and
// section are those of the caller.
class frmManArcCfg final : public platform::Form {
  Q_OBJECT
 public:
  frmManArcCfg();

  void CaricaArchivi();

 private:
  QWidget* build() override;
  void loaded() override;

  QRadioButton& option(const char* name);
  QLineEdit& box(const char* name);
  QComboBox& cboArc();
  void readSettings();
  void followOption();
  void chkModPos_Click();
  void cmdDirArc_Click();
  void cmdDirCopie_Click();
  void cmdConferma_Click();

  EntryFocus focus_;
};

void RegistraFormManArcCfg();

}  // namespace tavolix
