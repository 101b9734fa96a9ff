#include "assist/guida_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>

#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr int kSideCharacters = 32;
constexpr int kPageCharacters = 76;
constexpr int kLines = 38;
constexpr int kPageMargin = 14;

constexpr platform::ButtonSpec kButtons[] = {
    {"cmdIndietro", "In&dietro", "Alla pagina vista prima", "precedente", "Alt+←"},
    {"cmdAvanti", "&Avanti", "Alla pagina da cui si è tornati", "successivo", "Alt+→"},
    {"cmdStampa", "&Stampa...", "Stampa la pagina", "stampa", "Ctrl+P"},
    {"cmdChiudi", "&Chiudi", "", "esci", "Esc"},
};

QHBoxLayout* newButtons(QWidget* window) {
  auto* row = new QHBoxLayout;
  for (const platform::ButtonSpec& spec : kButtons) {
    QPushButton* button = platform::newButton(spec, window);
    button->setAutoDefault(false);
    row->addWidget(button);
  }
  row->insertStretch(row->count() - 1, 1);
  return row;
}

QTreeWidget* newContents(QWidget* parent) {
  auto* tree = new QTreeWidget(parent);
  tree->setObjectName(QStringLiteral("lstSommario"));
  platform::nameControl(*tree, QStringLiteral("Sommario"));
  tree->setHeaderHidden(true);
  tree->setTextElideMode(Qt::ElideRight);
  return tree;
}

// A box to type in above the list that follows it.
QWidget* newSearch(const char* box, const char* list, const QString& name, const QString& hint,
                   QWidget* parent) {
  auto* place = new QWidget(parent);
  auto* text = new QLineEdit(place);
  text->setObjectName(QString::fromLatin1(box));
  text->setAccessibleName(hint);
  text->setPlaceholderText(hint);
  text->setClearButtonEnabled(true);
  auto* found = new QListWidget(place);
  found->setObjectName(QString::fromLatin1(list));
  platform::nameControl(*found, name);
  auto* column = new QVBoxLayout(place);
  column->addWidget(text);
  column->addWidget(found, 1);
  return place;
}

QTabWidget* newSide(QWidget* parent) {
  auto* tabs = new QTabWidget(parent);
  tabs->setObjectName(QStringLiteral("panRicerca"));
  tabs->addTab(newContents(tabs), QStringLiteral("Sommario"));
  tabs->addTab(newSearch("txtIndice", "lstIndice", QStringLiteral("Parole dell'indice"),
                         QStringLiteral("Prime lettere della parola"), tabs),
               QStringLiteral("Indice"));
  tabs->addTab(newSearch("txtCerca", "lstTrovate", QStringLiteral("Pagine trovate"),
                         QStringLiteral("Parole da cercare"), tabs),
               QStringLiteral("Cerca"));
  return tabs;
}

QTextBrowser* newPage(QWidget* parent) {
  auto* page = new QTextBrowser(parent);
  page->setObjectName(QStringLiteral("txtPagina"));
  page->setAccessibleName(QStringLiteral("Pagina della guida"));
  page->setOpenExternalLinks(false);
  page->document()->setDocumentMargin(kPageMargin);
  return page;
}

}  // namespace

QWidget* buildGuidaWindow() {
  auto* window = new QWidget;
  auto* both = new QSplitter(window);
  both->setChildrenCollapsible(false);
  both->addWidget(newSide(both));
  both->addWidget(newPage(both));
  both->setStretchFactor(1, 1);
  auto* column = new QVBoxLayout(window);
  column->addLayout(newButtons(window));
  column->addWidget(both, 1);
  const int side = platform::widthOfCharacters(window, kSideCharacters);
  const int page = platform::widthOfCharacters(window, kPageCharacters);
  const QSize wanted(side + page, window->fontMetrics().lineSpacing() * kLines);
  window->resize(wanted.boundedTo(platform::roomOnScreen()));
  both->setSizes({side, window->width() - side});
  return window;
}

}  // namespace tavolix
