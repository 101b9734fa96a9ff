#pragma once

#include <QPointer>
#include <optional>

#include "assist/pagine_guida.h"
#include "platform/form.h"

class QListWidget;
class QTextBrowser;

namespace tavolix {

// The guide, beside whatever window asks for it. It stays open while one works on.
class frmGuida final : public platform::Form {
  Q_OBJECT
 public:
  frmGuida();

  // Shows the page of a control or of the menu entry that is marked, in front of its window.
  void Apri(QWidget* dove);

 private:
  QWidget* build() override;
  void loaded() override;
  bool queryUnload() override;
  void fillContents();
  void connectControls();
  void addKeys();
  QString pageOf(QWidget* at) const;
  void showPage(const QString& sNome);
  void pageShown();
  void fillIndex(const QString& sInizio);
  void fillFound(const QString& sTesto);
  void openChosen(QListWidget& list);
  void startSearch();
  void printPage();
  void close();
  void comeToFront(QWidget* front);
  QTextBrowser& page();

  std::optional<PagineGuida> pagine_;
  QPointer<QWidget> davanti_;  // the window that it stands before
};

// F1 and the command for it.
void RegistraFormGuida();

}  // namespace tavolix
