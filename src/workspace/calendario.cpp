#include "workspace/calendario.h"

#include <QDate>

#include "core/modutil.h"

namespace tavolix {
namespace {

Giorno fromDate(const QDate& date) {
  return {date.day(), date.month(), date.year()};
}

QDate toDate(const Giorno& giorno) {
  return QDate(giorno.anno, giorno.mese, giorno.giorno);
}

}  // namespace

Giorno daNumeri(int giorno, int mese, int anno) {
  if (anno >= 0 && anno < 100) anno += anno < 30 ? 2000 : 1900;
  return fromDate(QDate(anno, 1, 1).addMonths(mese - 1).addDays(giorno - 1));
}

Giorno entroAnni(Giorno giorno) {
  if (giorno.anno < kPrimoAnno) giorno.anno = kPrimoAnno;
  if (giorno.anno > kUltimoAnno) giorno.anno = 2000;
  return cambiaMese(giorno, giorno.mese, giorno.anno);
}

Giorno cambiaMese(Giorno giorno, int mese, int anno) {
  if (mese < 1 || mese > 12) mese = 1;
  if (giorno.giorno < 0 || giorno.giorno > GiorniNelMese(mese, anno)) giorno.giorno = 1;
  return {giorno.giorno, mese, anno};
}

Giorno mesePrecedente(const Giorno& giorno) {
  if (giorno.mese > 1) return cambiaMese(giorno, giorno.mese - 1, giorno.anno);
  return cambiaMese(giorno, 12, std::max(giorno.anno - 1, kPrimoAnno));
}

Giorno meseSuccessivo(const Giorno& giorno) {
  if (giorno.mese < 12) return cambiaMese(giorno, giorno.mese + 1, giorno.anno);
  return cambiaMese(giorno, 1, std::min(giorno.anno + 1, kUltimoAnno));
}

Giorno spostaGiorni(const Giorno& giorno, int giorni) {
  const QDate moved = toDate(giorno).addDays(giorni);
  return moved.year() < kPrimoAnno || moved.year() > kUltimoAnno ? giorno : fromDate(moved);
}

int primaCella(int mese, int anno) {
  return QDate(anno, mese, 1).dayOfWeek() - 1;
}

int giornoInCella(int cella, int mese, int anno) {
  const int giorno = cella - primaCella(mese, anno) + 1;
  return giorno < 1 || giorno > GiorniNelMese(mese, anno) ? 0 : giorno;
}

}  // namespace tavolix
