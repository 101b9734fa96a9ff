#pragma once

namespace tavolix {

// The arithmetic of the month view: whole numbers only, months 1 to 12, years 1980 to 2030.
inline constexpr int kPrimoAnno = 1980;
inline constexpr int kUltimoAnno = 2030;
inline constexpr int kCelle = 37;  // seven in a row, Monday first: the most that a month needs

struct Giorno {
  int giorno = 1;
  int mese = 1;
  int anno = kPrimoAnno;
  bool operator==(const Giorno&) const = default;
};

// The date of a day, a month and a year that may lie outside their bounds: the rest goes on into
// the next month, or year. Years 0 to 29 are the 2000s, 30 to 99 the 1900s.
Giorno daNumeri(int giorno, int mese, int anno);
// A year that the calendar does not have becomes one that it has: 1980 before, 2000 behind.
Giorno entroAnni(Giorno giorno);
// Another month or year: a day that this one does not have becomes the 1st.
Giorno cambiaMese(Giorno giorno, int mese, int anno);
// A month on or back. At the ends only the month turns, the year stays.
Giorno mesePrecedente(const Giorno& giorno);
Giorno meseSuccessivo(const Giorno& giorno);
// Some days on or back, no further than the calendar goes.
Giorno spostaGiorni(const Giorno& giorno, int giorni);

// Cell of the first day of a month, 0 to 6.
int primaCella(int mese, int anno);
// Day in a cell, 0 for an empty one.
int giornoInCella(int cella, int mese, int anno);

}  // namespace tavolix
