#pragma once

#include <QByteArray>
#include <functional>
#include <random>
#include <vector>

namespace damage {

// A way to spoil an archive's file; each call spoils another place.
struct Kind {
  const char* name;
  std::function<void(QByteArray& file, std::mt19937& random)> spoil;
  bool isRefused = false;       // does not even open
  bool isOtherArchive = false;  // whole pages of another archive: nothing is wrong, all may be odd
};
const std::vector<Kind>& kinds();

}  // namespace damage
