#include "core/modcuore.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTabWidget>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/bound_control.h"
#include "platform/data_combo.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/form.h"

namespace tavolix {
namespace {

using platform::forms;

platform::Form& frmGrid() {
  return forms()[QStringLiteral("frmGrid")];
}
const QString kDbCurr = QStringLiteral("dbCurr");

bool bElencoFiltrato = false;  // the list that is shown

template <typename Work>
void perOgniCampo(int iRac, Work work) {
  for (int j = 0; j < kCampi; ++j) {
    tCampo& campo = aCampi(iRac, j);
    if (campo.sTipo.isEmpty()) return;
    work(campo, j);
  }
}

// Marks the column that the list is sorted by in the first place.
void showOrder(const QString& sOrdine) {
  const QString words = sOrdine.simplified().section(u' ', 2).section(u',', 0, 0).trimmed();
  const bool falling = words.endsWith(QLatin1String(" DESC"), Qt::CaseInsensitive);
  frmGrid()
      .control<platform::DataGrid>(QStringLiteral("grd"))
      ->ShowOrder(words.section(u' ', 0, 0), falling ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// The text stands out where the list is not the whole collection.
void showCount(QLabel& lblStatus, bool filtered) {
  lblStatus.setText(
      (filtered ? QStringLiteral("Elenco filtrato: ") : QStringLiteral("Elenco completo: ")) +
      QString::number(lRecordElenco()) + QStringLiteral(" records"));
  lblStatus.setForegroundRole(filtered ? QPalette::Link : QPalette::WindowText);
  QFont font = lblStatus.font();
  font.setBold(filtered);
  lblStatus.setFont(font);
}

platform::DataCombo* comboOf(const tCampo& campo) {
  return campo.oControllo == nullptr
             ? nullptr
             : dynamic_cast<platform::DataCombo*>(campo.oControllo->widget());
}

}  // namespace

platform::DataControl& dbElenco() {
  return *frmGrid().part<platform::DataControl>(kDbCurr);
}

platform::DataControl& dbForm(int iRac) {
  return *aRaccolte(iRac).oForm->part<platform::DataControl>(kDbCurr);
}

qint64 lRecordElenco() {
  const store::RecordsetPtr rs = dbElenco().Recordset();
  return rs && rs->IsOpen() ? rs->RecordCount() : 0;
}

void DBRefresh() {
  protetto("modCuore!DBRefresh", [] {
    // A clause that is refused stays in force until it is changed, beside the list that was there.
    const auto told = infine([] { AggiornaBarraStato(); });
    dbElenco().SetRecordSource(sTestoElenco(aRaccolte(iRacCorr)));
    dbElenco().Refresh();
    bElencoFiltrato = !aRaccolte(iRacCorr).sFiltro.isEmpty();
    showOrder(aRaccolte(iRacCorr).sOrdine);
    AggiornaRecordsetForm();
  });
}

void AggiornaRecordsetForm() {
  dbForm(iRacCorr).SetRecordset(dbElenco().Recordset());
}

void AggiornaBarraStato() {
  FormMain()
      .Control(QStringLiteral("cmdBar(8)"))
      ->setEnabled(!aRaccolte(iRacCorr).sFiltro.isEmpty());
  // Beside a list the filter that it was made with counts, which may not be the one now in force.
  const bool filtered =
      dbElenco().Recordset() != nullptr ? bElencoFiltrato : !aRaccolte(iRacCorr).sFiltro.isEmpty();
  showCount(*FormMain().control<QLabel>(QStringLiteral("lblStatus")), filtered);
}

void CollegaCampi(bool bCollega, int iRac) {
  platform::DataControl* source = nullptr;
  ignorando([&] { source = &dbForm(iRac); });
  perOgniCampo(iRac, [&](tCampo& campo, int) {
    if (campo.oControllo == nullptr) return;
    if (source != nullptr) campo.oControllo->SetDataSource(source);
    campo.oControllo->SetDataField(bCollega ? campo.sCampoDB : QString());
  });
  if (source != nullptr) ignorando([&] { source->UpdateControls(); });
}

void ImpostaDefaultCampi(int iRac) {
  rsTab->SetIndex(QStringLiteral("3"));
  perOgniCampo(iRac, [](tCampo& campo, int) {
    if (campo.sTipo == QLatin1String(TXTSTR) || campo.sTipo == QLatin1String(TXTNUM)) {
      campo.oControllo->SetValue({});
    } else if (platform::DataCombo* combo = comboOf(campo)) {
      rsTab->Seek(QStringLiteral("="), {campo.sCodTab, campo.iRacTab, true});
      // By its key: choosing by the text would read the whole list.
      const QVariant id = rsTab->NoMatch() ? QVariant(0) : rsTab->Value(QStringLiteral("ID"));
      ImpostaValoreCombo(*combo, 1, id);
    }
  });
  rsTab->SetIndex(QStringLiteral("1u"));
}

void ScambiaValoriCampi(int iRac, int iModo) {
  perOgniCampo(iRac, [&](tCampo& campo, int j) {
    QVariant& saved = vValoriCampi.at(static_cast<std::size_t>(j));
    if (iModo == 0) {
      saved = campo.oControllo->ValidValue();
    } else if (platform::DataCombo* combo = comboOf(campo)) {
      ImpostaValoreCombo(*combo, 1, saved);
    } else {
      campo.oControllo->SetValue(saved);
    }
  });
}

int lNewCont() {
  return protetto("cuore!lNewCont", [] {
    const QString id = QStringLiteral("ID");
    rsCont->MoveFirst();
    rsCont->Edit();
    rsCont->SetValue(id, rsCont->Value(id).toLongLong() + 1);
    rsCont->Update();
    return rsCont->Value(id).toInt();
  });
}

int lNuovaVoceTab(const QString& sCodTab, int iRacTab, const QString& sDesc) {
  const store::RecordsetPtr rs =
      dbArc->OpenRecordset(QStringLiteral("TAB"), store::RecordsetType::Table);
  rs->SetIndex(QStringLiteral("2"));
  rs->Seek(QStringLiteral("="), {sCodTab, iRacTab, sDesc});
  if (rs->NoMatch()) {
    rs->AddNew();
    rs->SetValue(QStringLiteral("TipoTab"), sCodTab);
    rs->SetValue(QStringLiteral("TipoRac"), iRacTab);
    rs->SetValue(QStringLiteral("Desc"), sDesc);
    rs->Update();
    // Who offers the list reads it again.
    ListaValori(iRacTab, sCodTab)->invalidate();
    rs->SetIndex(QStringLiteral("1u"));
    rs->Seek(QStringLiteral("<="), {9999999});
  }
  const int id = rs->Value(QStringLiteral("ID")).toInt();
  rs->Close();
  return id;
}

void ApriComboAttivo() {
  ignorando([] {
    QWidget* active = QApplication::focusWidget();
    if (active == nullptr || active->objectName().left(3).toUpper() != QLatin1String("CBO")) return;
    auto* combo = qobject_cast<QComboBox*>(active);
    auto* list = dynamic_cast<platform::DataCombo*>(active);
    const bool open =
        list != nullptr ? list->DroppedDown() : combo != nullptr && combo->view()->isVisible();
    if (list != nullptr) return list->SetDroppedDown(true);
    if (combo != nullptr && !open) combo->showPopup();
  });
}

void CampoSuccessivo() {
  ignorando([] {
    QWidget* active = QApplication::focusWidget();
    for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
      const tCampo& campo = aCampi(iRacCorr, j);
      if (campo.oControllo == nullptr || campo.oControllo->widget() != active) continue;
      const int k = j + 1 < iNumeroCampi(iRacCorr) ? j + 1 : 0;
      const tCampo& next = aCampi(iRacCorr, k);
      if (next.iPagina != campo.iPagina && next.iPagina != -1) {
        aRaccolte(iRacCorr)
            .oForm->control<QTabWidget>(QStringLiteral("panRecord"))
            ->setCurrentIndex(next.iPagina);
      }
      next.oControllo->widget()->setFocus(Qt::TabFocusReason);
      return;
    }
  });
}

}  // namespace tavolix
