#pragma once

#include "output/report_values.h"

namespace tavolix::report {

// What of a report comes at a place of it.
enum class Step {
  ReportHead,
  GroupFoot,
  GroupHead,
  Detail,
  SubHead,
  SubDetail,
  SubFoot,
  ReportFoot,
  End
};

// A place in a report: all that is known of the rows before it. A page is kept as the place at
// which it begins.
struct Place {
  Step step = Step::ReportHead;
  std::size_t level = 0;  // of a group, or the place of a subreport
  qint64 row = 0;
  qint64 subRow = 0;
  std::size_t band = 0;        // of the step's bands
  double from = 0;             // how much of that band stands on earlier pages
  std::vector<Totals> totals;  // of the report and of each group that is open
  Totals subTotals;
};

// Goes through a report, band by band, in the order of its rows.
class Walk final {
 public:
  Walk(store::Database& database, const Definition& definition, const Names& names);

  Place start() const;
  qint64 rowCount() const { return rows_.count(); }
  // Goes on to the next step's first band.
  void advance(Place& place);
  const Bands& bands(const Place& place) const;
  Facts facts(const Place& place);
  // What page heads and feet may tell.
  Facts pageFacts(const Place& place) const;
  // True if a group's rows go on at this place.
  bool isInGroups(const Place& place) const;
  Facts groupFacts(const Place& place) const;
  // How far a place is in the report, from 0 to 1.
  double progress(const Place& place) const;

 private:
  using Level = std::size_t;
  void beginRow(Place& place) const;
  void openGroups(Place& place) const;
  void openGroup(Place& place, Level level) const;
  void beginDetail(Place& place) const;
  void beginSub(Place& place, Level sub);
  void endRow(Place& place) const;
  void goToSubRow(Place& place, qint64 subRow);
  Level firstChanged(qint64 row) const;
  const LinkedRows& subRows(const Place& place);
  Totals wholeTotals() const;

  // The rows of a subreport, and the row of the report that they belong to.
  struct SubRows {
    qint64 row = -1;
    std::unique_ptr<LinkedRows> rows;
  };

  const Definition& definition_;
  const Names& names_;
  ListRows rows_;
  std::vector<SubRows> subs_;
  std::optional<Totals> whole_;
};

}  // namespace tavolix::report
