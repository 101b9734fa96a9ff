#pragma once

#include "platform/form.h"

namespace tavolix {

// The list of the current collection, and the tabs that change it.
class frmGrid final : public platform::Form {
  Q_OBJECT
 public:
  frmGrid();

  // Says in place of the rows what is to be done where there are none.
  void MostraConsiglio(bool bFiltrato);
  void NascondiConsiglio();

 private:
  void loadOwner() override;
  QWidget* build() override;
  void loaded() override;
  void resized() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;
  bool wantsShortcut(int key, Qt::KeyboardModifiers modifiers) override;
  void placeControls();
  void connectControls();
  void tabSelez_Click();
  void returnToTab();
  void grd_HeadClick(int iColonna);
  void grd_Menu(int iColonna, bool bCella, const QPoint& dove);
};

void RegistraFormGrid();

}  // namespace tavolix
