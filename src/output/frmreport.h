#pragma once

#include "platform/form.h"

class QListWidget;

namespace tavolix {

// The reports of a collection under readable names, and the one that is being looked at. Analyses
// run a report of their own with it, without showing it.
class frmReport final : public platform::Form {
  Q_OBJECT
 public:
  frmReport();

  // The archive and the report that Anteprima and Stampa work on.
  void ImpostaArchivio(const QString& path) { sArchivio_ = path; }
  void ImpostaReport(const QString& path) { sReport_ = path; }
  // Lists the reports of a section of a settings file.
  void Carica(const QString& sFileIni, const QString& sSezione);
  void RicaricaFiles();
  // Returns when the preview has been closed.
  void Anteprima();
  void Stampa();

 private:
  static constexpr int kMassimo = 50;

  QWidget* build() override;
  void loaded() override;
  bool queryUnload() override;

  QListWidget& lstFile();
  void aggiungi(const QString& nome);
  // Takes the selected report; false if there is none or a preview is open, which the user is told.
  bool bScelto(const char* sAvviso);
  void cmdAnteprima_Click();
  void cmdStampa_Click();
  void attendiChiusura();

  QString sArchivio_, sReport_, sDirectory_;
  QStringList aPercorsi_;
  bool bAnteprimaAperta_ = false;
};

void RegistraFormReport();

}  // namespace tavolix
