#pragma once

#include "platform/form.h"

namespace tavolix {

// Asks for an access code. There is no giving up: an empty entry is a wrong one.
class frmAskPassword final : public platform::Form {
  Q_OBJECT
 public:
  frmAskPassword();

  // Asks with an empty box, under the window's own title unless another is given; the entry in
  // capital letters, without blanks around it.
  QString sChiediCodice(const QString& sRichiesta, const QString& sTitolo = {});

 private:
  QWidget* build() override;
  void loaded() override;
  void activated() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;
};

// The one window for codes.
frmAskPassword& FrmAskPassword();
void RegistraFormAskPassword();

}  // namespace tavolix
