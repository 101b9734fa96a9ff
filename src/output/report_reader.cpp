#include "output/report_reader.h"

#include <QXmlStreamReader>
#include <algorithm>

#include "output/report_text.h"
#include "store/failure.h"

namespace tavolix::report {
namespace {

constexpr int kMostElements = 3000;
constexpr int kMostGroups = 8;
constexpr int kMostSubreports = 8;
constexpr int kMostColumns = 12;
constexpr double kLongest = 2000;  // millimetres

struct Paper {
  const char* name;
  double width, height;
};
constexpr Paper kPapers[] = {{"A3", 297, 420}, {"A4", 210, 297}, {"A5", 148, 210}};

class Reader final {
 public:
  Reader(const QByteArray& content, const QString& fileName) : xml_(content), file_(fileName) {}

  Definition read() {
    if (!xml_.readNextStartElement()) broken();
    if (xml_.name() != QLatin1String("stampa")) fail(QStringLiteral("manca l'elemento <stampa>"));
    definition_.styles.emplace_back();
    styleNames_ << QString();
    readReport();
    requireRoom();
    return std::move(definition_);
  }

 private:
  [[noreturn]] void fail(const QString& why) const {
    throw store::Failure(
        kBadDefinition,
        QStringLiteral("%1, riga %2: %3").arg(file_).arg(xml_.lineNumber()).arg(why));
  }
  [[noreturn]] void broken() const {
    fail(xml_.hasError()
             ? QStringLiteral("il file non è in XML corretto (%1)").arg(xml_.errorString())
             : QStringLiteral("il file è vuoto"));
  }
  bool next() {
    const bool more = xml_.readNextStartElement();
    if (xml_.hasError()) broken();
    return more;
  }
  bool is(const char* name) const { return xml_.name() == QLatin1String(name); }
  [[noreturn]] void unknown() const {
    fail(QStringLiteral("elemento <%1> sconosciuto in questo posto").arg(xml_.name()));
  }

  // Takes the attributes of the element; each may be asked for, and none may be left.
  void takeAttributes() {
    attributes_ = xml_.attributes();
    asked_.clear();
  }
  void requireAllAsked() const {
    for (const QXmlStreamAttribute& attribute : attributes_) {
      if (asked_.contains(attribute.name().toString())) continue;
      fail(QStringLiteral("attributo \"%1\" sconosciuto").arg(attribute.name()));
    }
  }
  bool has(const char* name) const { return attributes_.hasAttribute(QLatin1String(name)); }
  QString text(const char* name, const QString& otherwise = {}) {
    asked_ << QString::fromLatin1(name);
    return has(name) ? attributes_.value(QLatin1String(name)).toString() : otherwise;
  }
  QString needed(const char* name) {
    QString value = text(name).trimmed();
    if (value.isEmpty()) fail(QStringLiteral("manca l'attributo \"%1\"").arg(QLatin1String(name)));
    return value;
  }
  [[noreturn]] void refuse(const char* name) const {
    fail(QStringLiteral("valore \"%1\" non valido per \"%2\"")
             .arg(attributes_.value(QLatin1String(name)), QLatin1String(name)));
  }
  double number(const char* name, double otherwise, double least, double most) {
    const QString value = text(name);
    if (!has(name)) return otherwise;
    bool isNumber = false;
    const double read = value.toDouble(&isNumber);
    if (!isNumber || !(read >= least && read <= most)) refuse(name);
    return read;
  }
  double length(const char* name, double otherwise = 0) {
    return number(name, otherwise, 0, kLongest) * kUnitsPerMillimetre;
  }
  bool yes(const char* name, bool otherwise) {
    const QString value = text(name);
    if (!has(name)) return otherwise;
    if (value != QLatin1String("si") && value != QLatin1String("no")) refuse(name);
    return value == QLatin1String("si");
  }
  QColor color(const char* name, const QColor& otherwise) {
    const QString value = text(name);
    if (!has(name)) return otherwise;
    const QColor read(value);
    if (!value.startsWith(u'#') || !read.isValid()) refuse(name);
    return read;
  }

  void readReport() {
    takeAttributes();
    definition_.title = text("titolo");
    definition_.main.source = needed("origine");
    definition_.order = text("ordine");
    requireAllAsked();
    while (next()) readPart();
  }
  void readPart() {
    if (is("foglio")) return readPaper();
    if (is("stile")) return readStyle();
    if (is("gruppo")) return readGroup();
    if (is("sottostampa")) return readSubreport();
    Section& main = definition_.main;
    if (is("inizio")) {
      inReportHead_ = true;
      readBand(main.head, main);
      inReportHead_ = false;
      return;
    }
    if (is("testata")) return readBand(definition_.pageHead, main);
    if (is("dettaglio")) return readBand(main.detail, main);
    if (is("piede")) return readBand(definition_.pageFoot, main);
    if (is("fine")) return readBand(main.foot, main);
    unknown();
  }

  void readPaper() {
    takeAttributes();
    const QString format = text("formato", QStringLiteral("A4"));
    const auto* paper = std::find_if(std::begin(kPapers), std::end(kPapers), [&](const Paper& one) {
      return format == QLatin1String(one.name);
    });
    if (paper == std::end(kPapers)) refuse("formato");
    definition_.width = length("largo", paper->width);
    definition_.height = length("alto", paper->height);
    const QString way = text("orientamento", QStringLiteral("verticale"));
    if (way == QLatin1String("orizzontale")) {
      std::swap(definition_.width, definition_.height);
    } else if (way != QLatin1String("verticale")) {
      refuse("orientamento");
    }
    definition_.left = length("sinistra", 15);
    definition_.right = length("destra", 15);
    definition_.top = length("sopra", 15);
    definition_.bottom = length("sotto", 15);
    definition_.columns = static_cast<int>(number("colonne", 1, 1, kMostColumns));
    definition_.gap = length("spazio", 0);
    requireAllAsked();
    requireEnd();
  }

  // What a style says, over another one.
  Style styleOver(Style style) {
    style.family = text("carattere", style.family);
    style.size = number("corpo", style.size / kUnitsPerPoint, 1, 200) * kUnitsPerPoint;
    style.bold = yes("grassetto", style.bold);
    style.italic = yes("corsivo", style.italic);
    style.color = color("colore", style.color);
    const QString side = text("allinea");
    if (side == QLatin1String("sinistra")) style.alignment = Qt::AlignLeft;
    if (side == QLatin1String("centro")) style.alignment = Qt::AlignHCenter;
    if (side == QLatin1String("destra")) style.alignment = Qt::AlignRight;
    static const QStringList sides = {QString(), QStringLiteral("sinistra"),
                                      QStringLiteral("centro"), QStringLiteral("destra")};
    if (!sides.contains(side)) refuse("allinea");
    return style;
  }
  void readStyle() {
    takeAttributes();
    const QString name = needed("nome");
    if (styleNames_.contains(name)) fail(QStringLiteral("stile \"%1\" già presente").arg(name));
    const QString base = text("come");
    if (!styleNames_.contains(base)) refuse("come");
    const Style style =
        styleOver(definition_.styles[static_cast<std::size_t>(styleNames_.indexOf(base))]);
    requireAllAsked();
    styleNames_ << name;
    definition_.styles.push_back(style);
    requireEnd();
  }
  int readStyleOfText() {
    const QString name = text("stile");
    if (!styleNames_.contains(name)) refuse("stile");
    auto& styles = definition_.styles;
    const Style style = styleOver(styles[static_cast<std::size_t>(styleNames_.indexOf(name))]);
    const auto found = std::find(styles.begin(), styles.end(), style);
    if (found != styles.end()) return static_cast<int>(found - styles.begin());
    styles.push_back(style);
    styleNames_ << QStringLiteral("(%1)").arg(styles.size());
    return static_cast<int>(styles.size()) - 1;
  }

  void readGroup() {
    if (definition_.groups.size() >= kMostGroups) fail(QStringLiteral("troppi gruppi"));
    takeAttributes();
    Group group;
    group.field = placeOf(needed("campo"), definition_.main.fields);
    group.repeatsHead = yes("ripeti", true);
    requireAllAsked();
    while (next()) {
      if (is("testa")) {
        readBand(group.head, definition_.main, true);
      } else if (is("coda")) {
        readBand(group.foot, definition_.main);
      } else {
        unknown();
      }
    }
    definition_.groups.push_back(std::move(group));
  }

  void readSubreport() {
    if (definition_.subreports.size() >= kMostSubreports)
      fail(QStringLiteral("troppe sottostampe"));
    takeAttributes();
    Subreport sub;
    sub.rows.source = needed("origine");
    sub.name = text("nome", sub.rows.source);
    sub.key = needed("chiave");
    sub.link = placeOf(needed("legame"), definition_.main.fields);
    sub.order = text("ordine");
    requireAllAsked();
    while (next()) {
      if (is("testa")) {
        readBand(sub.rows.head, sub.rows, true);
      } else if (is("dettaglio")) {
        readBand(sub.rows.detail, sub.rows);
      } else if (is("coda")) {
        readBand(sub.rows.foot, sub.rows);
      } else {
        unknown();
      }
    }
    definition_.subreports.push_back(std::move(sub));
  }

  void readBand(Bands& bands, Section& section, bool keepsWithNext = false) {
    takeAttributes();
    Band band;
    band.height = length("alto");
    band.keepsTogether = yes("insieme", true);
    band.keepsWithNext = yes("conseguente", keepsWithNext);
    band.startsPage = yes("nuovapagina", false);
    band.skipsEmpty = yes("salta", false);
    requireAllAsked();
    while (next()) {
      if (++elements_ > kMostElements) fail(QStringLiteral("troppi elementi"));
      band.elements.push_back(readElement(section));
    }
    const bool isOfPage = &bands == &definition_.pageHead || &bands == &definition_.pageFoot;
    if (!isOfPage) highest_ = std::max(highest_, band.height);
    bands.push_back(std::move(band));
  }

  Element readElement(Section& section) {
    takeAttributes();
    Element element;
    if (is("testo")) {
      element.shape = Shape::Text;
    } else if (is("linea")) {
      element.shape = Shape::Line;
    } else if (is("riquadro")) {
      element.shape = Shape::Box;
    } else {
      unknown();
    }
    element.place = {length("x"), length("y"), length("largo"), length("alto")};
    readWhen(element, section);
    if (element.shape == Shape::Text) {
      readText(element, section);
    } else {
      readDrawing(element);
    }
    return element;
  }
  void readWhen(Element& element, Section& section) {
    const QString when = text("se");
    if (!has("se")) return;
    QString fault;
    element.condition = readCondition(when, section, fault);
    if (!element.condition) fail(fault);
  }
  void readText(Element& element, Section& section) {
    element.style = readStyleOfText();
    element.grows = yes("cresce", false);
    requireAllAsked();
    const QString content = xml_.readElementText();
    if (xml_.hasError()) broken();
    QString fault;
    auto runs = readRuns(content, section, fault);
    if (!runs) fail(fault);
    element.runs = std::move(*runs);
    for (const Run& run : element.runs) {
      for (const Piece& piece : run.pieces) noteQuantity(piece.quantity);
    }
  }
  void noteQuantity(Quantity quantity) {
    const bool isTotal =
        quantity == Quantity::Count || quantity == Quantity::Sum || quantity == Quantity::Average;
    if (quantity == Quantity::Share || (isTotal && inReportHead_)) definition_.usesWhole = true;
  }
  void readDrawing(Element& element) {
    element.penWidth = number("spessore", 0.2, 0, 20) * kUnitsPerMillimetre;
    element.color = color("colore", Qt::black);
    if (element.shape == Shape::Box) element.fill = color("fondo", {});
    requireAllAsked();
    requireEnd();
  }
  void requireEnd() {
    if (next()) unknown();
  }

  // A page has to hold some lines of text between its head and foot, and each band.
  void requireRoom() const {
    const double least = 5 * kUnitsPerMillimetre;
    double room = definition_.height - definition_.top - definition_.bottom;
    for (const Bands* bands : {&definition_.pageHead, &definition_.pageFoot}) {
      for (const Band& band : *bands) room -= band.height;
    }
    if (room < std::max(least, highest_) || definition_.columnWidth() < least) {
      fail(QStringLiteral("il foglio non lascia posto ai dati"));
    }
  }

  QXmlStreamReader xml_;
  QString file_;
  Definition definition_;
  QXmlStreamAttributes attributes_;
  QStringList asked_;
  QStringList styleNames_;
  int elements_ = 0;
  double highest_ = 0;
  bool inReportHead_ = false;
};

}  // namespace

Definition readDefinition(const QByteArray& content, const QString& fileName) {
  return Reader(content, fileName).read();
}

}  // namespace tavolix::report
