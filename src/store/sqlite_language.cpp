#include "store/sqlite_language.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <memory>
#include <string_view>

#include "store/text_order.h"

namespace store {
namespace {

int compareCallback(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return compareText({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                     {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

std::string_view textArgument(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

// The pattern is compiled once for all rows of a statement.
void likeCallback(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL ||
      sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
    sqlite3_result_null(context);
    return;
  }
  auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 1));
  std::unique_ptr<LikePattern> own;
  if (pattern == nullptr) {
    own = std::make_unique<LikePattern>(textArgument(arguments[1]));
    pattern = own.get();
  }
  const LikeAnswer answer = pattern->matches(textArgument(arguments[0]));
  sqlite3_result_int(context, answer == LikeAnswer::Yes ? 1 : 0);
  if (answer == LikeAnswer::TooComplex) {
    sqlite3_result_error(context, "pattern is too large for its text", -1);
  }
  if (own) {
    sqlite3_set_auxdata(context, 1, own.release(),
                        [](void* kept) { delete static_cast<LikePattern*>(kept); });
  }
}

// A whole number stands without decimals, others with a decimal comma.
void numberToText(sqlite3_context* context, double number) {
  constexpr double kMostDigits = 1e15;
  const bool whole = number == std::floor(number) && std::abs(number) < kMostDigits;
  std::array<char, 40> text{};
  sqlite3_snprintf(static_cast<int>(text.size()), text.data(), whole ? "%.0f" : "%.15g",
                   number + 0.0);
  std::replace(text.begin(), text.end(), '.', ',');
  sqlite3_result_text(context, text.data(), -1, SQLITE_TRANSIENT);
}

void textCallback(sqlite3_context* context, int, sqlite3_value** arguments) {
  const int type = sqlite3_value_type(arguments[0]);
  if (type == SQLITE_NULL) {
    sqlite3_result_null(context);
  } else if (type == SQLITE_FLOAT) {
    numberToText(context, sqlite3_value_double(arguments[0]));
  } else {
    const std::string_view text = textArgument(arguments[0]);
    sqlite3_result_text(context, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
  }
}

void addFunction(sqlite3* handle, const char* name, int arguments,
                 void (*function)(sqlite3_context*, int, sqlite3_value**)) {
  sqlite3_create_function_v2(handle, name, arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                             function, nullptr, nullptr, nullptr);
}

void sumStep(sqlite3_context* context, int, sqlite3_value** arguments) {
  auto* sum = static_cast<quint64*>(sqlite3_aggregate_context(context, sizeof(quint64)));
  if (sum != nullptr) *sum += keyMark(sqlite3_value_int64(arguments[0]));
}

void sumResult(sqlite3_context* context) {
  const auto* sum = static_cast<quint64*>(sqlite3_aggregate_context(context, 0));
  sqlite3_result_int64(context, sum == nullptr ? 0 : static_cast<sqlite3_int64>(*sum));
}

}  // namespace

void addLanguage(sqlite3* handle) {
  sqlite3_create_collation_v2(handle, "ITALIANO", SQLITE_UTF8, nullptr, compareCallback, nullptr);
  addFunction(handle, "tvx_like", 2, likeCallback);
  addFunction(handle, "tvx_text", 1, textCallback);
  sqlite3_create_function_v2(handle, "tvx_sum", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                             nullptr, sumStep, sumResult, nullptr);
}

}  // namespace store
