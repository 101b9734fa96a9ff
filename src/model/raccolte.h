#pragma once

#include <QStringList>
#include <array>

namespace platform {
class Form;
}

namespace tavolix {

inline constexpr int kRaccolte = 11;  // the eight collections and their three sub-collections
inline constexpr int kRaccoltePrincipali = 8;

// A collection: which query lists it, which tables hold it, which form shows it. The index in
// aRaccolte is its identity in the archive (TipoRac), in the tabs and in the settings.
struct tRaccolta {
  QString sQuery;
  QString sFiltro;  // in force now: empty, or a clause that begins with " WHERE "
  QString sOrdine;  // in force now: empty, or a clause that begins with " ORDER BY "
  QString sNome;
  QString sCampoPadre;
  QString sRifPadre;
  QString sTabPrincipale;
  QString sCampoLegame;
  QString sTabDettaglio;
  QString sCampoID;
  int iSottoRaccolta = -1;
  platform::Form* oForm = nullptr;  // set by CaricaRegistroRaccolte
  QString sForm;                    // the form's name
  QStringList sPagine;              // captions of the form's pages; none for a panel
};

// The registry: bounds are checked, an index outside is failure 9.
class Raccolte final {
 public:
  Raccolte();
  tRaccolta& operator()(int index);

 private:
  std::array<tRaccolta, kRaccolte> rows_;
};

extern Raccolte aRaccolte;
extern int iRacCorr;  // the current collection, -1 before the first

// The stored query that lists a collection, as the field table makes it: all columns of its tables,
// and the text behind each of its list fields under the name of sVoceElenco.
QString sQueryElenco(int iRac);

// The list of a collection as a query, with its filter and order.
QString sTestoElenco(const tRaccolta& raccolta);

}  // namespace tavolix
