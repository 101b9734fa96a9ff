#include "output/report_document.h"

#include <algorithm>

namespace tavolix::report {

Document::Document(store::DatabasePtr database, Definition definition, Names names)
    : database_(std::move(database)),
      definition_(std::move(definition)),
      names_(std::move(names)),
      fonts_(definition_.styles) {
  begin();
}

void Document::begin() {
  snapshot_ = store::takeSnapshot(*database_);
  laidOutAt_ = store::writesOf(*database_);
  walk_.emplace(*database_, definition_, names_);
  starts_.clear();
  next_ = walk_->start();
  complete_ = false;
  layOutPage();
}

Document::Layout Document::layOutPage() {
  if (isOld()) {
    begin();
    return Layout::BegunAnew;
  }
  if (complete_) return Layout::GoesOn;
  starts_.push_back(next_);
  compose(next_, nullptr, pages());
  complete_ = next_.step == Step::End;
  if (complete_) snapshot_.reset();
  return Layout::GoesOn;
}

void Document::layOutAll() {
  while (!complete_) layOutPage();
}

void Document::paint(QPainter& painter, int page) {
  const Canvas canvas{&painter, nullptr};
  Place place = starts_.at(static_cast<std::size_t>(page));
  compose(place, &canvas, page + 1);
}

std::vector<Drawn> Document::texts(int page) {
  std::vector<Drawn> drawn;
  const Canvas canvas{nullptr, &drawn};
  Place place = starts_.at(static_cast<std::size_t>(page));
  compose(place, &canvas, page + 1);
  return drawn;
}

Facts Document::rowFacts(qint64 row) const {
  Place place = walk_->start();
  place.row = row;
  Facts facts = walk_->pageFacts(place);
  facts.totals = nullptr;  // the place goes, and with it what it has counted
  return facts;
}

Facts Document::numbered(Facts facts, int page) const {
  facts.page = page;
  facts.pages = complete_ ? pages() : 0;
  return facts;
}

LaidBand Document::laid(const Place& place, const Band& band, int page) {
  return LaidBand(band, definition_.styles, fonts_, numbered(walk_->facts(place), page));
}

double Document::heightOf(const Bands& bands) const {
  double height = 0;
  for (const Band& band : bands) height += band.height;
  return height;
}

// Bands that stand whole where they are; the height that they take.
double Document::drawBands(const Bands& bands, const Facts& facts, const Canvas* canvas,
                           QPointF at) const {
  double height = 0;
  for (const Band& band : bands) {
    if (canvas == nullptr && LaidBand::isFixed(band)) {
      height += band.height;
      continue;
    }
    const LaidBand drawn(band, definition_.styles, fonts_, facts);
    if (canvas != nullptr && !drawn.isSkipped()) {
      drawn.draw(*canvas, at + QPointF(0, height), 0, drawn.height());
    }
    height += drawn.height();
  }
  return height;
}

void Document::compose(Place& place, const Canvas* canvas, int page) {
  const double bottom = definition_.height - definition_.bottom - heightOf(definition_.pageFoot);
  const Facts facts = numbered(walk_->pageFacts(place), page);
  if (canvas != nullptr) {
    drawBands(definition_.pageFoot, facts, canvas, {definition_.left, bottom});
  }
  double top = definition_.top + reportHead(place, canvas, page);
  // A page head keeps to its height whatever its texts are: the rows begin below it.
  if (canvas != nullptr) drawBands(definition_.pageHead, facts, canvas, {definition_.left, top});
  top += heightOf(definition_.pageHead);
  End end = End::Column;
  for (int i = 0; i < definition_.columns && end == End::Column; ++i) {
    const double x = definition_.left + i * (definition_.columnWidth() + definition_.gap);
    end = fill(place, canvas, {x, top, bottom}, page);
  }
}

// The report's head stands above all else on the first page.
double Document::reportHead(Place& place, const Canvas* canvas, int page) {
  if (place.step != Step::ReportHead) return 0;
  const double height = drawBands(definition_.main.head, numbered(walk_->facts(place), page),
                                  canvas, {definition_.left, definition_.top});
  walk_->advance(place);
  return height;
}

// The heads of the groups that go on; nothing where they would leave no room for the rows.
double Document::repeatHeads(const Place& place, const Canvas* canvas, const Column& column,
                             int page) {
  if (!walk_->isInGroups(place)) return 0;
  double height = 0;
  for (const Group& group : definition_.groups) {
    if (!group.repeatsHead || heightOf(group.head) > (column.bottom - column.top) / 4) continue;
    height += drawBands(group.head, numbered(walk_->groupFacts(place), page), canvas,
                        {column.x, column.top + height});
  }
  return height;
}

// The height of a band and of those that are to stand on its page, as far as it matters.
double Document::heightNeeded(Place place, double own, double room) {
  constexpr int kMostBands = 40;
  double height = own;
  for (int i = 0; i < kMostBands && height <= room; ++i) {
    if (!walk_->bands(place)[place.band].keepsWithNext) break;
    ++place.band;
    while (place.step != Step::End && place.band >= walk_->bands(place).size()) {
      walk_->advance(place);
    }
    if (place.step == Step::End) break;
    const Band& band = walk_->bands(place)[place.band];
    if (band.startsPage) break;
    height += LaidBand::isFixed(band) ? band.height : laid(place, band, 0).height();
  }
  return height;
}

Document::End Document::fill(Place& place, const Canvas* canvas, const Column& column, int page) {
  double y = column.top + repeatHeads(place, canvas, column, page);
  bool isFresh = true;
  for (; place.step != Step::End; walk_->advance(place)) {
    const Bands& bands = walk_->bands(place);
    for (; place.band < bands.size(); ++place.band, place.from = 0) {
      const Band& band = bands[place.band];
      if (band.startsPage && place.from == 0 && !isFresh) return End::Page;
      const double room = column.bottom - y;
      // Where a band's height tells all, its values are not even read.
      std::optional<LaidBand> drawn;
      if (canvas != nullptr || !LaidBand::isFixed(band)) drawn.emplace(laid(place, band, page));
      if (drawn && drawn->isSkipped()) continue;
      const double height = (drawn ? drawn->height() : band.height) - place.from;
      const double needed =
          place.from == 0 && !isFresh ? heightNeeded(place, height, room) : height;
      if (needed > room && !isFresh && (band.keepsTogether || height <= room)) return End::Column;
      if (height > room) {
        if (!drawn) drawn.emplace(laid(place, band, page));
        const double cut = drawn->cutAfter(place.from, room);
        if (canvas != nullptr) drawn->draw(*canvas, {column.x, y}, place.from, cut);
        place.from = cut;
        return End::Column;
      }
      if (canvas != nullptr) {
        drawn->draw(*canvas, {column.x, y}, place.from, drawn->height());
      }
      y += height;
      isFresh = false;
    }
  }
  return End::Report;
}

}  // namespace tavolix::report
