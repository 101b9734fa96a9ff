#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace tavolix::report {

// A report as its file describes it (docs/reports.md). Lengths are units of 1/720 inch: ten to a
// point, so that texts are laid out alike for screen, printer and PDF.
inline constexpr double kUnitsPerInch = 720;
inline constexpr double kUnitsPerMillimetre = kUnitsPerInch / 25.4;
inline constexpr double kUnitsPerPoint = 10;

enum class Quantity {
  Literal,
  Field,
  Count,
  Sum,
  Average,
  Share,
  Page,
  Pages,
  Date,
  Archive,
  Title,
  Filter
};

enum class Format {
  Plain,
  Number,
  Money,
  Date,
  LongDate,
  Duration,
  YesNo,
  Mark,
  List,
  Percent,
  Capitals
};

// A part of a text: a literal, a field or a quantity.
struct Piece {
  Quantity quantity = Quantity::Literal;
  QString literal;
  int field = -1;  // of Field: place in Section::fields
  int sum = -1;    // of Sum, Average and Share: place in Section::sums; -1 counts rows
  std::optional<Format> format;
  int decimals = 0;
};

// Parts that stand together: an optional run is left out where none of its fields has a value.
struct Run {
  std::vector<Piece> pieces;
  bool isOptional = false;
};

enum class Comparison { Filled, Empty, Equal, Unequal, Less, Greater };

// When an element is drawn: by a field's value beside a text, a number or today.
struct Condition {
  int field = -1;
  Comparison comparison = Comparison::Filled;
  QString operand;
};

struct Style {
  QString family;
  double size = 9 * kUnitsPerPoint;
  bool bold = false;
  bool italic = false;
  QColor color = Qt::black;
  Qt::Alignment alignment = Qt::AlignLeft;
  bool operator==(const Style&) const = default;
};

enum class Shape { Text, Line, Box };

struct Element {
  Shape shape = Shape::Text;
  QRectF place;
  std::vector<Run> runs;
  int style = 0;  // place in Definition::styles
  bool grows = false;
  double penWidth = 0;
  QColor color = Qt::black;
  QColor fill;  // of Box, invalid for none
  std::optional<Condition> condition;
};

struct Band {
  double height = 0;
  bool keepsTogether = true;
  bool keepsWithNext = false;
  bool startsPage = false;
  bool skipsEmpty = false;  // not drawn where all its fields are empty
  std::vector<Element> elements;
};
using Bands = std::vector<Band>;

// A source of rows and what is drawn of it. `fields` are the names its bands use.
struct Section {
  QString source;
  QStringList fields;
  QStringList sums;
  Bands head, detail, foot;
};

struct Group {
  int field = -1;
  bool repeatsHead = true;
  Bands head, foot;
};

// Rows of another source below each row of the report: those whose `key` has the value of the
// report's field `link`.
struct Subreport {
  QString name;
  QString key;
  int link = -1;
  QString order;
  Section rows;
};

struct Definition {
  QString title;
  double width = 210 * kUnitsPerMillimetre;
  double height = 297 * kUnitsPerMillimetre;
  double left = 0, top = 0, right = 0, bottom = 0;  // margins
  int columns = 1;
  double gap = 0;
  std::vector<Style> styles;
  Section main;  // head and foot of the whole report
  Bands pageHead, pageFoot;
  std::vector<Group> groups;
  std::vector<Subreport> subreports;
  QString order;           // of the rows, empty for the source's own
  bool usesWhole = false;  // totals of all rows are told before their end

  double columnWidth() const { return (width - left - right - gap * (columns - 1)) / columns; }
};

}  // namespace tavolix::report
