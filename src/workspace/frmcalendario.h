#pragma once

#include <QDate>
#include <optional>

#include "platform/form.h"
#include "workspace/calendario.h"

class QLabel;

namespace tavolix {

// The month view from which a date is picked. Its caller writes the date into the hidden labels
// lblGG, lblMM and lblAA, shows it modally, and reads them again; "BLOCCO" in lblBlock holds the
// month.
class frmCalendario final : public platform::Form {
  Q_OBJECT
 public:
  frmCalendario();

  // Takes the day that stands in a cell, if it is not empty.
  void cmdGiorno_Click(int iCella);
  void cmdOK_Click();

  // Shows a date under a control and waits. The one that was picked; nothing if it was given up.
  std::optional<QDate> Scegli(const QDate& data, const QWidget& sotto);

 private:
  QWidget* build() override;
  void loaded() override;
  void unloaded() override;
  void activated() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  void connectControls();
  void cboClick();
  bool isLocked();
  void keepOnScreen();
  void show(const Giorno& giorno);
  void fillCells();
  void markDay();
  QLabel& cell(int iCella);
  int number(const char* label);
  void write(const char* label, int number);

  Giorno giorno_;
  bool bOccupato_ = false;  // the lists are being set from here
  int iCellaSegnata_ = 0;
  bool bConfermato_ = false;
  bool bIncorniciata_ = false;  // the desktop has put its frame around the window
};

void RegistraFormCalendario();

}  // namespace tavolix
