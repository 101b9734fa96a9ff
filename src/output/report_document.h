#pragma once

#include "output/report_band.h"
#include "output/report_walk.h"
#include "store/snapshot.h"

namespace tavolix::report {

// A report on an archive, laid out in pages. Only the place at which each page begins is kept: a
// page is made anew whenever it is drawn.
class Document final {
 public:
  // Reads the first rows' keys. Fails where source or fields are not in the archive.
  Document(store::DatabasePtr database, Definition definition, Names names);
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  const Definition& definition() const { return definition_; }
  const QString& title() const { return names_.title; }
  // The pages that are known: all of them once the layout is complete, at least one from the start.
  int pages() const { return static_cast<int>(starts_.size()); }
  bool isComplete() const { return complete_; }
  double progress() const { return complete_ ? 1 : walk_->progress(next_); }
  // Finds the beginning of one more page. Until the last one is known the archive is held as it
  // was at the first: other programs wait. What this process has written, or another one since,
  // begins the layout anew, which is told.
  enum class Layout { GoesOn, BegunAnew };
  Layout layOutPage();
  // While it lives, the archive is held in the same way.
  std::shared_ptr<const void> hold() const { return store::takeSnapshot(*database_); }
  void layOutAll();
  // True if something was written to the archive since the layout began.
  bool isOld() const { return store::writesOf(*database_) != laidOutAt_; }
  // Draws a page from 0; the painter's unit is the report's, its origin the corner of the sheet.
  void paint(QPainter& painter, int page);
  std::vector<Drawn> texts(int page);
  // The rows of the report's source.
  qint64 rowCount() const { return walk_->rowCount(); }
  Facts rowFacts(qint64 row) const;

 private:
  void begin();
  enum class End { Column, Page, Report };
  struct Column {
    double x, top, bottom;
  };
  // Draws what stands on a page, and goes on to the place where the next one begins.
  void compose(Place& place, const Canvas* canvas, int page);
  double drawBands(const Bands& bands, const Facts& facts, const Canvas* canvas, QPointF at) const;
  double heightOf(const Bands& bands) const;
  double reportHead(Place& place, const Canvas* canvas, int page);
  End fill(Place& place, const Canvas* canvas, const Column& column, int page);
  double repeatHeads(const Place& place, const Canvas* canvas, const Column& column, int page);
  double heightNeeded(Place place, double own, double room);
  LaidBand laid(const Place& place, const Band& band, int page);
  Facts numbered(Facts facts, int page) const;

  store::DatabasePtr database_;
  const Definition definition_;
  const Names names_;
  Fonts fonts_;
  std::optional<Walk> walk_;
  std::shared_ptr<const void> snapshot_;  // while pages are laid out
  quint64 laidOutAt_ = 0;
  std::vector<Place> starts_;
  Place next_;
  bool complete_ = false;
};

}  // namespace tavolix::report
