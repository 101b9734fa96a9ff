#include "output/report_text.h"

#include <QRegularExpression>

namespace tavolix::report {
namespace {

struct Word {
  const char* name;
  Quantity quantity;
  bool takesField;
};
constexpr Word kWords[] = {
    {"conta", Quantity::Count, false},  {"somma", Quantity::Sum, true},
    {"media", Quantity::Average, true}, {"quota", Quantity::Share, true},
    {"pagina", Quantity::Page, false},  {"pagine", Quantity::Pages, false},
    {"data", Quantity::Date, false},    {"archivio", Quantity::Archive, false},
    {"titolo", Quantity::Title, false}, {"filtro", Quantity::Filter, false},
};

struct FormatName {
  const char* name;
  Format format;
};
constexpr FormatName kFormats[] = {
    {"numero", Format::Number},      {"lire", Format::Money},      {"data", Format::Date},
    {"datalunga", Format::LongDate}, {"durata", Format::Duration}, {"sino", Format::YesNo},
    {"segno", Format::Mark},         {"voce", Format::List},       {"percento", Format::Percent},
    {"maiuscolo", Format::Capitals},
};

QString quoted(const QString& text) {
  return u'"' + text + u'"';
}

// "numero", or "numero2" with two decimals.
bool readFormat(const QString& text, Piece& piece, QString& fault) {
  static const QRegularExpression pattern(QStringLiteral("^([a-z]+)([0-6]?)$"));
  const auto match = pattern.match(text);
  for (const FormatName& row : kFormats) {
    if (match.captured(1) != QLatin1String(row.name)) continue;
    piece.format = row.format;
    piece.decimals = match.captured(2).toInt();
    return true;
  }
  fault = QStringLiteral("formato %1 sconosciuto").arg(quoted(text));
  return false;
}

bool readQuantity(const QString& text, Section& section, Piece& piece, QString& fault) {
  const QString name = text.section(u' ', 0, 0);
  const QString field = text.section(u' ', 1).trimmed();
  for (const Word& word : kWords) {
    if (name != QLatin1String(word.name)) continue;
    piece.quantity = word.quantity;
    const bool share = word.quantity == Quantity::Share;
    if (word.takesField == field.isEmpty() && !share) break;
    if (!field.isEmpty()) piece.sum = placeOf(field, section.sums);
    return true;
  }
  fault = QStringLiteral("valore %1 sconosciuto").arg(quoted(u'@' + text));
  return false;
}

bool readPiece(const QString& text, Section& section, Piece& piece, QString& fault) {
  const QString name = text.section(u':', 0, 0).trimmed();
  const QString format = text.section(u':', 1).trimmed();
  if (!format.isEmpty() && !readFormat(format, piece, fault)) return false;
  if (name.startsWith(u'@')) return readQuantity(name.mid(1), section, piece, fault);
  if (name.isEmpty()) {
    fault = QStringLiteral("campo senza nome");
    return false;
  }
  piece.quantity = Quantity::Field;
  piece.field = placeOf(name, section.fields);
  return true;
}

class Reader final {
 public:
  Reader(const QString& text, Section& section, QString& fault)
      : text_(text), section_(section), fault_(fault) {}

  bool read() {
    runs_.emplace_back();
    while (at_ < text_.size()) {
      if (!readNext(text_[at_])) return false;
    }
    endLiteral();
    if (runs_.back().isOptional) fault_ = QStringLiteral("manca la parentesi \"]\"");
    return fault_.isEmpty();
  }
  std::vector<Run> take() { return std::move(runs_); }

 private:
  bool readNext(QChar sign) {
    if (sign == u'\\' && at_ + 1 < text_.size()) {
      literal_ += text_[at_ + 1];
      at_ += 2;
      return true;
    }
    if (sign == u'{') return readField();
    if (sign == u'[' || sign == u']') return turn(sign == u'[');
    literal_ += sign;
    ++at_;
    return true;
  }
  bool readField() {
    const qsizetype end = text_.indexOf(u'}', at_);
    if (end < 0) {
      fault_ = QStringLiteral("manca la parentesi \"}\"");
      return false;
    }
    endLiteral();
    Piece piece;
    if (!readPiece(text_.mid(at_ + 1, end - at_ - 1), section_, piece, fault_)) return false;
    runs_.back().pieces.push_back(piece);
    at_ = end + 1;
    return true;
  }
  bool turn(bool isOptional) {
    endLiteral();
    if (runs_.back().isOptional == isOptional) {
      fault_ = QStringLiteral("parentesi \"%1\" fuori posto").arg(text_[at_]);
      return false;
    }
    runs_.push_back({{}, isOptional});
    ++at_;
    return true;
  }
  void endLiteral() {
    if (literal_.isEmpty()) return;
    Piece piece;
    piece.literal = literal_;
    runs_.back().pieces.push_back(piece);
    literal_.clear();
  }

  const QString& text_;
  Section& section_;
  QString& fault_;
  qsizetype at_ = 0;
  QString literal_;
  std::vector<Run> runs_;
};

}  // namespace

int placeOf(const QString& name, QStringList& names) {
  for (int i = 0; i < names.size(); ++i) {
    if (names[i].compare(name, Qt::CaseInsensitive) == 0) return i;
  }
  names.append(name);
  return static_cast<int>(names.size()) - 1;
}

std::optional<std::vector<Run>> readRuns(const QString& text, Section& section, QString& fault) {
  Reader reader(text, section, fault);
  if (!reader.read()) return std::nullopt;
  return reader.take();
}

std::optional<Condition> readCondition(const QString& text, Section& section, QString& fault) {
  static const QRegularExpression pattern(
      QStringLiteral("^\\s*(non\\s+)?([\\w.]+)\\s*(?:(=|<>|<|>)\\s*(.*?))?\\s*$"),
      QRegularExpression::UseUnicodePropertiesOption);
  const auto match = pattern.match(text);
  const bool negated = !match.captured(1).isEmpty();
  const QString sign = match.captured(3);
  if (!match.hasMatch() || (negated && !sign.isEmpty())) {
    fault = QStringLiteral("condizione %1 non valida").arg(quoted(text));
    return std::nullopt;
  }
  Condition condition{placeOf(match.captured(2), section.fields),
                      negated ? Comparison::Empty : Comparison::Filled, match.captured(4)};
  if (sign == u'=') condition.comparison = Comparison::Equal;
  if (sign == QLatin1String("<>")) condition.comparison = Comparison::Unequal;
  if (sign == u'<') condition.comparison = Comparison::Less;
  if (sign == u'>') condition.comparison = Comparison::Greater;
  return condition;
}

}  // namespace tavolix::report
