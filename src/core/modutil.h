#pragma once

#include <QComboBox>
#include <QString>
#include <QVariant>

#include "model/testi.h"
#include "store/database.h"

class QAbstractButton;

namespace platform {
class DataCombo;
class DateBox;
class Form;
}  // namespace platform

namespace tavolix {

inline constexpr int kPuntatoreNormale = 0;
inline constexpr int kClessidra = 11;

// Mouse pointer of the whole program, by its number.
void Puntatore(int forma);
// Lets windows be painted and timers run; what the user does waits until the work is done.
void Cedi();

// Message box under "Attenzione!". Type 0 warns, 2 asks yes or no. 1 yes, 0 no, -1 anything else.
int iMsg(const QString& sTesto, int iTipo);

void CaricaAnni(QComboBox& lista);
void CaricaMesi(QComboBox& lista);
void SelezionaVoceLista(QComboBox& lista, const QString& testo);

// Selects a combo's row by its text (column 0) or its key (column 1); the blank row if there is
// no such row.
void ImpostaValoreCombo(platform::DataCombo& combo, int iColonna, const QVariant& vValore);
// Lets a date be picked in the month view under a date box; today's where the box holds none.
void ApriCalendario(platform::DateBox& oData);
// A window's help button: sends the key F1. Disabled where the guide is not installed.
void CollegaAiuto(QAbstractButton& cmdAiuto);
bool bRecordValido(const store::RecordsetPtr& rs);
// Paints the control with the focus pale yellow, or gives it back its own colours.
void EvidenziaFocus(bool bEntra);

void CentraForm(platform::Form& form);
// The dialogs that are open, at most 101.
void RegistraForm(const platform::Form& form);
void DeregistraForm(const platform::Form& form);
bool bFormRegistrata(const QString& nome);

// Replaces a stored query; false if it could not be made.
bool RicreaQueryDef(const QString& nome, const QString& sql, const store::DatabasePtr& db);

}  // namespace tavolix
