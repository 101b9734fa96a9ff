#pragma once

// Words of which made-up texts are composed. Within each list every entry differs from the others,
// also without case: names put together from them are then all different.
namespace tavolix::builder::words {

// clang-format off
inline constexpr const char* kSurnames[] = {
    "Abbà", "Airò", "Alfieri", "Amadò", "Barbagallo", "Bassanì", "Bellocchio", "Benvenuti", "Bonomo",
    "Borghesi", "Brambilla", "Bruschetti", "Caffarelli", "Calabrò", "Camilleri", "Cannavò", "Caputo",
    "Carrà", "Casadei", "Cattaneo", "Cerruti", "Colombo", "Conti", "Corrà", "Costa", "Cusimano",
    "D'Agostino", "D'Alessandro", "D'Amico", "D'Angelo", "D'Ascenzo", "Dell'Acqua", "Dell'Orto",
    "De Niccolò", "De Santis", "Donà", "Esposito", "Fabbri", "Falcó", "Farinella", "Ferrero",
    "Fiorentini", "Foà", "Fontana", "Galli", "Gattuso", "Ghezzi", "Giuffrè", "Grassi", "Greco",
    "Guidi", "Iacono", "Landi", "Leonardi", "Lo Bianco", "Lombardi", "Longo", "Macrì", "Mancuso",
    "Marchetti", "Marinò", "Martini", "Mazzarà", "Melis", "Merlo", "Messina", "Mondadini", "Morabito",
    "Moretti", "Nardò", "Neri", "Nicolò", "Olivieri", "Orlando", "Pace", "Palumbo", "Parisi",
    "Pellegrini", "Piras", "Pistorì", "Quaranta", "Rinaldi", "Rivà", "Romanò", "Ruggeri", "Sala",
    "Salvatori", "Sanna", "Santorò", "Scalia", "Serra", "Silvestri", "Tagliabue", "Testa", "Tomasi",
    "Trovato", "Valenti", "Venturi", "Vitale", "Zanetti",
};

inline constexpr const char* kNames[] = {
    "Ada", "Adriano", "Agnese", "Alberto", "Aldo", "Alessandra", "Alice", "Ambrogio", "Andrea",
    "Angela", "Anna", "Antonio", "Barbara", "Beatrice", "Bruno", "Camilla", "Carlo", "Caterina",
    "Cecilia", "Cesare", "Chiara", "Claudio", "Cristina", "Daniele", "Davide", "Diana", "Domenico",
    "Donatella", "Edoardo", "Elena", "Elisa", "Emilio", "Enrico", "Ester", "Eugenio", "Fabio",
    "Federica", "Filippo", "Francesca", "Gabriele", "Gaetano", "Giacomo", "Ginevra", "Giorgio",
    "Giovanni", "Giulia", "Giuseppe", "Irene", "Ivano", "Laura", "Lea", "Leonardo", "Lidia",
    "Lorenzo", "Lucia", "Luigi", "Maddalena", "Marcello", "Margherita", "Maria", "Mario", "Marta",
    "Matteo", "Michele", "Monica", "Nicola", "Noè", "Olga", "Oreste", "Paola", "Pietro", "Renata",
    "Roberto", "Rosa", "Salvatore", "Sara", "Silvia", "Simone", "Sofia", "Stefano", "Teresa",
    "Tommaso", "Valeria", "Vincenzo",
};

// Beginnings, of one or two words.
inline constexpr const char* kStarts[] = {
    "Il mare", "La città", "L'amore", "Un'estate", "Il caffè", "La notte", "L'isola", "Il vento",
    "La felicità", "L'orologio", "Il giardino", "La virtù", "L'inverno", "Un'avventura", "La verità",
    "Il silenzio", "L'ombra", "La finestra", "Il papà", "L'università", "La neve", "Il tè",
    "L'orchestra", "La libertà", "Il ponte", "L'età", "La gioventù", "Il lunedì", "L'eredità",
    "La strada", "Il cielo", "Un'amicizia", "La metà", "Il ragù", "L'attesa", "La lettera",
    "Il viaggio", "L'addio", "La curiosità", "Il ritorno", "L'acqua", "La povertà", "Il segreto",
    "L'aurora", "La tribù", "Il bambù", "L'elefante", "La semplicità", "Il perché", "L'ultimo",
    "La pioggia", "Il comò", "L'identità", "La casa", "Il fiume", "L'umanità", "La musica",
    "Il canapè", "L'arcobaleno", "La bontà",
};

// What can follow, in two words.
inline constexpr const char* kPairs[] = {
    "della notte", "di città", "senza nome", "oltre l'orizzonte", "e l'acqua", "dopo l'inverno",
    "per tutti", "del venerdì", "in fondo", "senza perché", "e l'amore", "di lassù", "nella nebbia",
    "con l'ombrello", "del papà", "a metà", "sotto l'albero", "di Niccolò", "e l'estate",
    "tra l'erba", "della libertà", "che verrà", "che c'è", "del lunedì", "per un'ora", "al caffè",
    "senza età", "dietro l'angolo", "e l'addio", "della povertà", "d'altri tempi", "così lontano",
    "più vicino", "e l'isola", "della gioventù", "sull'altra riva", "nel bambù", "verso casa",
    "di mezz'estate", "e un'altra",
};

// What can follow, in one word.
inline constexpr const char* kSingles[] = {
    "dell'isola", "laggiù", "d'estate", "dell'anima", "però", "felice", "d'inverno", "quaggiù",
    "dell'alba", "insieme", "all'improvviso", "grande", "dell'università", "così", "breve",
    "d'argento", "celebre", "dell'amore", "perché", "fragile", "all'aperto", "gentile",
    "dell'ombra", "d'autunno", "semplice", "sull'acqua", "altrove", "dell'oro", "più", "ancora",
};

struct Town {
  const char* name;
  const char* province;
};

inline constexpr Town kTowns[] = {
    {"Forlì", "FC"}, {"Cantù", "CO"}, {"Nardò", "LE"}, {"Patti", "ME"}, {"Cefalù", "PA"},
    {"Mondovì", "CN"}, {"L'Aquila", "AQ"}, {"Sant'Antioco", "SU"}, {"Aosta", "AO"},
    {"Torino", "TO"}, {"Genova", "GE"}, {"Milano", "MI"}, {"Trento", "TN"}, {"Venezia", "VE"},
    {"Trieste", "TS"}, {"Bologna", "BO"}, {"Firenze", "FI"}, {"Ancona", "AN"}, {"Perugia", "PG"},
    {"Roma", "RM"}, {"Pescara", "PE"}, {"Campobasso", "CB"}, {"Napoli", "NA"}, {"Potenza", "PZ"},
    {"Bari", "BA"}, {"Reggio", "RC"}, {"Palermo", "PA"}, {"Cagliari", "CA"}, {"Viggiù", "VA"},
    {"Temù", "BS"},
};

inline constexpr const char* kStreets[] = {
    "Via Garibaldi", "Corso Italia", "Piazza della Libertà", "Via dell'Università", "Viale Europa",
    "Via Roma", "Vicolo dell'Orto", "Via XX Settembre", "Largo della Carità", "Via Sant'Agostino",
    "Via Verdi", "Piazza d'Armi", "Via della Trinità", "Corso Umberto", "Via dell'Acquedotto",
};
// clang-format on

}  // namespace tavolix::builder::words
