#pragma once

#include <QIcon>

#include "platform/form.h"

class QListWidget;

namespace tavolix {

// The archives of a folder: what is done with them as files, and the choice of one to be opened.
// No archive may be open meanwhile. Settings file and section are those of the caller.
class frmManArc final : public platform::Form {
  Q_OBJECT
 public:
  frmManArc();

  // The full path of the archive that was chosen; empty for none.
  QString FileName() const { return FileName_; }

  void RicaricaFiles();
  void MostraInfoFile();
  void AbilitazionePulsanti();
  void CreaNuovo();

 private:
  QWidget* build() override;
  void loaded() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  void cmdAprire_Click();
  void cmdDuplica_Click();
  void cmdRinominare_Click();
  void cmdEliminare_Click();
  void cmdCorreggere_Click();
  void cmdEseguiCopie_Click();
  void cmdRecupero_Click();
  void cmdDirectory_Click();
  void cmdImpostazioni_Click();
  void cmdEsci_Click();

  QListWidget& lstFile();
  void connectCommands();
  void fillList();
  void takeFocus();
  void write(const char* label, const QString& text);
  QString selectedName();  // empty without any
  QString pathOf(const QString& name) const { return directory_ + name; }

  QString FileName_;
  QString directory_;  // as a window shows it
  QString extension_;
  QIcon icon_;
};

// Shows the manager; the path of the archive that was chosen, empty for none.
QString sScegliArchivio();
void RegistraFormManArc();

}  // namespace tavolix
