#include "archives/manarc_view.h"

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>

#include "platform/path_label.h"
#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr QSize kCharacters(104, 26);  // of the window
constexpr int kListCharacters = 38;
constexpr int kLeastLines = 6;
constexpr int kIcon = 24;
constexpr int kColumns = 2;

// From left to right, from the top down; an empty row parts the last two from the others.
constexpr platform::ButtonSpec kButtons[] = {
    {"cmdAprire", "&Apri", "Apri l'archivio selezionato"},
    {"cmdCorreggere", "Comprimi e ripara", "Comprimi e ripara l'archivio selezionato"},
    {"cmdCreare", "Crea &nuovo", "Crea un nuovo archivio vuoto"},
    {"cmdEseguiCopie", "E&segui copia sicur.",
     "Crea una copia di sicurezza dell'archivio selezionato"},
    {"cmdDuplica", "Duplica"},
    {"cmdRecupero", "Recupera copie", "Recupera una copia di sicurezza"},
    {"cmdRinominare", "&Rinomina", "Modifica il nome dell'archivio selezionato"},
    {"cmdDirectory", "&Directory...", "Cambia directory corrente"},
    {"cmdEliminare", "Elimina", "Elimina l'archivio selezionato"},
    {"cmdImpostazioni", "Impostazioni"},
    {"cmdAiuto", "Aiuto", "", "guida"},
    {"cmdEsci", "Esci", "", "esci"},
};

constexpr const char* kWithoutArchives =
    "In questa directory non ci sono archivi.\n\n"
    "Un archivio contiene tutte le raccolte: libri, riviste, audio, video, software, medicinali, "
    "oggetti vari e persone.\n\n"
    "Con \"Crea nuovo\" si sceglie un nome e si ottiene un archivio vuoto, che con \"Apri\" "
    "diventa "
    "quello in uso. Con \"Directory...\" si cercano archivi altrove, con \"Recupera copie\" si "
    "riprende una copia di sicurezza.\n\n"
    "Con F1 si apre la guida, alla pagina \"Cominciare\".";

QListWidget* newList(QWidget* parent) {
  auto* lstFile = new QListWidget(parent);
  lstFile->setObjectName(QStringLiteral("lstFile"));
  platform::nameControl(*lstFile, QStringLiteral("Archivi"));
  lstFile->setUniformItemSizes(true);
  lstFile->setTextElideMode(Qt::ElideMiddle);
  lstFile->setIconSize({kIcon, kIcon});
  lstFile->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  return lstFile;
}

QWidget* newAdvice(QWidget* parent) {
  auto* scroller = new QScrollArea(parent);
  scroller->setObjectName(QStringLiteral("advice"));
  scroller->setWidgetResizable(true);
  auto* text = new QLabel(QString::fromUtf8(kWithoutArchives), scroller);
  text->setObjectName(QStringLiteral("lblConsiglio"));
  text->setWordWrap(true);
  text->setMargin(12);
  text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  scroller->setWidget(text);
  scroller->setFocusPolicy(Qt::NoFocus);
  return scroller;
}

QWidget* newArchives(QWidget* parent) {
  auto* place = new QWidget(parent);
  place->setObjectName(QStringLiteral("archives"));
  auto* stack = new QStackedLayout(place);
  stack->addWidget(newList(place));
  stack->addWidget(newAdvice(place));
  place->setMinimumSize(platform::widthOfCharacters(place, kListCharacters),
                        place->fontMetrics().lineSpacing() * kLeastLines);
  return place;
}

QGridLayout* newButtons(QWidget* window) {
  auto* grid = new QGridLayout;
  int place = 0;
  const int last = static_cast<int>(std::size(kButtons)) / kColumns - 1;
  for (const platform::ButtonSpec& button : kButtons) {
    const int row = place / kColumns;
    grid->addWidget(platform::newButton(button, window), row == last ? last + 1 : row,
                    place % kColumns);
    ++place;
  }
  grid->setRowStretch(last, 1);
  return grid;
}

platform::PathLabel* newLine(const char* name, QWidget* window) {
  auto* label = new platform::PathLabel(window);
  label->setObjectName(QString::fromLatin1(name));
  return label;
}

// The Tab key goes down the columns of buttons.
void orderButtons(QWidget& window) {
  QWidget* before = window.findChild<QWidget*>(QStringLiteral("lstFile"));
  const auto follow = [&](const platform::ButtonSpec& spec) {
    auto* button = window.findChild<QWidget*>(QString::fromLatin1(spec.name));
    QWidget::setTabOrder(before, button);
    before = button;
  };
  for (std::size_t column = 0; column < kColumns; ++column) {
    for (std::size_t i = column; i < std::size(kButtons) - kColumns; i += kColumns) {
      follow(kButtons[i]);
    }
  }
  for (std::size_t i = std::size(kButtons) - kColumns; i < std::size(kButtons); ++i) {
    follow(kButtons[i]);
  }
}

}  // namespace

QWidget* buildManArcWindow() {
  auto* window = new QDialog;
  auto* row = new QHBoxLayout;
  row->addWidget(newArchives(window), 1);
  row->addLayout(newButtons(window));
  auto* column = new QVBoxLayout(window);
  column->addWidget(newLine("lblDir", window));
  column->addLayout(row, 1);
  column->addWidget(newLine("lblFileInfo", window));
  orderButtons(*window);
  const QSize wanted(platform::widthOfCharacters(window, kCharacters.width()),
                     window->fontMetrics().lineSpacing() * kCharacters.height());
  window->resize(wanted.boundedTo(platform::roomOnScreen()));
  return window;
}

void showArchives(QWidget& window, bool any) {
  auto* place = window.findChild<QWidget*>(QStringLiteral("archives"));
  static_cast<QStackedLayout*>(place->layout())->setCurrentIndex(any ? 0 : 1);
  window.findChild<QWidget*>(QStringLiteral("cmdCreare"))
      ->setProperty("HelpPage", any ? "" : "cominciare");
}

}  // namespace tavolix
