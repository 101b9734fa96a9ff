#include "assist/frmguida.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QResource>
#include <QShortcut>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QUrl>
#include <QWindow>

#include "assist/guida_view.h"
#include "core/comandi.h"
#include "core/modutil.h"
#include "platform/handlers.h"
#include "platform/help_key.h"
#include "platform/key_handover.h"
#include "platform/system_path.h"

namespace tavolix {
namespace {

const QString kGuida = QStringLiteral("frmGuida");
const QString kFolder = QStringLiteral(":/guida");
const QString kFirstPage = QStringLiteral("cominciare");
constexpr const char* kMissing =
    "<h1>Guida in linea</h1><p>Il file della guida (tvx.hlp) non si legge: manca, o è guasto. "
    "Installando di nuovo il programma ritorna al suo posto.</p>";

frmGuida& FormGuida() {
  return platform::forms().as<frmGuida>(kGuida);
}

// The file is read once; where it is missing at first, it may come later.
void openGuide() {
  static bool opened = false;
  if (opened) return;
  opened = QResource::registerResource(
      platform::systemPath(sPathCompleto(QStringLiteral("tvx.hlp"))), QStringLiteral("/guida"));
}

void addEntry(QListWidget& list, const QString& text, const QString& page) {
  auto* entry = new QListWidgetItem(text, &list);
  entry->setData(Qt::UserRole, page);
}

// A menu tells the entry that is marked in it, by its number or its name.
QString pageOfEntry(const QMenu& menu, const PagineGuida& pages) {
  const QAction* entry = menu.activeAction();
  if (entry == nullptr) return {};
  const QString page = pages.PerContesto(entry->data().toInt());
  return page.isEmpty() ? pages.PerNome(entry->objectName()) : page;
}

// A menu with those that it stands in.
void closePopups() {
  QWidget* closed = nullptr;
  while (QApplication::activePopupWidget() != closed) {
    closed = QApplication::activePopupWidget();
    if (closed != nullptr) closed->close();
  }
}

}  // namespace

frmGuida::frmGuida()
    : platform::Form(kGuida, {.title = "Guida in linea", .icon = "guida", .escape = "cmdChiudi"}) {}

QWidget* frmGuida::build() {
  return buildGuidaWindow();
}

QTextBrowser& frmGuida::page() {
  return *control<QTextBrowser>(QStringLiteral("txtPagina"));
}

void frmGuida::loaded() {
  openGuide();
  if (!pagine_ || pagine_->Pagine().isEmpty()) pagine_.emplace(kFolder);
  fillContents();
  fillIndex({});
  connectControls();
  addKeys();
}

void frmGuida::fillContents() {
  auto* tree = control<QTreeWidget>(QStringLiteral("lstSommario"));
  QTreeWidgetItem* chapter = nullptr;
  for (const PaginaGuida& one : pagine_->Pagine()) {
    if (chapter == nullptr || chapter->text(0) != one.sCapitolo) {
      chapter = new QTreeWidgetItem(tree, {one.sCapitolo});
      chapter->setExpanded(true);
      chapter->setFlags(Qt::ItemIsEnabled);
    }
    auto* entry = new QTreeWidgetItem(chapter, {one.sTitolo});
    entry->setData(0, Qt::UserRole, one.sNome);
    entry->setToolTip(0, one.sTitolo);
  }
}

// None of them is a command of the program: they work while a dialog is open, too.
void frmGuida::connectControls() {
  using platform::onSignal;
  const auto button = [this](const char* name) {
    return control<QPushButton>(QString::fromLatin1(name));
  };
  const auto clicked = &QPushButton::clicked;
  onSignal(button("cmdIndietro"), clicked, this, [this] { page().backward(); });
  onSignal(button("cmdAvanti"), clicked, this, [this] { page().forward(); });
  onSignal(button("cmdStampa"), clicked, this, [this] { printPage(); });
  onSignal(button("cmdChiudi"), clicked, this, [this] { close(); });
  onSignal(&page(), &QTextBrowser::backwardAvailable, button("cmdIndietro"),
           [back = button("cmdIndietro")](bool any) { back->setEnabled(any); });
  onSignal(&page(), &QTextBrowser::forwardAvailable, button("cmdAvanti"),
           [next = button("cmdAvanti")](bool any) { next->setEnabled(any); });
  for (const char* name : {"cmdIndietro", "cmdAvanti"}) button(name)->setEnabled(false);
  onSignal(&page(), &QTextBrowser::sourceChanged, this, [this] { pageShown(); });
  auto* tree = control<QTreeWidget>(QStringLiteral("lstSommario"));
  onSignal(tree, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* entry) {
    if (entry != nullptr) showPage(entry->data(0, Qt::UserRole).toString());
  });
  onSignal(control<QLineEdit>(QStringLiteral("txtIndice")), &QLineEdit::textChanged, this,
           [this](const QString& text) { fillIndex(text); });
  onSignal(control<QLineEdit>(QStringLiteral("txtCerca")), &QLineEdit::textChanged, this,
           [this](const QString& text) { fillFound(text); });
  const std::pair<const char*, const char*> lists[] = {{"txtIndice", "lstIndice"},
                                                       {"txtCerca", "lstTrovate"}};
  for (const auto& [box, name] : lists) {
    auto* list = control<QListWidget>(QString::fromLatin1(name));
    onSignal(list, &QListWidget::currentItemChanged, this, [this, list] { openChosen(*list); });
    // Enter in the box opens the first page of the list.
    onSignal(control<QLineEdit>(QString::fromLatin1(box)), &QLineEdit::returnPressed, this,
             [list] { list->setCurrentRow(0), list->setFocus(); });
  }
}

void frmGuida::addKeys() {
  const std::pair<const char*, std::function<void()>> keys[] = {
      {"Alt+Left", [this] { page().backward(); }}, {"Alt+Right", [this] { page().forward(); }},
      {"Ctrl+F", [this] { startSearch(); }},       {"Ctrl+P", [this] { printPage(); }},
      {"Ctrl++", [this] { page().zoomIn(); }},     {"Ctrl+-", [this] { page().zoomOut(); }},
  };
  for (const auto& [name, work] : keys) {
    auto* key = new QShortcut(QKeySequence(QString::fromLatin1(name)), Window());
    platform::onSignal(key, &QShortcut::activated, this, work);
  }
}

void frmGuida::startSearch() {
  control<QTabWidget>(QStringLiteral("panRicerca"))->setCurrentIndex(2);
  auto* text = control<QLineEdit>(QStringLiteral("txtCerca"));
  text->setFocus();
  text->selectAll();
}

void frmGuida::showPage(const QString& sNome) {
  if (sNome.isEmpty()) return;
  const QUrl url(QStringLiteral("qrc") + kFolder + u'/' + sNome + QStringLiteral(".html"));
  if (page().source() != url) page().setSource(url);
}

// The contents follow the page, which a link may have opened.
void frmGuida::pageShown() {
  const QString name = page().source().fileName().section(u'.', 0, 0);
  auto* tree = control<QTreeWidget>(QStringLiteral("lstSommario"));
  const QSignalBlocker quiet(tree);
  for (QTreeWidgetItemIterator entry(tree); *entry != nullptr; ++entry) {
    if ((*entry)->data(0, Qt::UserRole).toString() == name) tree->setCurrentItem(*entry);
  }
}

void frmGuida::fillIndex(const QString& sInizio) {
  auto* list = control<QListWidget>(QStringLiteral("lstIndice"));
  const QSignalBlocker quiet(list);
  list->clear();
  for (const auto& [word, name] : pagine_->Indice()) {
    if (sSenzaAccenti(word).startsWith(sSenzaAccenti(sInizio.trimmed())))
      addEntry(*list, word, name);
  }
}

void frmGuida::fillFound(const QString& sTesto) {
  auto* list = control<QListWidget>(QStringLiteral("lstTrovate"));
  const QSignalBlocker quiet(list);
  list->clear();
  if (sTesto.trimmed().isEmpty()) return;
  for (const PaginaGuida* one : pagine_->Cerca(sTesto)) addEntry(*list, one->sTitolo, one->sNome);
  if (list->count() != 0) return;
  addEntry(*list, QStringLiteral("Nessuna pagina con queste parole"), {});
}

void frmGuida::openChosen(QListWidget& list) {
  if (list.currentItem() != nullptr) showPage(list.currentItem()->data(Qt::UserRole).toString());
}

void frmGuida::printPage() {
  QPrinter printer;
  QPrintDialog dialog(&printer, Window());
  dialog.setWindowTitle(QStringLiteral("Stampa della guida"));
  const platform::Commands::Question question;
  if (dialog.exec() == QDialog::Accepted) page().print(&printer);
}

// From the control outwards: the first that has a page of its own.
QString frmGuida::pageOf(QWidget* at) const {
  if (const auto* menu = qobject_cast<const QMenu*>(at)) {
    const QString name = pageOfEntry(*menu, *pagine_);
    if (!name.isEmpty()) return name;
  }
  for (; at != nullptr; at = at->parentWidget()) {
    const QString wanted = at->property("HelpPage").toString();
    if (!wanted.isEmpty()) return wanted;
    const QString number = pagine_->PerContesto(at->property("HelpContextID").toInt());
    const QString name = number.isEmpty() ? pagine_->PerNome(at->objectName()) : number;
    if (!name.isEmpty()) return name;
  }
  return kFirstPage;
}

void frmGuida::Apri(QWidget* dove) {
  Load();
  const QString name = pageOf(dove);
  closePopups();
  comeToFront(platform::windowInFront());
  if (pagine_->Pagine().isEmpty()) {
    page().setHtml(QString::fromUtf8(kMissing));
  } else {
    showPage(name);
  }
  page().setFocus();
}

// Over a dialog it is the dialog's, which holds all windows that are not.
void frmGuida::comeToFront(QWidget* front) {
  if (front != nullptr && front != Window() && front != davanti_) {
    Window()->hide();
    davanti_ = front;
    Window()->winId();
    Window()->windowHandle()->setTransientParent(front->window()->windowHandle());
  }
  platform::KeyHandover::to(Window());
  Show();
}

void frmGuida::close() {
  Hide();
  if (davanti_ == nullptr || !davanti_->isVisible()) return;
  davanti_->activateWindow();
  platform::KeyHandover::to(davanti_);
}

// It keeps its page and the way to it.
bool frmGuida::queryUnload() {
  close();
  return false;
}

void RegistraFormGuida() {
  platform::forms().add<frmGuida>(kGuida);
  platform::HelpKey::setAnswer([](QWidget* at) { FormGuida().Apri(at); });
  // clang-format off
  static constexpr Comando kComandi[] = {
      {"mnuAiuto", 10, "mnuGuida", "Guida in linea", "F1", 0, [] { FormGuida().Apri(QApplication::focusWidget()); }, {}, {4, 42, "guida", "Guida in linea"}},
  };
  // clang-format on
  RegistraComandi(kComandi);
}

}  // namespace tavolix
