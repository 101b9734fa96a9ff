#pragma once

#include <QString>
#include <array>

#include "model/raccolte.h"

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

enum class BoxKind { Text, Memo, Masked, Digits, Date, Time, Combo, Check };

// How a field is entered. A box with the label of the one before, or with none, stands beside it.
struct Box {
  BoxKind kind = BoxKind::Text;
  const char* label = "";
  int maxLength = 0;          // of Text, Memo, Masked
  const char* mask = "";      // of Digits: one sign a digit
  const char* format = "";    // of Digits, while the box has not the focus
  const char* button = "";    // of Date: name of its calendar button
  const char* listCode = "";  // of Combo
  int listCollection = 0;     // of Combo: -1 for a list of all collections
  const char* shownAs = "";   // of Combo, where the list shows its text under another name
  const char* tip = "";
};

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
  Box box;
};

// The field table: aCampi(collection, field); bounds are checked, failure 9.
class Campi final {
 public:
  Campi();
  tCampo& operator()(int iRac, int iCampo);

 private:
  std::array<std::array<tCampo, kCampi>, kRaccolte> rows_;
};

extern Campi aCampi;

// Number of fields of a collection.
int iNumeroCampi(int iRac);
// "table.column" of a field.
QString sCampoQualificato(int iRac, int iCampo);
// The name under which the list of a collection shows the text of a CBO field.
QString sVoceElenco(const tCampo& campo);

}  // namespace tavolix
