#include "analysis/result_grid.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <algorithm>

#include "core/modutil.h"
#include "platform/text_menu.h"

namespace tavolix {
namespace {

constexpr int kSampled = 500;  // rows that are measured for the width of a column
constexpr int kMostCharacters = 60;
constexpr int kAround = 16;  // pixels beside a text

}  // namespace

ResultGrid::ResultGrid(ResultModel* model, QWidget* parent) : QTableView(parent), model_(model) {
  setObjectName(QStringLiteral("grd"));
  setAccessibleName(QStringLiteral("Risultato"));
  setModel(model);
  setSelectionBehavior(SelectRows);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setEditTriggers(NoEditTriggers);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  const int height = fontMetrics().height() + 6;
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
  horizontalHeader()->setHighlightSections(false);
}

int ResultGrid::widthOf(int column) const {
  const QFontMetrics letters = fontMetrics();
  const auto widthOfText = [&](const QString& text) { return letters.horizontalAdvance(text); };
  int width =
      std::max(widthOfText(model_->longestText(column)),
               widthOfText(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString()));
  const int rows = model_->rowCount();
  const int step = rows / kSampled + 1;
  // The last one is the total.
  for (int row = rows - 1; row >= 0; row -= step) {
    width = std::max(width, widthOfText(model_->index(row, column).data().toString()));
  }
  return std::min(width, letters.averageCharWidth() * kMostCharacters) + kAround;
}

void ResultGrid::fitColumns() {
  for (int column = 0; column < model_->columnCount(); ++column) {
    setColumnWidth(column, widthOf(column));
  }
}

void ResultGrid::tellMissing(const QString& text) {
  missing_ = text;
  viewport()->update();
}

void ResultGrid::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    copy();
  } else if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QTableView::keyPressEvent(event);
  }
}

void ResultGrid::contextMenuEvent(QContextMenuEvent* event) {
  const bool rows = model_->rowCount() > 0;
  const bool chosen = selectionModel()->hasSelection();
  platform::showTextMenu(
      *this, event->globalPos(),
      {{"&Copia", QKeySequence::Copy, chosen, [this] { copy(); }},
       {},
       {"Seleziona &tutto", QKeySequence::SelectAll, rows, [this] { selectAll(); }}});
}

void ResultGrid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (missing_.isEmpty() || model_->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const QRect room = viewport()->rect().adjusted(kAround, kAround, -kAround, -kAround);
  painter.drawText(room, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, missing_);
}

void ResultGrid::copy() {
  QList<std::pair<int, int>> ranges;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    ranges.append({range.top(), range.bottom()});
  }
  if (ranges.isEmpty()) return;
  std::sort(ranges.begin(), ranges.end());
  Puntatore(kClessidra);
  QString text;
  for (const auto& [first, last] : ranges) {
    for (int row = first; row <= last; ++row) {
      for (int column = 0; column < model_->columnCount(); ++column) {
        if (column > 0) text += u'\t';
        text += model_->index(row, column).data().toString();
      }
      text += u'\n';
    }
  }
  QApplication::clipboard()->setText(text);
  Puntatore(kPuntatoreNormale);
}

}  // namespace tavolix
