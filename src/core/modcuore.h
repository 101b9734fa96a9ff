#pragma once

#include <QVariant>
#include <array>

#include "model/campi.h"
#include "model/raccolte.h"
#include "platform/lookup_list.h"

namespace platform {
class DataCombo;
class DataControl;
class DataGrid;
}  // namespace platform

namespace tavolix {

// Fills the registry's oForm, which makes the form objects; no filter and no order is in force.
void CaricaRegistroRaccolte();
// With 0 or more selects the tab of that collection, which starts the change; with a negative
// value returns the selected tab's collection.
int iSelRaccolta(int valore);

extern std::array<QVariant, kCampi> vValoriCampi;
extern std::array<bool, kRaccolte> aCampiCaricati;
// Fills oControllo of a collection's fields, which creates its form. Once in the life of a form:
// a form that has been unloaded gives new controls.
void CaricaCampi(int iRac);

// Runs the list text of the current collection, hands its rows to the form, and tells the count.
void DBRefresh();
// Hands the list's recordset to the current collection's form.
void AggiornaRecordsetForm();
void AggiornaBarraStato();

// Binds a collection's controls to their columns, or frees them.
void CollegaCampi(bool bCollega, int iRac);

// The values of a list as a query, in the order of their texts.
QString sTestoLista(int iRacTab, const QString& sCodTab);
// The values of a list, shared by all combos that offer it; filled when one is first shown.
platform::LookupListPtr ListaValori(int iRacTab, const QString& sCodTab);
// All lists are to be read again (another archive).
void DimenticaListe();
void CaricaCombo(int iRacTab, const QString& sCodTab, platform::DataCombo& oCombo);
void CaricaComboCampi(int iRac);
void CaricaComboCampo(int iRac, int iCampo);
void CaricaComboCampoIn(int iRac, int iCampo, platform::DataCombo& oCombo);

// Start values of a new record.
void ImpostaDefaultCampi(int iRac);
// 0 keeps the controls' values, anything else puts them back.
void ScambiaValoriCampi(int iRac, int iModo);
// A fresh key; 0 after a failure.
int lNewCont();
// The key of a lookup value, which is created if it is not there.
int lNuovaVoceTab(const QString& sCodTab, int iRacTab, const QString& sDesc);

// Opens the list behind a combo field of the current collection, on the value the record holds;
// the field then shows the value that was current in the list.
void ApriTabella(int iCampo);

// The collection in the main list: while a sub-collection is open, that of its parent.
int iRacElenco();
// Fills a grid's columns from the archive's GRDCONFIG.
void CaricaGrigliaConfig(const QString& sNomeQuery, platform::DataGrid& oGriglia);
// Row of the field table that a column of the list shows; -1 for none, or where there is no list.
int iCampoColonna(const QString& sNomeCampo);
// Cleans what a row edited in the grid could not store: no number or no date becomes Null.
void CorreggiValoriGriglia(int iAzione);
// Once it is stored: the form has 0 for a number cleaned, nothing for a date.
void MostraValoriCorretti();

// Drops down the list of the combo that has the focus.
void ApriComboAttivo();
// Moves to the next field of the current collection, turning the page where needed.
void CampoSuccessivo();

// Number of rows the list shows; 0 while there is no list.
qint64 lRecordElenco();
// The data control of the list.
platform::DataControl& dbElenco();
// The data control of a collection's form.
platform::DataControl& dbForm(int iRac);

}  // namespace tavolix
