#pragma once

#include <QString>
#include <array>

namespace platform {
class BoundControl;
}

namespace tavolix {

inline constexpr int kCampi = 46;  // the most fields a collection can have

// Type codes of a field.
inline constexpr const char* TXTSTR = "TXTSTR";  // free text
inline constexpr const char* TXTNUM = "TXTNUM";  // number
inline constexpr const char* TXTDTA = "TXTDTA";  // date
inline constexpr const char* TXTTIM = "TXTTIM";  // duration, in seconds
inline constexpr const char* CBO = "CBO";        // value of a lookup list
inline constexpr const char* CHK = "CHK";        // yes or no

// A field of a collection. A new field is one new row of the table in campi.cpp.
struct tCampo {
  platform::BoundControl* oControllo = nullptr;  // set by CaricaCampi
  int iPagina = 0;
  bool bPrincipale = false;  // the column lies in the collection's main table
  QString sTipo;             // empty behind a collection's last field
  QString sTitolo;
  QString sCampoDB;
  QString sCodTab;
  int iRacTab = 0;
  QString sControllo;  // the control's name on the collection's form
};

// The field table: aCampi(collection, field); bounds are checked, failure 9.
class Campi final {
 public:
  Campi();
  tCampo& operator()(int iRac, int iCampo);

 private:
  std::array<std::array<tCampo, kCampi>, 11> rows_;
};

extern Campi aCampi;

// Number of fields of a collection.
int iNumeroCampi(int iRac);
// "table.column" of a field.
QString sCampoQualificato(int iRac, int iCampo);

}  // namespace tavolix
