#include "output/report_walk.h"

namespace tavolix::report {
namespace {

// Changes the step alone: the next one begins with its first band.
void go(Place& place, Step step, std::size_t level = 0) {
  place.step = step;
  place.level = level;
  place.band = 0;
  place.from = 0;
}

QString sourceOf(const Definition& definition) {
  const QString& source = definition.main.source;
  if (definition.order.isEmpty()) return source;
  return QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(source, definition.order);
}

}  // namespace

Walk::Walk(store::Database& database, const Definition& definition, const Names& names)
    : definition_(definition),
      names_(names),
      rows_(database, sourceOf(definition), definition.main) {
  for (const Subreport& subreport : definition.subreports) {
    subs_.push_back({-1, std::make_unique<LinkedRows>(database, subreport)});
  }
  if (definition_.usesWhole) whole_ = wholeTotals();
}

Totals Walk::wholeTotals() const {
  Totals totals(static_cast<std::size_t>(definition_.main.sums.size()));
  for (qint64 row = 0; row < rows_.count(); ++row) totals.add(rows_, row);
  return totals;
}

Place Walk::start() const {
  Place place;
  const Totals none(static_cast<std::size_t>(definition_.main.sums.size()));
  place.totals.assign(definition_.groups.size() + 1, none);
  return place;
}

void Walk::advance(Place& place) {
  switch (place.step) {
    case Step::ReportHead:
      return beginRow(place);
    case Step::GroupFoot:
      if (place.level > firstChanged(place.row)) return go(place, Step::GroupFoot, place.level - 1);
      return openGroups(place);
    case Step::GroupHead:
      if (place.level + 1 < definition_.groups.size()) return openGroup(place, place.level + 1);
      return beginDetail(place);
    case Step::Detail:
      return beginSub(place, 0);
    case Step::SubHead:
      return goToSubRow(place, 0);
    case Step::SubDetail:
      if (subRows(place).has(place.subRow + 1)) return goToSubRow(place, place.subRow + 1);
      return go(place, Step::SubFoot, place.level);
    case Step::SubFoot:
      return beginSub(place, place.level + 1);
    default:
      return go(place, Step::End);
  }
}

// The first group that a row begins anew.
Walk::Level Walk::firstChanged(qint64 row) const {
  if (row == 0 || row == rows_.count()) return 0;
  Level level = 0;
  for (const Group& group : definition_.groups) {
    if (rows_.field(row - 1, group.field) != rows_.field(row, group.field)) break;
    ++level;
  }
  return level;
}

void Walk::beginRow(Place& place) const {
  const Level groups = definition_.groups.size();
  if (place.row > 0 && firstChanged(place.row) < groups) {
    return go(place, Step::GroupFoot, groups - 1);
  }
  openGroups(place);
}

void Walk::openGroups(Place& place) const {
  if (place.row == rows_.count()) return go(place, Step::ReportFoot);
  const Level first = firstChanged(place.row);
  if (first < definition_.groups.size()) return openGroup(place, first);
  beginDetail(place);
}

void Walk::openGroup(Place& place, Level level) const {
  place.totals[level + 1] = Totals(static_cast<std::size_t>(definition_.main.sums.size()));
  go(place, Step::GroupHead, level);
}

void Walk::beginDetail(Place& place) const {
  for (Totals& totals : place.totals) totals.add(rows_, place.row);
  go(place, Step::Detail);
}

void Walk::beginSub(Place& place, Level sub) {
  for (Level next = sub; next < subs_.size(); ++next) {
    go(place, Step::SubHead, next);
    place.subRow = 0;
    place.subTotals =
        Totals(static_cast<std::size_t>(definition_.subreports[next].rows.sums.size()));
    if (subRows(place).has(0)) return;
  }
  endRow(place);
}

void Walk::endRow(Place& place) const {
  ++place.row;
  beginRow(place);
}

void Walk::goToSubRow(Place& place, qint64 subRow) {
  place.subRow = subRow;
  place.subTotals.add(subRows(place), subRow);
  go(place, Step::SubDetail, place.level);
}

const LinkedRows& Walk::subRows(const Place& place) {
  SubRows& sub = subs_[place.level];
  if (sub.row != place.row) {
    sub.rows->goTo(rows_.field(place.row, definition_.subreports[place.level].link));
    sub.row = place.row;
  }
  return *sub.rows;
}

const Bands& Walk::bands(const Place& place) const {
  static const Bands none;
  switch (place.step) {
    case Step::ReportHead:
      return definition_.main.head;
    case Step::GroupFoot:
      return definition_.groups[place.level].foot;
    case Step::GroupHead:
      return definition_.groups[place.level].head;
    case Step::Detail:
      return definition_.main.detail;
    case Step::SubHead:
      return definition_.subreports[place.level].rows.head;
    case Step::SubDetail:
      return definition_.subreports[place.level].rows.detail;
    case Step::SubFoot:
      return definition_.subreports[place.level].rows.foot;
    case Step::ReportFoot:
      return definition_.main.foot;
    default:
      return none;
  }
}

Facts Walk::facts(const Place& place) {
  Facts facts = pageFacts(place);
  switch (place.step) {
    case Step::ReportHead:
      facts.totals = facts.whole;
      break;
    case Step::GroupFoot:
      facts.row = place.row - 1;
      facts.totals = &place.totals[place.level + 1];
      break;
    case Step::GroupHead:
      facts.totals = nullptr;
      break;
    case Step::SubHead:
    case Step::SubDetail:
    case Step::SubFoot:
      facts.rows = &subRows(place);
      facts.row = place.subRow;
      facts.totals = &place.subTotals;
      facts.whole = nullptr;
      break;
    case Step::ReportFoot:
      facts.row = place.row - 1;
      break;
    default:
      break;
  }
  return facts;
}

Facts Walk::pageFacts(const Place& place) const {
  Facts facts;
  facts.rows = &rows_;
  facts.row = place.row;
  facts.totals = &place.totals.front();
  facts.whole = whole_ ? &*whole_ : nullptr;
  facts.names = &names_;
  return facts;
}

bool Walk::isInGroups(const Place& place) const {
  return place.step == Step::Detail || place.step == Step::SubHead ||
         place.step == Step::SubDetail || place.step == Step::SubFoot;
}

Facts Walk::groupFacts(const Place& place) const {
  Facts facts = pageFacts(place);
  facts.totals = nullptr;
  return facts;
}

double Walk::progress(const Place& place) const {
  if (place.step == Step::End || rows_.count() == 0) return 1;
  return static_cast<double>(place.row) / static_cast<double>(rows_.count());
}

}  // namespace tavolix::report
