#pragma once

#include <QtGlobal>
#include <iostream>
#include <random>
#include <vector>

// Tests that look for faults by chance: how long they look, and what comes of a seed.
namespace harm {

// A number that the environment may set.
inline int setting(const char* name, int usual) {
  bool given = false;
  const int number = qEnvironmentVariableIntValue(name, &given);
  return given ? number : usual;
}

// TAVOLIX_CASES: how much is tried.
inline int casesWanted(int usual) {
  return setting("TAVOLIX_CASES", usual);
}

// TAVOLIX_SEED, told on the first call.
inline unsigned seed(unsigned usual = 1) {
  static const auto chosen =
      static_cast<unsigned>(setting("TAVOLIX_SEED", static_cast<int>(usual)));
  [[maybe_unused]] static const auto& told = std::cout << "TAVOLIX_SEED=" << chosen << std::endl;
  return chosen;
}

// A number from 0 to `end`, without it.
template <typename Number>
Number below(std::mt19937& random, Number end) {
  return static_cast<Number>(random() % static_cast<unsigned>(end));
}

template <typename List>
const auto& anyOf(std::mt19937& random, const List& list) {
  return std::begin(list)[below(random, std::size(list))];
}

}  // namespace harm
