#pragma once

#include <QSize>
#include <array>

#include "platform/form.h"
#include "platform/window_place.h"

namespace tavolix {

// The main window: list and record form stand in it, and all commands are entered here.
class frmMain final : public platform::Form {
  Q_OBJECT
 public:
  frmMain();

  // Where the list and the collections' forms stand.
  QWidget* Area();
  // The list's size beside a record form, in a window of its first size.
  QSize ListDesignSize();

  // Switches everything the user can press.
  void AbilitaControlli(bool bAbilita);
  // Input from the beginning of a change of collection to its end.
  void PermettiInput(bool bPermetti);
  // Makes the selected tab's collection the current one.
  void InizializzaTab();
  // Loads and places the form of the current collection.
  void CaricaFinestra();
  // Opens the record's panel or closes it; by itself open when the list has rows.
  void AbilitazionePannello();
  void AbilitazionePannello(bool bAbilita);
  // Alt+N, Alt+C, Alt+D in list and forms; true if the key was one of them.
  bool TastiGestMain(int key, Qt::KeyboardModifiers modifiers);
  static bool bTastoGestMain(int key, Qt::KeyboardModifiers modifiers);

  // Writes what was typed in the current record. Failures are ignored.
  void Salva();
  // The same; true if nothing of it had to stay in its box.
  bool bSalvato();
  // Tells that the list or its record cannot be read.
  void SegnalaLettura(int numero, const QString& descrizione);
  void TastoAddNew();
  void TastoDuplica();
  void TastoCancella();
  // Makes a record in both its tables: a copy of the current one, or one of the start values.
  void CreaNuovo(bool bDuplica);
  // Deletes a record in both its tables, then its sub-collection's rows. `lID` is MAIN.ID.
  void CancellaRecord(qint64 lID);
  // Shows the child rows of the current record.
  void cmdSubRac_Click();

  // The commands of menu and bar.
  void mnuFileChiudi_Click();
  void mnuCancellaMultiplo_Click();
  void mnuMaxExtension_Click();
  void mnuSottoraccolta_Click();
  void mnuVarieSalva_Click();
  void cmdEspandi_Click();

 private:
  QWidget* build() override;
  void loaded() override;
  void resized() override;
  bool queryUnload() override;

  void connectButtons();
  void growForList();
  void placeWindow();
  void firstPlace();
  void restorePosition();
  void writePosition();
  void extendAtStart();
  void loadCollection();
  void unloadOldForm(int iVecchia);
  void loadList();
  void giveUpCollection();
  void offerReload(const QString& why);
  void showSubCollection();
  void showCollection();
  void setExtended(bool extended);
  void closeProgram();
  void tick();
  QWidget* panRecord(int iRac);
  void title(const QString& text);

  bool bLasciaRiga();
  void refreshAfterDeletion();
  QString deletionQuestion();

  platform::WindowPlace* place_ = nullptr;  // the window's own
  std::array<int, 8> aTabCorrente_{};
  std::array<bool, 8> aTabImpostata_{};
};

// The one main window.
frmMain& FrmMain();
// Adds main window, list and collection forms to the program's forms.
void RegistraFormWorkspace();

}  // namespace tavolix
