#include "model/campi.h"

#include <QRegularExpression>
#include <algorithm>
#include <span>

#include "model/raccolte.h"
#include "store/failure.h"

namespace tavolix {
namespace {

constexpr bool kMain = true;
constexpr bool kDetail = false;

// The kind of its box tells the type of a field.
struct Definition {
  const char* sTitolo;
  const char* sCampoDB;
  bool bPrincipale;
  int iPagina;
  const char* control;
  Box box;
};

constexpr int kMemoLength = 30000;

constexpr Box text(int maxLength, const char* label, const char* tip = "") {
  return {.kind = BoxKind::Text, .label = label, .maxLength = maxLength, .tip = tip};
}
constexpr Box memo(const char* label) {
  return {.kind = BoxKind::Memo, .label = label, .maxLength = kMemoLength};
}
constexpr Box masked(int maxLength, const char* label) {
  return {.kind = BoxKind::Masked, .label = label, .maxLength = maxLength};
}
constexpr Box digits(const char* mask, const char* label, const char* format = "") {
  return {.kind = BoxKind::Digits, .label = label, .mask = mask, .format = format};
}
constexpr Box date(const char* label, const char* button) {
  return {.kind = BoxKind::Date, .label = label, .button = button};
}
constexpr Box duration(const char* label) {
  return {.kind = BoxKind::Time, .label = label};
}
// The list is named by its code and the collection it belongs to, -1 for all. `shownAs`: the name
// of the value's text in the collection's list, where its column's own would be another column's.
constexpr Box combo(const char* label, const char* code, int collection, const char* shownAs = "") {
  return {.kind = BoxKind::Combo,
          .label = label,
          .listCode = code,
          .listCollection = collection,
          .shownAs = shownAs};
}
constexpr Box check(const char* label) {
  return {.kind = BoxKind::Check, .label = label};
}

constexpr const char* kTipDenominazione = "Denominazione (nome e cognome o nome ditta)";

// Caption, column, table, page, control, box.
// clang-format off
constexpr Definition kLibri[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Titolo", "Titolo", kMain, 0, "txtTitolo", text(100, "Titolo")},
    {"Sottotitolo", "SottoTitolo", kDetail, 0, "txtLibSottoTitolo", text(100, "Sottotitolo")},
    {"Autore", "TABAutoreID", kMain, 0, "cboAutore", combo("Autore", "AUTORE", 0)},
    {"Genere", "TABGenereID", kMain, 0, "cboGenere", combo("Genere", "GENERE", 0)},
    {"Editore", "TabEditoreID", kMain, 0, "cboEditore", combo("Editore", "EDITORE", 0)},
    {"Lingua", "TabLinguaID", kMain, 0, "cboLingua", combo("Lingua", "LINGUA", -1)},
    {"Nazione", "TabNazioneID", kMain, 0, "cboNazione", combo("Nazione", "NAZIONE", -1)},
    {"Anno", "Anno", kMain, 0, "txtAnno", digits("9999", "Anno")},
    {"Dimensione", "Dim", kMain, 0, "txtDim", digits("99999", "Dimens.")},
    {"Tipo dimensione", "TabTipoDimID", kMain, 0, "cboTipoDim", combo("Dimens.", "TIPODIM", 0)},
    {"Edizione", "Edizione", kDetail, 1, "txtLibEdizione", masked(30, "Edizione")},
    {"Collana", "TabCollanaID", kDetail, 1, "cboLibCollana", combo("Collana", "COLLANA", 0)},
    {"Titolo originale", "TitoloOrig", kDetail, 1, "txtLibTitoloOrig", text(100, "Titolo originale")},
    {"Traduttore", "Traduttore", kDetail, 1, "txtLibTraduttore", masked(30, "Traduttore")},
    {"Libero 1", "TabLibero1ID", kMain, 1, "cboLibero1", combo("Libero 1", "LIBERO1", 0)},
    {"Libero 2", "TabLibero2ID", kMain, 1, "cboLibero2", combo("Libero 2", "LIBERO2", 0)},
    {"Descr. libera", "DescLibera", kMain, 1, "txtDescLibera", masked(50, "Desc libera")},
    {"Note", "Note", kMain, 1, "txtNote", memo("Note")},
};

constexpr Definition kRiviste[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Testata", "TABTestataID", kDetail, 0, "cboTestata", combo("Testata", "TESTATA", 1)},
    {"Numero", "Numero", kDetail, 0, "txtNumero", digits("9999", "Numero")},
    {"Periodicita'", "TABPeriodicitaID", kDetail, 0, "cboPeriodicita", combo("Periodic.", "PERIODIC", 1)},
    {"Data", "Data", kDetail, 0, "txtData", date("Data", "cmdData")},
    {"Genere", "TABGenereID", kMain, 0, "cboGenere", combo("Genere", "GENERE", 1)},
    {"Editore", "TABEditoreID", kMain, 0, "cboEditore", combo("Editore", "EDITORE", 1)},
    {"Nazione", "TABNazioneID", kMain, 0, "cboNazione", combo("Nazione", "NAZIONE", -1)},
    {"Lingua", "TABLinguaID", kMain, 0, "cboLingua", combo("Lingua", "LINGUA", -1)},
    {"Numero pagine", "Dim", kMain, 0, "txtDim", digits("9999", "Nr. pagine")},
    {"Libero 1", "TabLibero1ID", kMain, 1, "cboLibero1", combo("Libero 1", "LIBERO1", 1)},
    {"Libero 2", "TabLibero2ID", kMain, 1, "cboLibero2", combo("Libero 2", "LIBERO2", 1)},
    {"Descr. libera", "DescLibera", kMain, 1, "txtDescLibera", masked(50, "Desc. libera")},
    {"Note", "Note", kMain, 1, "txtNote", memo("Note")},
};

constexpr Definition kAudio[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Titolo", "Titolo", kMain, 0, "txtTitolo", text(100, "Titolo")},
    {"Autore", "TABAutoreID", kMain, 0, "cboAutore", combo("Autore", "AUTORE", 2)},
    {"Genere", "TABGenereID", kMain, 0, "cboGenere", combo("Genere", "GENERE", 2)},
    {"Casa discografica", "TABEditoreID", kMain, 0, "cboEditore", combo("Casa discograf.", "EDITORE", 2)},
    {"Nazione", "TABNazioneID", kMain, 0, "cboNazione", combo("Nazionalita'", "NAZIONE", -1)},
    {"Anno", "Anno", kMain, 0, "txtAnno", digits("9999", "Anno")},
    {"Lingua", "TABLinguaID", kMain, 0, "cboLingua", combo("Lingua", "LINGUA", -1)},
    {"Durata", "Durata", kDetail, 0, "txtAudDurata", duration("Durata")},
    {"Supporto", "TABSupportoID", kDetail, 0, "cboAudSupporto", combo("Supporto", "SUPPORTO", 2)},
    {"Nr. supporti", "NrSupporti", kDetail, 0, "txtAudNrSupporti", digits("99", "Nr. supporti")},
    {"Originale", "Originale", kDetail, 0, "chkAudOriginale", check("Originale")},
    {"Libero 1", "TabLibero1ID", kMain, 1, "cboLibero1", combo("Libero 1", "LIBERO1", 2)},
    {"Libero 2", "TabLibero2ID", kMain, 1, "cboLibero2", combo("Libero 2", "LIBERO2", 2)},
    {"Descr. libera", "DescLibera", kMain, 1, "txtDescLibera", masked(50, "Desc. libera")},
    {"Note", "Note", kMain, 1, "txtNote", memo("Note")},
};

constexpr Definition kVideo[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Titolo", "Titolo", kMain, 0, "txtTitolo", text(100, "Titolo")},
    {"Titolo originale", "TitoloOrig", kDetail, 0, "txtTitoloOrig", text(100, "Titolo orig.")},
    {"Anno", "Anno", kMain, 0, "txtAnno", digits("9999", "Anno")},
    {"Regista", "TABAutoreID", kMain, 0, "cboRegista", combo("Regista", "REGISTA", 3)},
    {"Genere", "TABGenereID", kMain, 0, "cboGenere", combo("Genere", "GENERE", 3)},
    {"Distributore", "TABEditoreID", kMain, 0, "cboDistributore", combo("Distrib.", "DISTRIBUT", 3)},
    {"Nazione", "TABNazioneID", kMain, 0, "cboNazione", combo("Nazionalita'", "NAZIONE", -1)},
    {"Registrazione", "TABProvenID", kDetail, 0, "cboProvenienza", combo("Registraz.", "PROVEN", 3)},
    {"Lingua", "TABLinguaID", kMain, 0, "cboLingua", combo("Lingua", "LINGUA", -1)},
    {"Supporto", "TABSupportoID", kDetail, 0, "cboSupporto", combo("Supporto", "SUPPORTO", 3)},
    {"Audio", "TABAudioID", kDetail, 0, "cboAudio", combo("Audio", "AUDIO", 3)},
    {"Durata", "Durata", kDetail, 0, "txtDurata", duration("Durata")},
    {"Nr. traccia", "Traccia", kDetail, 0, "txtNrTraccia", digits("99", "Traccia nr.")},
    {"Inizio", "Inizio", kDetail, 0, "txtInizio", duration("Inizio")},
    {"Interpreti", "Attori", kDetail, 1, "txtAttori", memo("Interpreti")},
    {"Premi vinti", "Riconoscim", kDetail, 1, "txtRiconoscimenti", memo("Premi vinti")},
    {"Libero 1", "TabLibero1ID", kMain, 1, "cboLibero1", combo("Libero 1", "LIBERO1", 3)},
    {"Libero 2", "TabLibero2ID", kMain, 1, "cboLibero2", combo("Libero 2", "LIBERO2", 3)},
    {"Descr. libera", "DescLibera", kMain, 1, "txtDescLibera", masked(50, "Desc. libera")},
    {"Note", "Note", kMain, 1, "txtNote", memo("Note")},
};

constexpr Definition kSoftware[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Titolo", "Titolo", kMain, 0, "txtTitolo", text(100, "Titolo")},
    {"Sistema", "TABSistemaID", kDetail, 0, "cboSistema", combo("Sistema", "SISTEMA", 4)},
    {"Genere", "TABGenereID", kMain, 0, "cboGenere", combo("Genere", "GENERE", 4)},
    {"Produttore", "TABAutoreID", kMain, 0, "cboProduttore", combo("Produttore", "PRODUTT", 4)},
    {"Nazione", "TABNazioneID", kMain, 0, "cboNazione", combo("Nazionalita'", "NAZIONE", -1)},
    {"Distributore", "TABEditoreID", kMain, 0, "cboDistributore", combo("Distribut.", "DISTRIBUT", 4)},
    {"Lingua", "TABLinguaID", kMain, 0, "cboLingua", combo("Lingua", "LINGUA", -1)},
    {"Nr. serie", "NrSerie", kDetail, 0, "txtNrSerie", text(40, "Nr. serie")},
    {"Anno", "Anno", kMain, 0, "txtAnno", digits("9999", "Anno")},
    {"Supporto", "TABSupportoID", kDetail, 0, "cboSupporto", combo("Supporto", "SUPPORTO", 4)},
    {"Nr. supporti", "NrSupporti", kDetail, 0, "txtNrSupporti", digits("999", "Nr. supp.")},
    {"Originale", "Originale", kDetail, 0, "chkOriginale", check("Originale")},
    {"Dimensioni", "Dim", kMain, 0, "txtDim", digits("9999", "Dimensioni")},
    {"Tipo dimensioni", "TABTipoDimID", kMain, 0, "cboTipoDim", combo("Dimensioni", "TIPODIM", 4)},
    {"Installato", "Installato", kDetail, 0, "chkInstallato", check("Installato")},
    {"Configurazione", "Configurazione", kDetail, 1, "txtConfig", memo("Config. sistema richiesta")},
    {"Libero 1", "TabLibero1ID", kMain, 1, "cboLibero1", combo("Libero 1", "LIBERO1", 4)},
    {"Libero 2", "TabLibero2ID", kMain, 1, "cboLibero2", combo("Libero 2", "LIBERO2", 4)},
    {"Descr. libera", "DescLibera", kMain, 1, "txtDescLibera", masked(50, "Desc. libera")},
    {"Note", "Note", kMain, 1, "txtNote", memo("Note")},
};

constexpr Definition kMedicinali[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Descrizione", "Titolo", kMain, 0, "txtTitolo", text(100, "Descriz.")},
    {"Genere", "TABGenereID", kMain, 0, "cboGenere", combo("Genere", "GENERE", 5)},
    {"Produttore", "TABEditoreID", kMain, 0, "cboProduttore", combo("Produttore", "PRODUTT", 5)},
    {"Dimensioni", "Dim", kMain, 0, "txtDim", digits("9999", "Quantita'")},
    {"Tipo dimensioni", "TABTipoDimID", kMain, 0, "cboTipoDim", combo("Quantita'", "TIPODIM", 5)},
    {"Data scadenza", "DtaScad", kDetail, 0, "txtDtaScad", date("Data di scadenza", "cmdDtaScad")},
    {"Ricetta medica", "Ricetta", kDetail, 0, "chkRicetta", check("Necessita di ricetta medica")},
    {"Libero 1", "TabLibero1ID", kMain, 1, "cboLibero1", combo("Libero 1", "LIBERO1", 5)},
    {"Libero 2", "TabLibero2ID", kMain, 1, "cboLibero2", combo("Libero 2", "LIBERO2", 5)},
    {"Descr. libera", "DescLibera", kMain, 1, "txtDescLibera", masked(50, "Desc. libera")},
    {"Note", "Note", kMain, 1, "txtNote", memo("Note")},
};

constexpr Definition kOggetti[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Descrizione", "Titolo", kMain, 0, "txtTitolo", text(100, "Descriz.")},
    {"Utilizzo", "TABUtilizzoID", kDetail, 0, "cboUtilizzo", combo("Utilizzo", "UTILIZZO", 6)},
    {"Genere", "TABGenereID", kMain, 0, "cboGenere", combo("Genere", "GENERE", 6)},
    {"Produttore", "TABEditoreID", kMain, 0, "cboProduttore", combo("Produttore", "PRODUTT", 6)},
    {"Categoria", "TABCategoriaID", kDetail, 0, "cboCategoria", combo("Categoria", "CATEGORIA", 6)},
    {"Dimensioni", "Dim", kMain, 0, "txtDim", digits("99999", "Dimensioni")},
    {"Tipo dimensioni", "TABTipoDimID", kMain, 0, "cboTipoDim", combo("Dimensioni", "TIPODIM", 6)},
    {"Nazione", "TABNazioneID", kMain, 0, "cboNazione", combo("Nazione", "NAZIONE", -1)},
    {"Quantita'", "Numero", kDetail, 0, "txtNumero", digits("9999", "Quantita'")},
    {"Libero 1", "TabLibero1ID", kMain, 1, "cboLibero1", combo("Libero 1", "LIBERO1", 6)},
    {"Libero 2", "TabLibero2ID", kMain, 1, "cboLibero2", combo("Libero 2", "LIBERO2", 6)},
    {"Descr. libera", "DescLibera", kMain, 1, "txtDescLibera", masked(50, "Desc. libera")},
    {"Note", "Note", kMain, 1, "txtNote", memo("Note")},
};

constexpr Definition kPersone[] = {
    {"Codice", "Cod", kMain, 0, "txtCod", text(15, "Codice")},
    {"Denominazione", "Titolo", kMain, 0, "txtTitolo", text(100, "Denomin.", kTipDenominazione)},
    {"Titolo", "TABTitoloID", kDetail, 0, "cboTit", combo("Denomin.", "TITOLO", 7, "TitoloPersona")},
    {"Indirizzo", "Indirizzo", kDetail, 0, "txtIndirizzo", text(150, "Indirizzo")},
    {"CAP", "cap", kDetail, 0, "txtCap", text(6, "CAP")},
    {"Citta", "Citta", kDetail, 0, "txtCitta", text(100, "Citta'")},
    {"Provincia", "Provincia", kDetail, 0, "txtProv", text(2, "Prov.")},
    {"Nazione", "TABNazioneID", kMain, 0, "cboNazione", combo("Nazione", "NAZIONE", -1)},
    {"Zona", "TABZonaID", kDetail, 0, "cboZona", combo("Zona", "ZONA", 7)},
    {"Riferimento", "Riferimento", kDetail, 0, "txtRif", text(100, "Riferim.", "Persona di riferimento")},
    {"Lingua", "TABLinguaID", kMain, 0, "cboLingua", combo("Lingua", "LINGUA", -1)},
    {"Categoria", "TABGenereID", kMain, 0, "cboGenere", combo("Categoria", "GENERE", 7)},
    {"Rapporti", "TabStatoID", kMain, 0, "cboStato", combo("Rapporti", "STATO", 7)},
    {"Codice fiscale", "CodFisc", kDetail, 0, "txtCodFisc", text(20, "Cod. fisc.")},
    {"Partita IVA", "PartIva", kDetail, 0, "txtPartIva", text(20, "Part. IVA")},
    {"Telefono 1", "Tel1", kDetail, 1, "txtTel(0)", text(18, "Telefono 1")},
    {"Tipo tel. 1", "TABTel1ID", kDetail, 1, "cboTipoTel(0)", combo("", "TIPOTEL1", 7, "TipoTel1")},
    {"Telefono 2", "Tel2", kDetail, 1, "txtTel(1)", text(18, "Telefono 2")},
    {"Tipo tel. 2", "TABTel2ID", kDetail, 1, "cboTipoTel(1)", combo("", "TIPOTEL2", 7, "TipoTel2")},
    {"Telefono 3", "Tel3", kDetail, 1, "txtTel(2)", text(18, "Telefono 3")},
    {"Tipo tel. 3", "TABTel3ID", kDetail, 1, "cboTipoTel(2)", combo("", "TIPOTEL3", 7, "TipoTel3")},
    {"Telefono 4", "Tel4", kDetail, 1, "txtTel(3)", text(18, "Telefono 4")},
    {"Tipo tel. 4", "TABTel4ID", kDetail, 1, "cboTipoTel(3)", combo("", "TIPOTEL4", 7, "TipoTel4")},
    {"Telefono 5", "Tel5", kDetail, 1, "txtTel(4)", text(18, "Telefono 5")},
    {"Tipo tel. 5", "TABTel5ID", kDetail, 1, "cboTipoTel(4)", combo("", "TIPOTEL5", 7, "TipoTel5")},
    {"E-Mail", "email", kDetail, 1, "txtEmail", text(50, "E-Mail")},
    {"Indirizzo web", "Web", kDetail, 1, "txtWeb", text(50, "Web")},
    {"Libero 1", "TabLibero1ID", kMain, 2, "cboLibero1", combo("Libero 1", "LIBERO1", 7)},
    {"Libero 2", "TabLibero2ID", kMain, 2, "cboLibero2", combo("Libero 2", "LIBERO2", 7)},
    {"Descr. libera", "DescLibera", kMain, 2, "txtDescLibera", masked(50, "Desc. libera")},
    {"Note", "Note", kMain, 2, "txtNote", memo("Note")},
};

constexpr Definition kArticoli[] = {
    {"Titolo", "Titolo", kMain, -1, "txtRivTitolo", text(150, "Titolo")},
    {"Sottotitolo", "Sottotitolo", kMain, -1, "txtRivSottotitolo", text(150, "Sottotitolo")},
    {"Argomento", "TABArgomentoID", kMain, -1, "cboRivArgomento", combo("Argomento", "ARGOMENTO", 8)},
    {"Autore", "TABAutoreID", kMain, -1, "cboRivAutore", combo("Autore", "AUTORE", 8)},
    {"Pagina", "Pagina", kMain, -1, "txtRivPagina", digits("999", "Pagina")},
    {"Nr. pagine", "NrPagine", kMain, -1, "txtRivNrPagine", digits("999", "Nr. pagine")},
    {"Note", "Note", kMain, -1, "txtRivNote", memo("Note")},
};

constexpr Definition kBrani[] = {
    {"Nr. brano", "NrBrano", kMain, -1, "txtSubAudNrBrano", digits("999", "Nr. brano")},
    {"Durata", "Durata", kMain, -1, "txtSubAudDurata", duration("Durata")},
    {"Nr. supporto", "NrSupporto", kMain, -1, "txtSubAudNrSupporto", digits("99", "Supporto nr.")},
    {"Titolo", "Titolo", kMain, -1, "txtSubAudTitolo", text(100, "Titolo")},
    {"Autore", "TABAutoreID", kMain, -1, "cboSubAudAutore", combo("Autore", "AUTORE", 2)},
    {"Genere", "TABGenereID", kMain, -1, "cboSubAudGenere", combo("Genere", "GENERE", 2)},
    {"Autore testo", "TABAutoreTestoID", kMain, -1, "cboSubAudAutoreTesto", combo("Autore testo", "AUTTESTO", 2)},
    {"Note", "Note", kMain, -1, "txtSubAudNote", memo("Note")},
};

constexpr Definition kContatti[] = {
    {"Data", "Data", kMain, -1, "txtPerDta", date("Data", "cmdCalendAcq")},
    {"Iniziativa", "TABIniziativaID", kMain, -1, "cboPerIniziativa", combo("Iniziativa", "INIZIATIVA", 10)},
    {"Modo", "TABModoID", kMain, -1, "cboPerModo", combo("Modo", "MODO", 10)},
    {"Motivo", "TABMotivoID", kMain, -1, "cboPerMotivo", combo("Motivo", "MOTIVO", 10)},
    {"Note", "Note", kMain, -1, "txtPerNote", memo("Note")},
};

// What all collections of things say of their things.
constexpr Definition kAccessorie[] = {
    {"Proprietario", "TabProprietaID", kMain, 2, "cboProprieta", combo("Proprietario", "PROPRIETA", -1)},
    {"Stato", "TabStatoID", kMain, 2, "cboStato", combo("Condizioni / stato", "STATO", -1)},
    {"Luogo di acquisto", "TabDoveAcqID", kMain, 2, "cboDoveAcq", combo("Luogo di acquisto", "DOVEACQ", -1)},
    {"Data di acquisto", "DtaAcq", kMain, 2, "txtDtaAcq", date("Data di acquisto", "cmdCalendAcq")},
    {"Valore", "Valore", kMain, 2, "txtValore", digits("999999999999", "Valore Lit.", "#,##0")},
    {"Posizione", "TabPosID", kMain, 2, "cboPos", combo("Posizione", "POS", -1)},
    {"Data posizionam.", "DtaPos", kMain, 2, "txtDtaPos", date("Data posizionam.", "cmdCalendPos")},
    {"Descr. pos.", "DescPos", kMain, 2, "txtDescPos", text(50, "Descr. posiz.")},
    {"Valutazione", "Voto", kMain, 2, "txtVoto", digits("99", "Valutazione (0 - 99)", "0")},
};
// clang-format on

// A collection's fields: its own, then those that it shares with others.
struct Fields {
  std::span<const Definition> own;
  std::span<const Definition> shared;
};

constexpr Fields kFields[kRaccolte] = {
    {kLibri, kAccessorie},    {kRiviste, kAccessorie},
    {kAudio, kAccessorie},    {kVideo, kAccessorie},
    {kSoftware, kAccessorie}, {kMedicinali, kAccessorie},
    {kOggetti, kAccessorie},  {kPersone, {}},
    {kArticoli, {}},          {kBrani, {}},
    {kContatti, {}},
};
static_assert(std::ranges::all_of(kFields, [](const Fields& fields) {
  return fields.own.size() + fields.shared.size() <= kCampi;
}));

const char* typeOf(BoxKind kind) {
  switch (kind) {
    case BoxKind::Digits:
      return TXTNUM;
    case BoxKind::Date:
      return TXTDTA;
    case BoxKind::Time:
      return TXTTIM;
    case BoxKind::Combo:
      return CBO;
    case BoxKind::Check:
      return CHK;
    default:
      return TXTSTR;
  }
}

tCampo fieldOf(const Definition& d) {
  return {.iPagina = d.iPagina,
          .bPrincipale = d.bPrincipale,
          .sTipo = QString::fromLatin1(typeOf(d.box.kind)),
          .sTitolo = QString::fromUtf8(d.sTitolo),
          .sCampoDB = QString::fromLatin1(d.sCampoDB),
          .sCodTab = QString::fromLatin1(d.box.listCode),
          .iRacTab = d.box.listCollection,
          .sControllo = QString::fromLatin1(d.control),
          .box = d.box};
}

[[noreturn]] void outside(int iRac, int iCampo) {
  throw store::Failure(
      store::failure::kSubscript,
      QStringLiteral("Indice di campo fuori dai limiti: %1, %2").arg(iRac).arg(iCampo));
}

}  // namespace

Campi aCampi;

Campi::Campi() {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    auto row = rows_[i].begin();
    for (const auto& part : {kFields[i].own, kFields[i].shared}) {
      row = std::transform(part.begin(), part.end(), row, fieldOf);
    }
  }
}

tCampo& Campi::operator()(int iRac, int iCampo) {
  if (iRac < 0 || iRac >= static_cast<int>(rows_.size()) || iCampo < 0 || iCampo >= kCampi) {
    outside(iRac, iCampo);
  }
  return rows_[static_cast<std::size_t>(iRac)][static_cast<std::size_t>(iCampo)];
}

int iNumeroCampi(int iRac) {
  int j = 0;
  while (j < kCampi && !aCampi(iRac, j).sTipo.isEmpty()) ++j;
  return j;
}

QString sCampoQualificato(int iRac, int iCampo) {
  const tRaccolta& raccolta = aRaccolte(iRac);
  const tCampo& campo = aCampi(iRac, iCampo);
  return (campo.bPrincipale ? raccolta.sTabPrincipale : raccolta.sTabDettaglio) + u'.' +
         campo.sCampoDB;
}

QString sVoceElenco(const tCampo& campo) {
  if (*campo.box.shownAs != '\0') return QString::fromLatin1(campo.box.shownAs);
  static const QRegularExpression key(QStringLiteral("^TAB(.+)ID$"),
                                      QRegularExpression::CaseInsensitiveOption);
  return key.match(campo.sCampoDB).captured(1);
}

}  // namespace tavolix
