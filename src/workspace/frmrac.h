#pragma once

#include "core/entry_focus.h"
#include "platform/form.h"

namespace tavolix {

// The form of a collection: one record, bound to the row that is current in the list.
class frmRac final : public platform::Form {
  Q_OBJECT
 public:
  explicit frmRac(int iRac);

 private:
  void loadOwner() override;
  QWidget* build() override;
  void loaded() override;
  void unloaded() override;
  void resized() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;
  bool wantsShortcut(int key, Qt::KeyboardModifiers modifiers) override;

  int iRac_;
  EntryFocus focus_;
};

// Width in twips of a collection's form, the same for all: as the font needs it and the screen
// allows.
int iLarghezzaScheda();

// Adds the eight forms to the program's forms.
void RegistraFormRaccolte();

}  // namespace tavolix
