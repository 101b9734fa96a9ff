#pragma once

#include "platform/form.h"
#include "workspace/calendario.h"

class QLabel;

namespace tavolix {

// The month view from which a date is picked. Its caller writes the date into the hidden labels
// lblGG, lblMM and lblAA, shows it modally, and reads them again; "BLOCCO" in lblBlock holds the
// month.
class frmCalendario final : public platform::Form {
  Q_OBJECT
  // True if the date was picked, false if it was given up.
  Q_PROPERTY(bool Confermato MEMBER bConfermato_)
 public:
  frmCalendario();

  // Takes the day that stands in a cell, if it is not empty.
  void cmdGiorno_Click(int iCella);
  void cmdOK_Click();

 private:
  QWidget* build() override;
  void loaded() override;
  void unloaded() override;
  void activated() override;
  bool queryUnload() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  void connectControls();
  void cboClick();
  bool isLocked();
  void keepOnScreen();
  bool moveByKey(int key);
  void show(const Giorno& giorno);
  void fillCells();
  void markDay();
  QLabel& cell(int iCella);
  int number(const char* label);

  Giorno giorno_;
  bool bOccupato_ = false;  // the lists are being set from here
  int iCellaSegnata_ = 0;
  bool bConfermato_ = false;
  bool bIncorniciata_ = false;  // the desktop has put its frame around the window
};

void RegistraFormCalendario();

}  // namespace tavolix
