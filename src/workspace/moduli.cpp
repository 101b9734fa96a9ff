#include "workspace/moduli.h"

namespace tavolix {
namespace {

// clang-format off
constexpr Box kLibri[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Text, 100, "", "", "Titolo"},
    {Kind::Text, 100, "", "", "Sottotitolo"},
    {Kind::Combo, 0, "", "", "Autore"},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Editore"},
    {Kind::Combo, 0, "", "", "Lingua"},
    {Kind::Combo, 0, "", "", "Nazione"},
    {Kind::Digits, 0, "9999", "", "Anno"},
    {Kind::Digits, 0, "99999", "", "Dimens."},
    {Kind::Combo, 0, "", "", "Dimens."},
    {Kind::Masked, 30, "", "", "Edizione"},
    {Kind::Combo, 0, "", "", "Collana"},
    {Kind::Text, 100, "", "", "Titolo originale"},
    {Kind::Masked, 30, "", "", "Traduttore"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kRiviste[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Combo, 0, "", "", "Testata"},
    {Kind::Digits, 0, "9999", "", "Numero"},
    {Kind::Combo, 0, "", "", "Periodic."},
    {Kind::Date, 0, "", "", "Data"},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Editore"},
    {Kind::Combo, 0, "", "", "Nazione"},
    {Kind::Combo, 0, "", "", "Lingua"},
    {Kind::Digits, 0, "9999", "", "Nr. pagine"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc. libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kAudio[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Text, 100, "", "", "Titolo"},
    {Kind::Combo, 0, "", "", "Autore"},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Casa discograf."},
    {Kind::Combo, 0, "", "", "Nazionalita'"},
    {Kind::Digits, 0, "9999", "", "Anno"},
    {Kind::Combo, 0, "", "", "Lingua"},
    {Kind::Time, 0, "", "", "Durata"},
    {Kind::Combo, 0, "", "", "Supporto"},
    {Kind::Digits, 0, "99", "", "Nr. supporti"},
    {Kind::Check, 0, "", "", "Originale"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc. libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kVideo[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Text, 100, "", "", "Titolo"},
    {Kind::Text, 100, "", "", "Titolo orig."},
    {Kind::Digits, 0, "9999", "", "Anno"},
    {Kind::Combo, 0, "", "", "Regista"},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Distrib."},
    {Kind::Combo, 0, "", "", "Nazionalita'"},
    {Kind::Combo, 0, "", "", "Registraz."},
    {Kind::Combo, 0, "", "", "Lingua"},
    {Kind::Combo, 0, "", "", "Supporto"},
    {Kind::Combo, 0, "", "", "Audio"},
    {Kind::Time, 0, "", "", "Durata"},
    {Kind::Digits, 0, "99", "", "Traccia nr."},
    {Kind::Time, 0, "", "", "Inizio"},
    {Kind::Memo, 30000, "", "", "Interpreti"},
    {Kind::Memo, 30000, "", "", "Premi vinti"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc. libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kSoftware[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Text, 100, "", "", "Titolo"},
    {Kind::Combo, 0, "", "", "Sistema"},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Produttore"},
    {Kind::Combo, 0, "", "", "Nazionalita'"},
    {Kind::Combo, 0, "", "", "Distribut."},
    {Kind::Combo, 0, "", "", "Lingua"},
    {Kind::Text, 40, "", "", "Nr. serie"},
    {Kind::Digits, 0, "9999", "", "Anno"},
    {Kind::Combo, 0, "", "", "Supporto"},
    {Kind::Digits, 0, "999", "", "Nr. supp."},
    {Kind::Check, 0, "", "", "Originale"},
    {Kind::Digits, 0, "9999", "", "Dimensioni"},
    {Kind::Combo, 0, "", "", "Dimensioni"},
    {Kind::Check, 0, "", "", "Installato"},
    {Kind::Memo, 30000, "", "", "Config. sistema richiesta"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc. libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kMedicinali[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Text, 100, "", "", "Descriz."},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Produttore"},
    {Kind::Digits, 0, "9999", "", "Quantita'"},
    {Kind::Combo, 0, "", "", "Quantita'"},
    {Kind::Date, 0, "", "", "Data di scadenza"},
    {Kind::Check, 0, "", "", "Necessita di ricetta medica"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc. libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kOggetti[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Text, 100, "", "", "Descriz."},
    {Kind::Combo, 0, "", "", "Utilizzo"},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Produttore"},
    {Kind::Combo, 0, "", "", "Categoria"},
    {Kind::Digits, 0, "99999", "", "Dimensioni"},
    {Kind::Combo, 0, "", "", "Dimensioni"},
    {Kind::Combo, 0, "", "", "Nazione"},
    {Kind::Digits, 0, "9999", "", "Quantita'"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc. libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kPersone[] = {
    {Kind::Text, 15, "", "", "Codice"},
    {Kind::Text, 100, "", "", "Denomin."},
    {Kind::Combo, 0, "", "", "Denomin."},
    {Kind::Text, 150, "", "", "Indirizzo"},
    {Kind::Text, 6, "", "", "CAP"},
    {Kind::Text, 100, "", "", "Citta'"},
    {Kind::Text, 2, "", "", "Prov."},
    {Kind::Combo, 0, "", "", "Nazione"},
    {Kind::Combo, 0, "", "", "Zona"},
    {Kind::Text, 100, "", "", "Riferim."},
    {Kind::Combo, 0, "", "", "Lingua"},
    {Kind::Combo, 0, "", "", "Categoria"},
    {Kind::Combo, 0, "", "", "Rapporti"},
    {Kind::Text, 20, "", "", "Cod. fisc."},
    {Kind::Text, 20, "", "", "Part. IVA"},
    {Kind::Text, 18, "", "", "Telefono 1"},
    {Kind::Combo, 0, "", "", ""},
    {Kind::Text, 18, "", "", "Telefono 2"},
    {Kind::Combo, 0, "", "", ""},
    {Kind::Text, 18, "", "", "Telefono 3"},
    {Kind::Combo, 0, "", "", ""},
    {Kind::Text, 18, "", "", "Telefono 4"},
    {Kind::Combo, 0, "", "", ""},
    {Kind::Text, 18, "", "", "Telefono 5"},
    {Kind::Combo, 0, "", "", ""},
    {Kind::Text, 50, "", "", "E-Mail"},
    {Kind::Text, 50, "", "", "Web"},
    {Kind::Combo, 0, "", "", "Libero 1"},
    {Kind::Combo, 0, "", "", "Libero 2"},
    {Kind::Masked, 50, "", "", "Desc. libera"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kArticoli[] = {
    {Kind::Text, 150, "", "", "Titolo"},
    {Kind::Text, 150, "", "", "Sottotitolo"},
    {Kind::Combo, 0, "", "", "Argomento"},
    {Kind::Combo, 0, "", "", "Autore"},
    {Kind::Digits, 0, "999", "", "Pagina"},
    {Kind::Digits, 0, "999", "", "Nr. pagine"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kBrani[] = {
    {Kind::Digits, 0, "999", "", "Nr. brano"},
    {Kind::Time, 0, "", "", "Durata"},
    {Kind::Digits, 0, "99", "", "Supporto nr."},
    {Kind::Text, 100, "", "", "Titolo"},
    {Kind::Combo, 0, "", "", "Autore"},
    {Kind::Combo, 0, "", "", "Genere"},
    {Kind::Combo, 0, "", "", "Autore testo"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kContatti[] = {
    {Kind::Date, 0, "", "", "Data"},
    {Kind::Combo, 0, "", "", "Iniziativa"},
    {Kind::Combo, 0, "", "", "Modo"},
    {Kind::Combo, 0, "", "", "Motivo"},
    {Kind::Memo, 30000, "", "", "Note"},
};

constexpr Box kAccessorie[] = {
    {Kind::Combo, 0, "", "", "Proprietario"},
    {Kind::Combo, 0, "", "", "Condizioni / stato"},
    {Kind::Combo, 0, "", "", "Luogo di acquisto"},
    {Kind::Date, 0, "", "", "Data di acquisto"},
    {Kind::Digits, 0, "999999999999", "#,##0", "Valore Lit."},
    {Kind::Combo, 0, "", "", "Posizione"},
    {Kind::Date, 0, "", "", "Data posizionam."},
    {Kind::Text, 50, "", "", "Descr. posiz."},
    {Kind::Digits, 0, "99", "0", "Valutazione (0 - 99)"},
};
// clang-format on

constexpr const char* kPagine[] = {"Dati principali", "Altri dati", "Informazioni accessorie"};
constexpr const char* kPaginePersone[] = {"Dati principali", "Comunicazioni", "Altri dati"};

constexpr Tip kTipPersone[] = {
    {"txtTitolo", "Denominazione (nome e cognome o nome ditta)"},
    {"txtRif", "Persona di riferimento"},
};

constexpr CalendarButton kCalendari[] = {
    {"txtDtaAcq", "cmdCalendAcq"}, {"txtDtaPos", "cmdCalendPos"}, {"txtData", "cmdData"},
    {"txtDtaScad", "cmdDtaScad"},  {"txtPerDta", "cmdCalendAcq"},
};

constexpr Module kModules[] = {
    {"frmRacLib", kLibri, kAccessorie, kPagine, {}},
    {"frmRacRiv", kRiviste, kAccessorie, kPagine, {}},
    {"frmRacAud", kAudio, kAccessorie, kPagine, {}},
    {"frmRacVid", kVideo, kAccessorie, kPagine, {}},
    {"frmRacCom", kSoftware, kAccessorie, kPagine, {}},
    {"frmRacMed", kMedicinali, kAccessorie, kPagine, {}},
    {"frmRacOgg", kOggetti, kAccessorie, kPagine, {}},
    {"frmRacPer", kPersone, {}, kPaginePersone, kTipPersone},
    {"frmSub", kArticoli, {}, {}, {}},
    {"frmSub", kBrani, {}, {}, {}},
    {"frmSub", kContatti, {}, {}, {}},
};

}  // namespace

std::span<const Module> modules() {
  return kModules;
}

const Box& boxOf(const Module& module, int campo) {
  const auto row = static_cast<std::size_t>(campo);
  return row < module.boxes.size() ? module.boxes[row] : module.shared[row - module.boxes.size()];
}

std::size_t boxCount(const Module& module) {
  return module.boxes.size() + module.shared.size();
}

const char* calendarButtonOf(const QString& box) {
  for (const CalendarButton& button : kCalendari) {
    if (box == QLatin1String(button.box)) return button.button;
  }
  return nullptr;
}

}  // namespace tavolix
