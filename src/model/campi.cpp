#include "model/campi.h"

#include <span>

#include "model/raccolte.h"
#include "store/failure.h"

namespace tavolix {
namespace {

constexpr bool kMain = true;
constexpr bool kDetail = false;

struct Definition {
  const char* sTipo;
  const char* sTitolo;
  const char* sCampoDB;
  const char* sCodTab;
  int iRacTab;
  bool bPrincipale;
  int iPagina;
  const char* control;
};

// clang-format off
constexpr Definition kLibri[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {TXTSTR, "Titolo", "Titolo", "", 0, kMain, 0, "txtTitolo"},
    {TXTSTR, "Sottotitolo", "SottoTitolo", "", 0, kDetail, 0, "txtLibSottoTitolo"},
    {CBO, "Autore", "TABAutoreID", "AUTORE", 0, kMain, 0, "cboAutore"},
    {CBO, "Genere", "TABGenereID", "GENERE", 0, kMain, 0, "cboGenere"},
    {CBO, "Editore", "TabEditoreID", "EDITORE", 0, kMain, 0, "cboEditore"},
    {CBO, "Lingua", "TabLinguaID", "LINGUA", -1, kMain, 0, "cboLingua"},
    {CBO, "Nazione", "TabNazioneID", "NAZIONE", -1, kMain, 0, "cboNazione"},
    {TXTNUM, "Anno", "Anno", "", 0, kMain, 0, "txtAnno"},
    {TXTNUM, "Dimensione", "Dim", "", 0, kMain, 0, "txtDim"},
    {CBO, "Tipo dimensione", "TabTipoDimID", "TIPODIM", 0, kMain, 0, "cboTipoDim"},
    {TXTSTR, "Edizione", "Edizione", "", 0, kDetail, 1, "txtLibEdizione"},
    {CBO, "Collana", "TabCollanaID", "COLLANA", 0, kDetail, 1, "cboLibCollana"},
    {TXTSTR, "Titolo originale", "TitoloOrig", "", 0, kDetail, 1, "txtLibTitoloOrig"},
    {TXTSTR, "Traduttore", "Traduttore", "", 0, kDetail, 1, "txtLibTraduttore"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 0, kMain, 1, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 0, kMain, 1, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 1, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 1, "txtNote"},
    {CBO, "Proprietario", "TabProprietaID", "PROPRIETA", -1, kMain, 2, "cboProprieta"},
    {CBO, "Stato", "TabStatoID", "STATO", -1, kMain, 2, "cboStato"},
    {CBO, "Luogo di acquisto", "TabDoveAcqID", "DOVEACQ", -1, kMain, 2, "cboDoveAcq"},
    {TXTDTA, "Data di acquisto", "DtaAcq", "", 0, kMain, 2, "txtDtaAcq"},
    {TXTNUM, "Valore", "Valore", "", 0, kMain, 2, "txtValore"},
    {CBO, "Posizione", "TabPosID", "POS", -1, kMain, 2, "cboPos"},
    {TXTDTA, "Data posizionam.", "DtaPos", "", 0, kMain, 2, "txtDtaPos"},
    {TXTSTR, "Descr. pos.", "DescPos", "", 0, kMain, 2, "txtDescPos"},
    {TXTNUM, "Valutazione", "Voto", "", 0, kMain, 2, "txtVoto"},
};

constexpr Definition kRiviste[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {CBO, "Testata", "TABTestataID", "TESTATA", 1, kDetail, 0, "cboTestata"},
    {TXTNUM, "Numero", "Numero", "", 0, kDetail, 0, "txtNumero"},
    {CBO, "Periodicita'", "TABPeriodicitaID", "PERIODIC", 1, kDetail, 0, "cboPeriodicita"},
    {TXTDTA, "Data", "Data", "", 0, kDetail, 0, "txtData"},
    {CBO, "Genere", "TABGenereID", "GENERE", 1, kMain, 0, "cboGenere"},
    {CBO, "Editore", "TABEditoreID", "EDITORE", 1, kMain, 0, "cboEditore"},
    {CBO, "Nazione", "TABNazioneID", "NAZIONE", -1, kMain, 0, "cboNazione"},
    {CBO, "Lingua", "TABLinguaID", "LINGUA", -1, kMain, 0, "cboLingua"},
    {TXTNUM, "Numero pagine", "Dim", "", 0, kMain, 0, "txtDim"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 1, kMain, 1, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 1, kMain, 1, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 1, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 1, "txtNote"},
    {CBO, "Proprietario", "TabProprietaID", "PROPRIETA", -1, kMain, 2, "cboProprieta"},
    {CBO, "Stato", "TabStatoID", "STATO", -1, kMain, 2, "cboStato"},
    {CBO, "Luogo di acquisto", "TabDoveAcqID", "DOVEACQ", -1, kMain, 2, "cboDoveAcq"},
    {TXTDTA, "Data di acquisto", "DtaAcq", "", 0, kMain, 2, "txtDtaAcq"},
    {TXTNUM, "Valore", "Valore", "", 0, kMain, 2, "txtValore"},
    {CBO, "Posizione", "TabPosID", "POS", -1, kMain, 2, "cboPos"},
    {TXTDTA, "Data posizionam.", "DtaPos", "", 0, kMain, 2, "txtDtaPos"},
    {TXTSTR, "Descr. pos.", "DescPos", "", 0, kMain, 2, "txtDescPos"},
    {TXTNUM, "Valutazione", "Voto", "", 0, kMain, 2, "txtVoto"},
};

constexpr Definition kAudio[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {TXTSTR, "Titolo", "Titolo", "", 0, kMain, 0, "txtTitolo"},
    {CBO, "Autore", "TABAutoreID", "AUTORE", 2, kMain, 0, "cboAutore"},
    {CBO, "Genere", "TABGenereID", "GENERE", 2, kMain, 0, "cboGenere"},
    {CBO, "Casa discografica", "TABEditoreID", "EDITORE", 2, kMain, 0, "cboEditore"},
    {CBO, "Nazione", "TABNazioneID", "NAZIONE", -1, kMain, 0, "cboNazione"},
    {TXTNUM, "Anno", "Anno", "", 0, kMain, 0, "txtAnno"},
    {CBO, "Lingua", "TABLinguaID", "LINGUA", -1, kMain, 0, "cboLingua"},
    {TXTTIM, "Durata", "Durata", "", 0, kDetail, 0, "txtAudDurata"},
    {CBO, "Supporto", "TABSupportoID", "SUPPORTO", 2, kDetail, 0, "cboAudSupporto"},
    {TXTNUM, "Nr. supporti", "NrSupporti", "", 0, kDetail, 0, "txtAudNrSupporti"},
    {CHK, "Originale", "Originale", "", 0, kDetail, 0, "chkAudOriginale"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 2, kMain, 1, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 2, kMain, 1, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 1, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 1, "txtNote"},
    {CBO, "Proprietario", "TabProprietaID", "PROPRIETA", -1, kMain, 2, "cboProprieta"},
    {CBO, "Stato", "TabStatoID", "STATO", -1, kMain, 2, "cboStato"},
    {CBO, "Luogo di acquisto", "TabDoveAcqID", "DOVEACQ", -1, kMain, 2, "cboDoveAcq"},
    {TXTDTA, "Data di acquisto", "DtaAcq", "", 0, kMain, 2, "txtDtaAcq"},
    {TXTNUM, "Valore", "Valore", "", 0, kMain, 2, "txtValore"},
    {CBO, "Posizione", "TabPosID", "POS", -1, kMain, 2, "cboPos"},
    {TXTDTA, "Data posizionam.", "DtaPos", "", 0, kMain, 2, "txtDtaPos"},
    {TXTSTR, "Descr. pos.", "DescPos", "", 0, kMain, 2, "txtDescPos"},
    {TXTNUM, "Valutazione", "Voto", "", 0, kMain, 2, "txtVoto"},
};

constexpr Definition kVideo[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {TXTSTR, "Titolo", "Titolo", "", 0, kMain, 0, "txtTitolo"},
    {TXTSTR, "Titolo originale", "TitoloOrig", "", 0, kDetail, 0, "txtTitoloOrig"},
    {TXTNUM, "Anno", "Anno", "", 0, kMain, 0, "txtAnno"},
    {CBO, "Regista", "TABAutoreID", "REGISTA", 3, kMain, 0, "cboRegista"},
    {CBO, "Genere", "TABGenereID", "GENERE", 3, kMain, 0, "cboGenere"},
    {CBO, "Distributore", "TABEditoreID", "DISTRIBUT", 3, kMain, 0, "cboDistributore"},
    {CBO, "Nazione", "TABNazioneID", "NAZIONE", -1, kMain, 0, "cboNazione"},
    {CBO, "Registrazione", "TABProvenID", "PROVEN", 3, kDetail, 0, "cboProvenienza"},
    {CBO, "Lingua", "TABLinguaID", "LINGUA", -1, kMain, 0, "cboLingua"},
    {CBO, "Supporto", "TABSupportoID", "SUPPORTO", 3, kDetail, 0, "cboSupporto"},
    {CBO, "Audio", "TABAudioID", "AUDIO", 3, kDetail, 0, "cboAudio"},
    {TXTTIM, "Durata", "Durata", "", 0, kDetail, 0, "txtDurata"},
    {TXTNUM, "Nr. traccia", "Traccia", "", 0, kDetail, 0, "txtNrTraccia"},
    {TXTTIM, "Inizio", "Inizio", "", 0, kDetail, 0, "txtInizio"},
    {TXTSTR, "Interpreti", "Attori", "", 0, kDetail, 1, "txtAttori"},
    {TXTSTR, "Premi vinti", "Riconoscim", "", 0, kDetail, 1, "txtRiconoscimenti"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 3, kMain, 1, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 3, kMain, 1, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 1, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 1, "txtNote"},
    {CBO, "Proprietario", "TabProprietaID", "PROPRIETA", -1, kMain, 2, "cboProprieta"},
    {CBO, "Stato", "TabStatoID", "STATO", -1, kMain, 2, "cboStato"},
    {CBO, "Luogo di acquisto", "TabDoveAcqID", "DOVEACQ", -1, kMain, 2, "cboDoveAcq"},
    {TXTDTA, "Data di acquisto", "DtaAcq", "", 0, kMain, 2, "txtDtaAcq"},
    {TXTNUM, "Valore", "Valore", "", 0, kMain, 2, "txtValore"},
    {CBO, "Posizione", "TabPosID", "POS", -1, kMain, 2, "cboPos"},
    {TXTDTA, "Data posizionam.", "DtaPos", "", 0, kMain, 2, "txtDtaPos"},
    {TXTSTR, "Descr. pos.", "DescPos", "", 0, kMain, 2, "txtDescPos"},
    {TXTNUM, "Valutazione", "Voto", "", 0, kMain, 2, "txtVoto"},
};

constexpr Definition kSoftware[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {TXTSTR, "Titolo", "Titolo", "", 0, kMain, 0, "txtTitolo"},
    {CBO, "Sistema", "TABSistemaID", "SISTEMA", 4, kDetail, 0, "cboSistema"},
    {CBO, "Genere", "TABGenereID", "GENERE", 4, kMain, 0, "cboGenere"},
    {CBO, "Produttore", "TABAutoreID", "PRODUTT", 4, kMain, 0, "cboProduttore"},
    {CBO, "Nazione", "TABNazioneID", "NAZIONE", -1, kMain, 0, "cboNazione"},
    {CBO, "Distributore", "TABEditoreID", "DISTRIBUT", 4, kMain, 0, "cboDistributore"},
    {CBO, "Lingua", "TABLinguaID", "LINGUA", -1, kMain, 0, "cboLingua"},
    {TXTSTR, "Nr. serie", "NrSerie", "", 0, kDetail, 0, "txtNrSerie"},
    {TXTNUM, "Anno", "Anno", "", 0, kMain, 0, "txtAnno"},
    {CBO, "Supporto", "TABSupportoID", "SUPPORTO", 4, kDetail, 0, "cboSupporto"},
    {TXTNUM, "Nr. supporti", "NrSupporti", "", 0, kDetail, 0, "txtNrSupporti"},
    {CHK, "Originale", "Originale", "", 0, kDetail, 0, "chkOriginale"},
    {TXTNUM, "Dimensioni", "Dim", "", 0, kMain, 0, "txtDim"},
    {CBO, "Tipo dimensioni", "TABTipoDimID", "TIPODIM", 4, kMain, 0, "cboTipoDim"},
    {CHK, "Installato", "Installato", "", 0, kDetail, 0, "chkInstallato"},
    {TXTSTR, "Configurazione", "Configurazione", "", 0, kDetail, 1, "txtConfig"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 4, kMain, 1, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 4, kMain, 1, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 1, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 1, "txtNote"},
    {CBO, "Proprietario", "TabProprietaID", "PROPRIETA", -1, kMain, 2, "cboProprieta"},
    {CBO, "Stato", "TabStatoID", "STATO", -1, kMain, 2, "cboStato"},
    {CBO, "Luogo di acquisto", "TabDoveAcqID", "DOVEACQ", -1, kMain, 2, "cboDoveAcq"},
    {TXTDTA, "Data di acquisto", "DtaAcq", "", 0, kMain, 2, "txtDtaAcq"},
    {TXTNUM, "Valore", "Valore", "", 0, kMain, 2, "txtValore"},
    {CBO, "Posizione", "TabPosID", "POS", -1, kMain, 2, "cboPos"},
    {TXTDTA, "Data posizionam.", "DtaPos", "", 0, kMain, 2, "txtDtaPos"},
    {TXTSTR, "Descr. pos.", "DescPos", "", 0, kMain, 2, "txtDescPos"},
    {TXTNUM, "Valutazione", "Voto", "", 0, kMain, 2, "txtVoto"},
};

constexpr Definition kMedicinali[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {TXTSTR, "Descrizione", "Titolo", "", 0, kMain, 0, "txtTitolo"},
    {CBO, "Genere", "TABGenereID", "GENERE", 5, kMain, 0, "cboGenere"},
    {CBO, "Produttore", "TABEditoreID", "PRODUTT", 5, kMain, 0, "cboProduttore"},
    {TXTNUM, "Dimensioni", "Dim", "", 0, kMain, 0, "txtDim"},
    {CBO, "Tipo dimensioni", "TABTipoDimID", "TIPODIM", 5, kMain, 0, "cboTipoDim"},
    {TXTDTA, "Data scadenza", "DtaScad", "", 0, kDetail, 0, "txtDtaScad"},
    {CHK, "Ricetta medica", "Ricetta", "", 0, kDetail, 0, "chkRicetta"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 5, kMain, 1, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 5, kMain, 1, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 1, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 1, "txtNote"},
    {CBO, "Proprietario", "TabProprietaID", "PROPRIETA", -1, kMain, 2, "cboProprieta"},
    {CBO, "Stato", "TabStatoID", "STATO", -1, kMain, 2, "cboStato"},
    {CBO, "Luogo di acquisto", "TabDoveAcqID", "DOVEACQ", -1, kMain, 2, "cboDoveAcq"},
    {TXTDTA, "Data di acquisto", "DtaAcq", "", 0, kMain, 2, "txtDtaAcq"},
    {TXTNUM, "Valore", "Valore", "", 0, kMain, 2, "txtValore"},
    {CBO, "Posizione", "TabPosID", "POS", -1, kMain, 2, "cboPos"},
    {TXTDTA, "Data posizionam.", "DtaPos", "", 0, kMain, 2, "txtDtaPos"},
    {TXTSTR, "Descr. pos.", "DescPos", "", 0, kMain, 2, "txtDescPos"},
    {TXTNUM, "Valutazione", "Voto", "", 0, kMain, 2, "txtVoto"},
};

constexpr Definition kOggetti[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {TXTSTR, "Descrizione", "Titolo", "", 0, kMain, 0, "txtTitolo"},
    {CBO, "Utilizzo", "TABUtilizzoID", "UTILIZZO", 6, kDetail, 0, "cboUtilizzo"},
    {CBO, "Genere", "TABGenereID", "GENERE", 6, kMain, 0, "cboGenere"},
    {CBO, "Produttore", "TABEditoreID", "PRODUTT", 6, kMain, 0, "cboProduttore"},
    {CBO, "Categoria", "TABCategoriaID", "CATEGORIA", 6, kDetail, 0, "cboCategoria"},
    {TXTNUM, "Dimensioni", "Dim", "", 0, kMain, 0, "txtDim"},
    {CBO, "Tipo dimensioni", "TABTipoDimID", "TIPODIM", 6, kMain, 0, "cboTipoDim"},
    {CBO, "Nazione", "TABNazioneID", "NAZIONE", -1, kMain, 0, "cboNazione"},
    {TXTNUM, "Quantita'", "Numero", "", 0, kDetail, 0, "txtNumero"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 6, kMain, 1, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 6, kMain, 1, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 1, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 1, "txtNote"},
    {CBO, "Proprietario", "TabProprietaID", "PROPRIETA", -1, kMain, 2, "cboProprieta"},
    {CBO, "Stato", "TabStatoID", "STATO", -1, kMain, 2, "cboStato"},
    {CBO, "Luogo di acquisto", "TabDoveAcqID", "DOVEACQ", -1, kMain, 2, "cboDoveAcq"},
    {TXTDTA, "Data di acquisto", "DtaAcq", "", 0, kMain, 2, "txtDtaAcq"},
    {TXTNUM, "Valore", "Valore", "", 0, kMain, 2, "txtValore"},
    {CBO, "Posizione", "TabPosID", "POS", -1, kMain, 2, "cboPos"},
    {TXTDTA, "Data posizionam.", "DtaPos", "", 0, kMain, 2, "txtDtaPos"},
    {TXTSTR, "Descr. pos.", "DescPos", "", 0, kMain, 2, "txtDescPos"},
    {TXTNUM, "Valutazione", "Voto", "", 0, kMain, 2, "txtVoto"},
};

constexpr Definition kPersone[] = {
    {TXTSTR, "Codice", "Cod", "", 0, kMain, 0, "txtCod"},
    {TXTSTR, "Denominazione", "Titolo", "", 0, kMain, 0, "txtTitolo"},
    {CBO, "Titolo", "TABTitoloID", "TITOLO", 7, kDetail, 0, "cboTit"},
    {TXTSTR, "Indirizzo", "Indirizzo", "", 0, kDetail, 0, "txtIndirizzo"},
    {TXTSTR, "CAP", "cap", "", 0, kDetail, 0, "txtCap"},
    {TXTSTR, "Citta", "Citta", "", 0, kDetail, 0, "txtCitta"},
    {TXTSTR, "Provincia", "Provincia", "", 0, kDetail, 0, "txtProv"},
    {CBO, "Nazione", "TABNazioneID", "NAZIONE", -1, kMain, 0, "cboNazione"},
    {CBO, "Zona", "TABZonaID", "ZONA", 7, kDetail, 0, "cboZona"},
    {TXTSTR, "Riferimento", "Riferimento", "", 0, kDetail, 0, "txtRif"},
    {CBO, "Lingua", "TABLinguaID", "LINGUA", -1, kMain, 0, "cboLingua"},
    {CBO, "Categoria", "TABGenereID", "GENERE", 7, kMain, 0, "cboGenere"},
    {CBO, "Rapporti", "TabStatoID", "STATO", 7, kMain, 0, "cboStato"},
    {TXTSTR, "Codice fiscale", "CodFisc", "", 0, kDetail, 0, "txtCodFisc"},
    {TXTSTR, "Partita IVA", "PartIva", "", 0, kDetail, 0, "txtPartIva"},
    {TXTSTR, "Telefono 1", "Tel1", "", 0, kDetail, 1, "txtTel(0)"},
    {CBO, "Tipo tel. 1", "TABTel1ID", "TIPOTEL1", 7, kDetail, 1, "cboTipoTel(0)"},
    {TXTSTR, "Telefono 2", "Tel2", "", 0, kDetail, 1, "txtTel(1)"},
    {CBO, "Tipo tel. 2", "TABTel2ID", "TIPOTEL2", 7, kDetail, 1, "cboTipoTel(1)"},
    {TXTSTR, "Telefono 3", "Tel3", "", 0, kDetail, 1, "txtTel(2)"},
    {CBO, "Tipo tel. 3", "TABTel3ID", "TIPOTEL3", 7, kDetail, 1, "cboTipoTel(2)"},
    {TXTSTR, "Telefono 4", "Tel4", "", 0, kDetail, 1, "txtTel(3)"},
    {CBO, "Tipo tel. 4", "TABTel4ID", "TIPOTEL4", 7, kDetail, 1, "cboTipoTel(3)"},
    {TXTSTR, "Telefono 5", "Tel5", "", 0, kDetail, 1, "txtTel(4)"},
    {CBO, "Tipo tel. 5", "TABTel5ID", "TIPOTEL5", 7, kDetail, 1, "cboTipoTel(4)"},
    {TXTSTR, "E-Mail", "email", "", 0, kDetail, 1, "txtEmail"},
    {TXTSTR, "Indirizzo web", "Web", "", 0, kDetail, 1, "txtWeb"},
    {CBO, "Libero 1", "TabLibero1ID", "LIBERO1", 7, kMain, 2, "cboLibero1"},
    {CBO, "Libero 2", "TabLibero2ID", "LIBERO2", 7, kMain, 2, "cboLibero2"},
    {TXTSTR, "Descr. libera", "DescLibera", "", 0, kMain, 2, "txtDescLibera"},
    {TXTSTR, "Note", "Note", "", 0, kMain, 2, "txtNote"},
};

constexpr Definition kArticoli[] = {
    {TXTSTR, "Titolo", "Titolo", "", 0, kMain, -1, "txtRivTitolo"},
    {TXTSTR, "Sottotitolo", "Sottotitolo", "", 0, kMain, -1, "txtRivSottotitolo"},
    {CBO, "Argomento", "TABArgomentoID", "ARGOMENTO", 8, kMain, -1, "cboRivArgomento"},
    {CBO, "Autore", "TABAutoreID", "AUTORE", 8, kMain, -1, "cboRivAutore"},
    {TXTNUM, "Pagina", "Pagina", "", 0, kMain, -1, "txtRivPagina"},
    {TXTNUM, "Nr. pagine", "NrPagine", "", 0, kMain, -1, "txtRivNrPagine"},
    {TXTSTR, "Note", "Note", "", 0, kMain, -1, "txtRivNote"},
};

constexpr Definition kBrani[] = {
    {TXTNUM, "Nr. brano", "NrBrano", "", 0, kMain, -1, "txtSubAudNrBrano"},
    {TXTTIM, "Durata", "Durata", "", 0, kMain, -1, "txtSubAudDurata"},
    {TXTNUM, "Nr. supporto", "NrSupporto", "", 0, kMain, -1, "txtSubAudNrSupporto"},
    {TXTSTR, "Titolo", "Titolo", "", 0, kMain, -1, "txtSubAudTitolo"},
    {CBO, "Autore", "TABAutoreID", "AUTORE", 2, kMain, -1, "cboSubAudAutore"},
    {CBO, "Genere", "TABGenereID", "GENERE", 2, kMain, -1, "cboSubAudGenere"},
    {CBO, "Autore testo", "TABAutoreTestoID", "AUTTESTO", 2, kMain, -1, "cboSubAudAutoreTesto"},
    {TXTSTR, "Note", "Note", "", 0, kMain, -1, "txtSubAudNote"},
};

constexpr Definition kContatti[] = {
    {TXTDTA, "Data", "Data", "", 0, kMain, -1, "txtPerDta"},
    {CBO, "Iniziativa", "TABIniziativaID", "INIZIATIVA", 10, kMain, -1, "cboPerIniziativa"},
    {CBO, "Modo", "TABModoID", "MODO", 10, kMain, -1, "cboPerModo"},
    {CBO, "Motivo", "TABMotivoID", "MOTIVO", 10, kMain, -1, "cboPerMotivo"},
    {TXTSTR, "Note", "Note", "", 0, kMain, -1, "txtPerNote"},
};

// clang-format on

constexpr std::span<const Definition> kDefinitions[] = {
    kLibri,   kRiviste, kAudio,    kVideo, kSoftware, kMedicinali,
    kOggetti, kPersone, kArticoli, kBrani, kContatti,
};

[[noreturn]] void outside(int iRac, int iCampo) {
  throw store::Failure(
      store::failure::kSubscript,
      QStringLiteral("Indice di campo fuori dai limiti: %1, %2").arg(iRac).arg(iCampo));
}

}  // namespace

Campi aCampi;

Campi::Campi() {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    std::size_t j = 0;
    for (const Definition& d : kDefinitions[i]) {
      rows_[i][j++] = {nullptr,
                       d.iPagina,
                       d.bPrincipale,
                       QString::fromUtf8(d.sTipo),
                       QString::fromUtf8(d.sTitolo),
                       QString::fromUtf8(d.sCampoDB),
                       QString::fromUtf8(d.sCodTab),
                       d.iRacTab,
                       QString::fromUtf8(d.control)};
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

}  // namespace tavolix
