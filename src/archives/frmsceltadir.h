#pragma once

#include <QStringList>

#include "platform/form.h"

class QComboBox;
class QListWidget;

namespace tavolix {

// Lets the user pick a folder.
class frmSceltaDir final : public platform::Form {
  Q_OBJECT
 public:
  frmSceltaDir();

  // Begins on a folder, which is the answer if the user gives up.
  void Path(const QString& sDir);
  // The folder that is open, with a separator at its end.
  QString lblDir();

 private:
  QWidget* build() override;
  void loaded() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  QComboBox& cboDrive();
  QListWidget& lstDir();
  void openFolder(const QString& folder);
  void enterSelected();
  void goUp();
  void cmdAnnulla_Click();

  QString sDir_;    // the one that was given
  QString opened_;  // a path of the system
  QStringList radici_;
};

// The folders in a folder, in alphabetical order: hidden ones only on the way to `sVerso`.
QStringList sSottocartelle(const QString& sDir, const QString& sVerso);
// Lets the user pick a folder over a window; the one given if the user gives up.
QString sScegliDir(platform::Form& owner, const QString& sDir);

void RegistraFormSceltaDir();

}  // namespace tavolix
