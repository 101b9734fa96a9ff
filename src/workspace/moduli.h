#pragma once

#include <QString>
#include <span>

namespace tavolix {

enum class Kind { Text, Memo, Masked, Digits, Date, Time, Combo, Check };

// How a field is entered; its page, control name and column stand in the field table, at the same
// row. A box with the label of the one before, or with none, stands beside it.
struct Box {
  Kind kind;
  int maxLength;       // of Text, Memo, Masked
  const char* mask;    // of Digits
  const char* format;  // of Digits, while the box has not the focus
  const char* label;
};

struct Tip {
  const char* control;
  const char* text;
};

struct CalendarButton {
  const char* box;
  const char* button;
};

// A collection's form, or a sub-collection's panel: its boxes in the order of the field table, the
// shared ones last.
struct Module {
  const char* form;
  std::span<const Box> boxes;
  std::span<const Box> shared;
  std::span<const char* const> pages;  // none for a panel
  std::span<const Tip> tips;
};

// By the collections' indexes, the sub-collections behind them.
std::span<const Module> modules();
const Box& boxOf(const Module& module, int campo);
std::size_t boxCount(const Module& module);
// Name of the calendar button beside a date box, null if it has none.
const char* calendarButtonOf(const QString& box);

}  // namespace tavolix
