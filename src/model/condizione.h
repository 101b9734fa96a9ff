#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <span>

namespace tavolix {

// A condition on a field as the user has put it together, and what it becomes in SQL.

// What stands in the value control that suits the field's type.
struct ValoreCondizione {
  QString sTesto;                 // TXTSTR and TXTNUM, as typed
  qint64 lVoce = 0;               // CBO: key of the value, 0 for the blank one
  std::optional<qint64> lGiorno;  // TXTDTA: day number, none if what was typed is no date
  bool bSpunta = false;           // CHK
};

struct Condizione {
  int iCampo = 0;
  QString sCondizione;
  ValoreCondizione valore;
};

// A condition that was put to a connector: "e.." or "o..".
struct RigaFiltro {
  QString sConnettore;
  Condizione condizione;
};

// A text of SQL, or why there is none: the message for the user and the row it is about.
struct Esito {
  QString sTesto;
  QString sRifiuto;  // empty if the text stands
  int iRiga = 0;
};

// True if a text is a number as the system's locale or SQL writes it.
bool bNumerico(const QString& sTesto);

// The conditions a field of a type offers, in their order, in the words of filter or find.
QStringList sCondizioniFiltro(const QString& sTipo);
QStringList sCondizioniTrova(const QString& sTipo);

// The filter clause of a collection: empty for no rows, else " WHERE " and the conditions, joined
// strictly from the first to the last.
Esito ClausolaFiltro(int iRac, std::span<const RigaFiltro> righe);
// The same for the records that have one value, as the archive stores it, in a field. Refused for
// what a filter has no condition for: times, and no value in anything but a text.
Esito ClausolaValore(int iRac, int iCampo, const QVariant& valore);
// The condition of a search in a collection.
Esito CondizioneTrova(int iRac, const Condizione& condizione);

}  // namespace tavolix
