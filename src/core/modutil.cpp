#include "core/modutil.h"

#include <QApplication>
#include <QLocale>
#include <QScreen>
#include <array>

#include "core/errore.h"
#include "platform/clock.h"
#include "platform/commands.h"
#include "platform/data_combo.h"
#include "platform/flash_target.h"
#include "platform/form.h"
#include "platform/message_box.h"

namespace tavolix {
namespace {

std::array<QString, 101> aFormAperte;

struct FocusEvidenziato {
  QPointer<QWidget> controllo;
};
FocusEvidenziato evidenziato;

constexpr platform::BgrColor kGialloChiaro = 0xC0FFFF;
constexpr platform::BgrColor kNero = 0;

bool hasEntryName(const QWidget* widget) {
  const QString name = widget->objectName().toUpper();
  return name.startsWith(QLatin1String("TXT")) || name.startsWith(QLatin1String("CB"));
}

}  // namespace

void Puntatore(int forma) {
  const bool busy = QGuiApplication::overrideCursor() != nullptr;
  if (forma == kClessidra && !busy) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  if (forma != kClessidra && busy) QGuiApplication::restoreOverrideCursor();
}

void Cedi() {
  platform::yieldToPaint();
}

int iMsg(const QString& sTesto, int iTipo) {
  Puntatore(kPuntatoreNormale);
  int style = platform::kOkOnly;
  if (iTipo == 0) style = platform::kWarning;
  if (iTipo == 2) style = platform::kQuestion + platform::kYesNo;
  const int answer = platform::MsgBox(sTesto, style, QStringLiteral("Attenzione!"));
  if (answer == platform::kYes) return 1;
  return answer == platform::kNo ? 0 : -1;
}

bool bRecordValido(const store::RecordsetPtr& rs) {
  return rs && rs->IsOpen() && rs->RecordCount() != 0 && !rs->Eof() && !rs->Bof() && !rs->NoMatch();
}

void SelezionaVoceLista(QComboBox& lista, const QString& testo) {
  lista.setCurrentIndex(-1);
  for (int i = 0; i < lista.count(); ++i) {
    if (lista.itemText(i).trimmed() == testo.trimmed()) {
      lista.setCurrentIndex(i);
      return;
    }
  }
}

void CaricaAnni(QComboBox& lista) {
  for (int anno = 1980; anno <= 2030; ++anno) lista.addItem(QString::number(anno));
}

void CaricaMesi(QComboBox& lista) {
  for (int mese = 1; mese <= 12; ++mese) lista.addItem(sNomeMese(mese));
}

void ImpostaValoreCombo(platform::DataCombo& combo, int iColonna, const QVariant& vValore) {
  if (iColonna == 0) {
    combo.SelectText(vValore.toString());
  } else {
    // What is no value of the list shows as blank, and is so.
    const qint64 key = vValore.toLongLong();
    const bool known = combo.List() == nullptr || !combo.List()->text(key).isEmpty();
    combo.SetValue(known ? key : 0);
  }
}

void EvidenziaFocus(bool bEntra) {
  if (bEntra) {
    evidenziato.controllo = QApplication::focusWidget();
    if (evidenziato.controllo && hasEntryName(evidenziato.controllo)) {
      platform::FlashTarget::SetColors(evidenziato.controllo, kNero, kGialloChiaro);
    }
    return;
  }
  // The theme's own colours come back, also where the theme has changed meanwhile.
  if (evidenziato.controllo && hasEntryName(evidenziato.controllo)) {
    platform::FlashTarget::ResetColors(evidenziato.controllo);
  }
}

void CentraForm(platform::Form& form) {
  QWidget* window = form.Window();
  const QRect screen = window->screen()->geometry();
  window->move(screen.x() + (screen.width() - window->width()) / 2,
               screen.y() + (screen.height() - window->height()) / 2);
}

void RegistraForm(const platform::Form& form) {
  auto* place = std::find(aFormAperte.begin(), aFormAperte.end(), QString());
  if (place != aFormAperte.end()) *place = form.Name();
}

void DeregistraForm(const platform::Form& form) {
  auto* place = std::find(aFormAperte.begin(), aFormAperte.end(), form.Name());
  if (place != aFormAperte.end()) place->clear();
}

bool bFormRegistrata(const QString& nome) {
  return std::find(aFormAperte.begin(), aFormAperte.end(), nome) != aFormAperte.end();
}

bool RicreaQueryDef(const QString& nome, const QString& sql, const store::DatabasePtr& db) {
  ignorando([&] { db->DeleteQueryDef(nome); });
  return ignorando([&] { db->CreateQueryDef(nome, sql); });
}

}  // namespace tavolix
