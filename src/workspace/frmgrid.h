#pragma once

#include "platform/form.h"

namespace tavolix {

// The list of the current collection, and the tabs that change it.
class frmGrid final : public platform::Form {
  Q_OBJECT
 public:
  frmGrid();

  // What is to be done where the list has no rows; empty where it has.
  void MostraConsiglio(const QString& sTesto);

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
