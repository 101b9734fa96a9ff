#include "core/verbi.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "core/comandi.h"
#include "model/raccolte.h"

namespace tavolix {
namespace {

TEST(Verbs, AreFailuresWithTheirNameWhereNobodyFillsThem) {
  Verbo<int(int)> twice{"Raddoppia"};
  try {
    twice(2);
    FAIL();
  } catch (const store::Failure& failure) {
    EXPECT_EQ(failure.number(), store::failure::kItemNotFound);
    EXPECT_EQ(failure.description(), QString("Funzione 'Raddoppia' non disponibile"));
  }
  twice = [](int number) { return 2 * number; };
  EXPECT_EQ(twice(2), 4);
}

int runs = 0;

TEST(Commands, StandInTheirPlacesAndRunWhenTheyCan) {
  static constexpr Comando later[] = {{"mnuA", 30, "mnuTre", "Tre"}};
  static constexpr Comando area[] = {
      {"mnuA", 25, "mnuDue", "Due", "", 0, [] { ++runs; }, Quando::kRaccolta},
      {"mnuA", 10, "mnuUno", "Uno"},
      {nullptr, 0, "", "", "F3"},
      {nullptr, 0, "", "", "F4"}};
  for (const auto& table : {std::span<const Comando>(later), std::span<const Comando>(area),
                            std::span<const Comando>(later)}) {
    RegistraComandi(table);
  }
  QStringList names;
  for (const Comando* row : Comandi()) names << QString(row->nome) + row->tasti;
  EXPECT_EQ(names.join(' '), QString("F3 F4 mnuUno mnuDue mnuTre"));
  for (const int collection : {-1, 0}) {
    iRacCorr = collection;
    EseguiComando(area[0]);
  }
  EXPECT_EQ(runs, 1);
  iRacCorr = -1;
}

}  // namespace
}  // namespace tavolix
