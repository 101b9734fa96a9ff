// The lists of reusable values behind the combos, and the columns of the list grids.

#include <QHash>

#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/data_combo.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/form.h"

namespace tavolix {
namespace {

constexpr int kOneLine = 255;  // characters

using platform::LookupList;
using platform::LookupListPtr;

QHash<std::pair<QString, int>, LookupListPtr>& lists() {
  static QHash<std::pair<QString, int>, LookupListPtr> all;
  return all;
}

QString readText(qint64 key) {
  if (!rsTab || !rsTab->IsOpen()) return {};
  // A combo asks in the middle of other work on rsTab, which goes on with its own index.
  const QString index = rsTab->Index();
  rsTab->SetIndex(QStringLiteral("1u"));
  rsTab->Seek(QStringLiteral("="), {key});
  QString text = rsTab->NoMatch() ? QString() : NullAStringa(rsTab->Value(QStringLiteral("Desc")));
  rsTab->SetIndex(index);
  return text;
}

// The field whose column a list field writes: itself, or the key of the list it shows. -1: none.
int iCampoDi(int iRac, const store::FieldInfo& info) {
  const QString name = info.lookupKey.isEmpty() ? info.column : info.lookupKey.section(u'.', -1);
  for (int j = 0; j < iNumeroCampi(iRac); ++j) {
    if (aCampi(iRac, j).sCampoDB.compare(name, Qt::CaseInsensitive) == 0) return j;
  }
  return -1;
}

int raccoltaDi(const QString& sQuery) {
  for (int i = 0; i < kRaccolte; ++i) {
    if (aRaccolte(i).sQuery.compare(sQuery, Qt::CaseInsensitive) == 0) return i;
  }
  return -1;
}

platform::ColumnSetup setupOf(int iRac, const store::Recordset& rs, const QString& nomeCampo) {
  platform::ColumnSetup setup;
  const int field = rs.FindField(nomeCampo);
  if (field < 0) return setup;
  const store::FieldInfo& info = rs.Fields()[field];
  setup.kind = info.kind;
  setup.maxLength = info.size;
  const int iCampo = iRac < 0 ? -1 : iCampoDi(iRac, info);
  if (iCampo < 0) return setup;
  const tCampo& campo = aCampi(iRac, iCampo);
  // A cell takes what the field's box takes; a list's text is limited by the list itself.
  if (info.lookupKey.isEmpty() && info.kind == store::FieldKind::Text) {
    setup.maxLength = campo.box.maxLength;
  }
  setup.mask = QString::fromLatin1(campo.box.mask);
  // A text of several lines is for its box in the form: a cell has one line.
  setup.editable = (info.updatable && info.size <= kOneLine) || !info.lookupKey.isEmpty();
  if (campo.sTipo == QLatin1String(CBO) && !info.lookupKey.isEmpty()) {
    setup.list = ListaValori(campo.iRacTab, campo.sCodTab);
    setup.keyField = info.lookupKey;
  }
  return setup;
}

platform::DataGrid& mainList() {
  return *platform::forms()[QStringLiteral("frmGrid")].control<platform::DataGrid>(
      QStringLiteral("grd"));
}

// The number or date that the list writes no value for; null for any other field.
const tCampo* emptiedField() {
  bool numeric = false;
  mainList().PendingValue().toDouble(&numeric);
  if (numeric) return nullptr;
  const int iRac = iRacElenco();
  for (int j = 0; j < iNumeroCampi(iRac); ++j) {
    const tCampo& campo = aCampi(iRac, j);
    const bool checked =
        campo.sTipo == QLatin1String(TXTNUM) || campo.sTipo == QLatin1String(TXTDTA);
    const QString written = mainList().PendingField();
    if (checked && campo.sCampoDB.compare(written, Qt::CaseInsensitive) == 0) return &campo;
  }
  return nullptr;
}

void showEmptied(const tCampo& campo) {
  if (campo.oControllo == nullptr) return;
  campo.oControllo->ShowValue(campo.sTipo == QLatin1String(TXTNUM) ? QVariant(0) : QVariant());
}

}  // namespace

int iRacElenco() {
  for (int i = 0; i < kRaccoltePrincipali; ++i) {
    if (iRacCorr >= kRaccoltePrincipali && aRaccolte(i).iSottoRaccolta == iRacCorr) return i;
  }
  return iRacCorr;
}

QString sTestoLista(int iRacTab, const QString& sCodTab) {
  return QStringLiteral("SELECT * FROM TAB WHERE TipoRac= ") + QString::number(iRacTab) +
         QStringLiteral(" AND TipoTab = ") + sApici(sCodTab) + QStringLiteral(" ORDER BY [DESC];");
}

LookupListPtr ListaValori(int iRacTab, const QString& sCodTab) {
  LookupListPtr& list = lists()[{sCodTab, iRacTab}];
  if (!list) {
    const auto open = [=] {
      return dbArc->OpenRecordset(sTestoLista(iRacTab, sCodTab), store::RecordsetType::Dynaset);
    };
    list = std::make_shared<LookupList>(
        LookupList::Source{open, QStringLiteral("ID"), QStringLiteral("Desc"), readText});
  }
  return list;
}

void DimenticaListe() {
  for (const LookupListPtr& list : lists()) list->invalidate();
}

void CaricaCombo(int iRacTab, const QString& sCodTab, platform::DataCombo& oCombo) {
  oCombo.SetList(ListaValori(iRacTab, sCodTab));
}

void CaricaComboCampoIn(int iRac, int iCampo, platform::DataCombo& oCombo) {
  const tCampo& campo = aCampi(iRac, iCampo);
  CaricaCombo(campo.iRacTab, campo.sCodTab, oCombo);
}

void CaricaComboCampo(int iRac, int iCampo) {
  const tCampo& campo = aCampi(iRac, iCampo);
  auto* combo = campo.oControllo == nullptr
                    ? nullptr
                    : dynamic_cast<platform::DataCombo*>(campo.oControllo->widget());
  if (combo != nullptr) CaricaComboCampoIn(iRac, iCampo, *combo);
}

void CaricaComboCampi(int iRac) {
  for (int j = 0; j < iNumeroCampi(iRac); ++j) {
    if (aCampi(iRac, j).sTipo == QLatin1String(CBO)) CaricaComboCampo(iRac, j);
  }
}

void CaricaGrigliaConfig(const QString& sNomeQuery, platform::DataGrid& oGriglia) {
  const store::RecordsetPtr config =
      dbArc->OpenRecordset(QStringLiteral("GRDCONFIG"), store::RecordsetType::Table);
  config->SetIndex(QStringLiteral("1u"));
  oGriglia.RemoveColumns();
  QVector<platform::GridColumn> columns;
  config->Seek(QStringLiteral(">="), {sNomeQuery, 0});
  while (!config->NoMatch() && !config->Eof()) {
    const auto text = [&](const char* name) {
      return NullAStringa(config->Value(QString::fromLatin1(name)));
    };
    if (text("NomeQuery").compare(sNomeQuery, Qt::CaseInsensitive) != 0) break;
    platform::GridColumn column;
    column.dataField = text("NomeCampo");
    column.caption = text("titolo");
    column.width = NullAZero(config->Value(QStringLiteral("Larghezza"))).toInt();
    columns.append(std::move(column));
    config->MoveNext();
  }
  config->Close();
  oGriglia.SetColumns(
      std::move(columns),
      [iRac = raccoltaDi(sNomeQuery)](const store::Recordset& rs, const QString& nomeCampo) {
        return setupOf(iRac, rs, nomeCampo);
      });
}

int iCampoColonna(const QString& sNomeCampo) {
  const store::RecordsetPtr rs = dbElenco().Recordset();
  const int field = rs == nullptr ? -1 : rs->FindField(sNomeCampo);
  return field < 0 ? -1 : iCampoDi(iRacCorr, rs->Fields()[field]);
}

void CorreggiValoriGriglia(int iAzione) {
  if (iAzione != 6) return;
  const tCampo* campo = emptiedField();
  if (campo == nullptr) return;
  mainList().SetPendingValue({});
  showEmptied(*campo);
}

void MostraValoriCorretti() {
  if (const tCampo* campo = emptiedField()) showEmptied(*campo);
}

}  // namespace tavolix
