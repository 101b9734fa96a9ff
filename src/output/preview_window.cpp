#include "output/preview_window.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QScopeGuard>
#include <QShortcut>
#include <QToolButton>
#include <cmath>

#include "output/pdf_dialog.h"
#include "output/report_output.h"
#include "output/work_window.h"
#include "platform/handlers.h"
#include "platform/icons.h"
#include "platform/message_box.h"
#include "platform/printer_dialog.h"
#include "platform/screen_reader.h"

namespace tavolix::report {
namespace {

constexpr int kSliceMilliseconds = 12;  // of work, between two looks at what the user does
constexpr double kZoomStep = 1.25;

QToolButton* newButton(const char* name, const QString& caption, const QString& tip,
                       QWidget* parent) {
  auto* button = new QToolButton(parent);
  button->setObjectName(QLatin1String(name));
  button->setText(caption);
  button->setToolTip(tip);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  platform::nameControl(*button, tip.section(u'(', 0, 0).trimmed());
  return button;
}

}  // namespace

PreviewWindow::PreviewWindow(std::shared_ptr<Document> document, const QString& title,
                             QWidget* parent)
    : QWidget(parent, Qt::Window),
      document_(std::move(document)),
      page_(new PreviewPage(document_, this)),
      status_(new QLabel(this)),
      sought_(new QLineEdit(this)) {
  setObjectName(QStringLiteral("anteprima"));
  setWindowTitle(title);
  setWindowIcon(platform::windowIcon(QStringLiteral("stampa")));
  setAttribute(Qt::WA_DeleteOnClose);
  build();
  addKeys();
  platform::onSignal(page_, &PreviewPage::pageWanted, this, [this](int page) { goTo(page); });
  platform::onSignal(page_, &PreviewPage::scaleChanged, this, [this] { showStatus(); });
  platform::onSignal(&layout_, &QTimer::timeout, this, [this] { layOutSome(); });
  platform::onSignal(&search_, &QTimer::timeout, this, [this] { searchSome(); });
  layout_.start(0);
  page_->setFocus();
  showStatus();
}

void PreviewWindow::stayOnTop() {
  const bool shown = isVisible();
  setWindowFlag(Qt::WindowStaysOnTopHint);
  if (shown) showMaximized();
}

void PreviewWindow::build() {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* bar = new QHBoxLayout;
  bar->setContentsMargins(8, 4, 8, 4);
  addButtons(bar);
  bar->addStretch(1);
  addSearch(bar);
  column->addLayout(bar);
  column->addWidget(page_, 1);
  resize(900, 700);
}

void PreviewWindow::addButtons(QBoxLayout* bar) {
  struct Entry {
    const char* name;
    const char* caption;
    const char* tip;
    void (*work)(PreviewWindow&);
  };
  static constexpr Entry kEntries[] = {
      {"cmdPrima", "|◀", "Prima pagina (Home)", [](PreviewWindow& w) { w.goTo(0); }},
      {"cmdPrecedente", "◀", "Pagina precedente (PgSu)",
       [](PreviewWindow& w) { w.goTo(w.page_->page() - 1); }},
      {"cmdSuccessiva", "▶", "Pagina successiva (PgGiù)",
       [](PreviewWindow& w) { w.goTo(w.page_->page() + 1); }},
      {"cmdUltima", "▶|", "Ultima pagina (Fine)",
       [](PreviewWindow& w) { w.goTo(w.document_->pages() - 1); }},
      {"cmdMeno", "−", "Riduci (Ctrl+-)", [](PreviewWindow& w) { w.zoom(1 / kZoomStep); }},
      {"cmdPiu", "+", "Ingrandisci (Ctrl++)", [](PreviewWindow& w) { w.zoom(kZoomStep); }},
      {"cmdIntera", "Pagina intera", "Pagina intera (Ctrl+0)",
       [](PreviewWindow& w) { w.page_->setFit(PreviewPage::Fit::Page); }},
      {"cmdLarghezza", "Larghezza", "Larghezza della pagina (Ctrl+1)",
       [](PreviewWindow& w) { w.page_->setFit(PreviewPage::Fit::Width); }},
      {"cmdStampa", "Stampa...", "Stampa (Ctrl+P)", [](PreviewWindow& w) { w.printAll(); }},
      {"cmdPdf", "Salva PDF...", "Salva come PDF (Ctrl+S)", [](PreviewWindow& w) { w.savePdf(); }},
      {"cmdChiudi", "Chiudi", "Chiudi (Esc)", [](PreviewWindow& w) { w.close(); }},
  };
  for (const Entry& entry : kEntries) {
    auto* button =
        newButton(entry.name, QString::fromUtf8(entry.caption), QString::fromUtf8(entry.tip), this);
    bar->addWidget(button);
    platform::onSignal(button, &QToolButton::clicked, this,
                       [this, work = entry.work] { work(*this); });
    if (entry.name == QLatin1String("cmdUltima")) {
      status_->setObjectName(QStringLiteral("lblPagina"));
      bar->insertWidget(2, status_);
    }
  }
}

void PreviewWindow::addSearch(QBoxLayout* bar) {
  sought_->setObjectName(QStringLiteral("txtCerca"));
  sought_->setPlaceholderText(QStringLiteral("Cerca nel testo (Ctrl+F)"));
  sought_->setAccessibleName(QStringLiteral("Cerca nel testo"));
  sought_->setMaximumWidth(260);
  bar->addWidget(sought_);
  platform::onSignal(sought_, &QLineEdit::returnPressed, this,
                     [this] { startSearch(Direction::Forward); });
  auto* next = newButton("cmdCerca", QStringLiteral("Trova"), QStringLiteral("Trova (F3)"), this);
  bar->addWidget(next);
  platform::onSignal(next, &QToolButton::clicked, this,
                     [this] { startSearch(Direction::Forward); });
}

void PreviewWindow::addKeys() {
  const std::pair<const char*, std::function<void()>> keys[] = {
      {"Ctrl+F", [this] { sought_->setFocus(), sought_->selectAll(); }},
      {"F3", [this] { startSearch(Direction::Forward); }},
      {"Shift+F3", [this] { startSearch(Direction::Backward); }},
      {"Ctrl++", [this] { zoom(kZoomStep); }},
      {"Ctrl+-", [this] { zoom(1 / kZoomStep); }},
      {"Ctrl+0", [this] { page_->setFit(PreviewPage::Fit::Page); }},
      {"Ctrl+1", [this] { page_->setFit(PreviewPage::Fit::Width); }},
      {"Ctrl+P", [this] { printAll(); }},
      {"Ctrl+S", [this] { savePdf(); }},
  };
  for (const auto& [name, work] : keys) {
    auto* key = new QShortcut(QKeySequence(QLatin1String(name)), this);
    platform::onSignal(key, &QShortcut::activated, this, work);
  }
}

void PreviewWindow::keyPressEvent(QKeyEvent* event) {
  const int page = page_->page();
  switch (event->key()) {
    case Qt::Key_Escape:
      close();
      return;
    case Qt::Key_PageDown:
      return goTo(page + 1);
    case Qt::Key_PageUp:
      return goTo(page - 1);
    case Qt::Key_Home:
      return goTo(0);
    case Qt::Key_End:
      return goTo(document_->pages() - 1);
    default:
      QWidget::keyPressEvent(event);
  }
}

// The user comes back from where the archive may have been changed.
void PreviewWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::ActivationChange || !isActiveWindow()) return;
  platform::guarded([this] { renew(); });
}

void PreviewWindow::renew() {
  if (!document_->isOld()) return;
  const int page = page_->page();
  document_->layOutPage();
  while (!document_->isComplete() && document_->pages() <= page) document_->layOutPage();
  found_ = -1;
  page_->showPage(page);
  layout_.start(0);
  showStatus();
}

void PreviewWindow::goTo(int page) {
  renew();
  if (page < 0 || page == page_->page()) return;
  page_->showPage(page);
  showStatus();
}

void PreviewWindow::zoom(double factor) {
  page_->setFit(PreviewPage::Fit::Scale, page_->scale() * factor);
}

void PreviewWindow::layOutSome() {
  QElapsedTimer time;
  time.start();
  // A failure is told once: what is there stays to be read.
  auto stop = qScopeGuard([this] { layout_.stop(); });
  renew();
  while (!document_->isComplete() && time.elapsed() < kSliceMilliseconds) document_->layOutPage();
  if (!document_->isComplete()) {
    stop.dismiss();
  } else {
    page_->refresh();
  }
  showStatus();
}

QString PreviewWindow::status() const {
  return QStringLiteral("pagina %1 di %2%3")
      .arg(page_->page() + 1)
      .arg(document_->pages())
      .arg(document_->isComplete() ? QString() : QStringLiteral("..."));
}

void PreviewWindow::showStatus() {
  status_->setText(status() + QStringLiteral("  (%1%)").arg(std::lround(page_->scale() * 100)));
}

void PreviewWindow::startSearch(Direction direction) {
  if (sought_->text().isEmpty()) return sought_->setFocus();
  direction_ = direction;
  const int step = direction == Direction::Forward ? 1 : -1;
  searched_ = found_ == page_->page() ? found_ + step : page_->page();
  search_.start(0);
}

// A few pages at a time; those that are not known yet are waited for.
void PreviewWindow::searchSome() {
  QElapsedTimer time;
  time.start();
  auto stop = qScopeGuard([this] { search_.stop(); });
  const int step = direction_ == Direction::Forward ? 1 : -1;
  while (searched_ >= 0 && searched_ < document_->pages() && time.elapsed() < kSliceMilliseconds) {
    if (searchPage(searched_)) return;
    searched_ += step;
  }
  const bool isOver = searched_ < 0 || (searched_ >= document_->pages() && document_->isComplete());
  if (!isOver) return stop.dismiss();
  search_.stop();
  found_ = -1;
  platform::MsgBox(QStringLiteral("Testo non trovato"), platform::kInformation);
}

bool PreviewWindow::searchPage(int page) {
  std::vector<QRectF> marks;
  for (const Drawn& drawn : document_->texts(page)) {
    if (drawn.text.contains(sought_->text(), Qt::CaseInsensitive)) marks.push_back(drawn.place);
  }
  if (marks.empty()) return false;
  goTo(page);
  page_->setMarks(std::move(marks));
  found_ = page;
  return true;
}

void PreviewWindow::printAll() {
  QPrinter printer(QPrinter::HighResolution);
  if (!platform::choosePrinter(printer, QStringLiteral("Selezione stampante"))) return;
  WorkWindow window(QStringLiteral("Stampa in corso..."));
  print(*document_, printer, window.progress());
}

void PreviewWindow::savePdf() {
  const QString path = choosePdf(QStringLiteral("Salva come PDF"));
  if (path.isEmpty()) return;
  WorkWindow window(QStringLiteral("Scrittura del PDF in corso..."));
  writePdf(*document_, path, window.progress());
}

}  // namespace tavolix::report
