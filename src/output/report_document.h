#pragma once

#include "output/report_band.h"
#include "output/report_walk.h"

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
  double progress() const { return complete_ ? 1 : walk_.progress(next_); }
  // Finds the beginning of one more page.
  void layOutPage();
  void layOutAll();
  // Draws a page from 0; the painter's unit is the report's, its origin the corner of the sheet.
  void paint(QPainter& painter, int page);
  std::vector<Drawn> texts(int page);

 private:
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
  Walk walk_;
  std::vector<Place> starts_;
  Place next_;
  bool complete_ = false;
};

}  // namespace tavolix::report
