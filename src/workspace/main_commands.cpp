#include <QAction>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolButton>
#include <array>

#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/handlers.h"
#include "platform/icons.h"
#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "workspace/frmmain.h"
#include "workspace/main_view.h"

namespace tavolix {
namespace {

using Handler = void (*)(frmMain&);

// A command whose window the program does not have is there and disabled.
struct Entry {
  int level;  // 0 a menu of the menu bar
  const char* name;
  const char* caption;   // "-" is a line
  const char* shortcut;  // several are parted by "; ", the first is shown
  int helpContext;       // page of the guide, 0 for none
  Handler run;
};

template <int iRac>
void select(frmMain& form) {
  form.SelezionaRaccolta(iRac);
}

template <void (frmMain::*procedure)()>
void run(frmMain& form) {
  (form.*procedure)();
}

// clang-format off
constexpr Entry kEntries[] = {
    {0, "mnuFile", "&File", "", 0, nullptr},
    {1, "mnuGestArc", "&Apertura / gestione archivi", "", 13, nullptr},
    {1, "mnuFile1", "-", "", 0, nullptr},
    {1, "mnuFileCopie", "&Copie di sicurezza", "", 2, nullptr},
    {1, "mnuFileEsporta", "Es&portazioni", "", 3, nullptr},
    {1, "mnuImportazioni", "Importazioni", "", 0, nullptr},
    {2, "mnuImportaRubKPZ3", "Importa rubrica Velmar Casaro 3/3.5", "", 14, nullptr},
    {1, "mnuCodiceAccesso", "C&odice di accesso", "", 15, nullptr},
    {1, "mnuFileStampe", "&Stampe", "", 16, nullptr},
    {1, "mnuFile3", "-", "", 0, nullptr},
    {1, "mnuConfigurazione", "Con&figurazione", "", 1, nullptr},
    {1, "mnuFile2", "-", "", 0, nullptr},
    {1, "mnuFileChiudi", "&Esci", "Ctrl+Q", 0, run<&frmMain::mnuFileChiudi_Click>},
    {0, "mnuModifica", "&Modifica ", "", 0, nullptr},
    {1, "mnuModNuovo", "&Crea nuovo record", "Alt+N; F12", 1150, run<&frmMain::TastoAddNew>},
    {1, "mnuModElimina", "&Elimina record corrente", "Alt+C", 1150, run<&frmMain::TastoCancella>},
    {1, "mnuCancellaMultiplo", "Elimina &tutti i record visualizzati", "", 1150, run<&frmMain::mnuCancellaMultiplo_Click>},
    {1, "mnuModDuplica", "&Duplica record", "Alt+D; F11", 1150, run<&frmMain::TastoDuplica>},
    {1, "mnuModifica2", "-", "", 0, nullptr},
    {1, "mnuSottoraccolta", "&Mostra sottoraccolta record corrente", "F9", 10, run<&frmMain::mnuSottoraccolta_Click>},
    {0, "mnuRaccolte", "&Raccolte", "", 0, nullptr},
    {1, "mnuRaccoltePersone", "&Persone e contatti", "Ctrl+P", 0, select<7>},
    {1, "mnuRaccolteLibri", "&Libri", "Ctrl+L", 0, select<0>},
    {1, "mnuRaccolteRiviste", "&Riviste e giornali", "Ctrl+R", 0, select<1>},
    {1, "mnuRaccolteAudio", "&Audio", "Ctrl+A", 0, select<2>},
    {1, "mnuRaccolteVideo", "&Video", "Ctrl+V", 0, select<3>},
    {1, "mnuRaccolteSoftware", "&Software (programmi e giochi)", "Ctrl+S", 0, select<4>},
    {1, "mnuRaccolteMedicinali", "&Medicinali", "Ctrl+M", 0, select<5>},
    {1, "mnuRaccolteOggetti", "&Oggetti vari", "Ctrl+O", 0, select<6>},
    {1, "mnuRaccolte2", "-", "", 0, nullptr},
    {1, "mnuAnalisiInfoAcc", "Analisi elenchi multiraccolta", "", 7, nullptr},
    {0, "mnuRacCorrente", "R&accolta corrente", "", 0, nullptr},
    {1, "mnuModFiltra", "Applica &filtro", "", 4, run<&frmMain::mnuModFiltra_Click>},
    {1, "mnuEliminaFiltro", "&Elimina filtro", "", 4, run<&frmMain::mnuEliminaFiltro_Click>},
    {1, "mnuModTrova", "&Trova", "Ctrl+F", 12, run<&frmMain::mnuModTrova_Click>},
    {1, "mnuOrdina", "&Ordina", "", 8, run<&frmMain::mnuOrdina_Click>},
    {1, "mnuAnalisiRaggruppamenti", "Analisi &raggruppamenti", "", 6, nullptr},
    {1, "mnuElenco2", "-", "", 0, nullptr},
    {1, "mnuMaxExtension", "&Massima estensione elenco", "", 0, run<&frmMain::mnuMaxExtension_Click>},
    {1, "mnuVarieSalva", "&Salva disposizione elenco", "", 17, run<&frmMain::mnuVarieSalva_Click>},
    {0, "mnuAiuto", "&?", "", 0, nullptr},
    {1, "mnuGuida", "Guida in linea", "", 0, nullptr},
    {1, "mnuSuggerimenti", "Suggerimenti", "", 0, nullptr},
    {1, "mnuInfo", "Informazioni sul sistema", "", 0, nullptr},
    {1, "mnuAiuto2", "-", "", 0, nullptr},
    {1, "mnuMyInfo", "Informazioni sul programma...", "", 0, nullptr},
};

// Keys that no menu has.
struct KeyCommand {
  const char* shortcut;
  bool forward;
};
constexpr KeyCommand kSearchKeys[] = {{"F3", true}, {"Shift+F3", false}};

// The buttons of the bar from left to right; the index is the one of cmdBar.
struct BarButton {
  int index;
  const char* tip;
  const char* icon;
  const char* command;
  bool gapAfter;
};

constexpr BarButton kBar[] = {
    {5, "Apertura / gestione archivi", "archivi", "mnuGestArc", false},
    {7, "Esegui copia di sicurezza", "copia", "mnuFileCopie", false},
    {6, "Stampa", "stampa", "mnuFileStampe", true},
    {0, "Trova", "trova", "mnuModTrova", false},
    {9, "Applica filtro all'elenco", "filtra", "mnuModFiltra", false},
    {8, "Annulla filtro corrente", "annulla-filtro", "mnuEliminaFiltro", true},
    {1, "Analisi raggruppamenti", "raggruppamenti", "mnuAnalisiRaggruppamenti", false},
    {10, "Analisi elenchi multiraccolta", "multiraccolta", "mnuAnalisiInfoAcc", true},
    {2, "Suggerimenti...", "suggerimenti", "mnuSuggerimenti", false},
    {4, "Guida in linea", "guida", "mnuGuida", false},
    {3, "Uscita dal programma", "esci", "mnuFileChiudi", false},
};
// clang-format on

constexpr QSize kIcon(24, 24);

void addEntry(frmMain& form, QMainWindow* window, std::array<QMenu*, 3>& menus, std::size_t i) {
  const Entry& entry = kEntries[i];
  const auto level = static_cast<std::size_t>(entry.level);
  const QString caption = QString::fromUtf8(entry.caption);
  const QString name = QString::fromLatin1(entry.name);
  const bool hasChildren = i + 1 < std::size(kEntries) && kEntries[i + 1].level > entry.level;
  if (hasChildren) {
    menus[level] =
        level == 0 ? window->menuBar()->addMenu(caption) : menus[level - 1]->addMenu(caption);
    menus[level]->setObjectName(name);
    return;
  }
  QAction* action =
      caption == u'-' ? menus[level - 1]->addSeparator() : menus[level - 1]->addAction(caption);
  action->setObjectName(name);
  if (*entry.shortcut != '\0')
    action->setShortcuts(QKeySequence::listFromString(QString::fromLatin1(entry.shortcut)));
  if (entry.helpContext != 0) action->setProperty("HelpContextID", entry.helpContext);
  action->setEnabled(entry.run != nullptr);
  if (entry.run != nullptr) {
    platform::onCommand(action, &QAction::triggered, window,
                        [&form, handler = entry.run] { handler(form); });
  }
}

void addBarButton(QMainWindow* window, QWidget* panBar, const BarButton& bar) {
  auto* action = window->findChild<QAction*>(QString::fromLatin1(bar.command));
  auto* button = new QToolButton(panBar);
  button->setObjectName(QStringLiteral("cmdBar(%1)").arg(bar.index));
  button->setIcon(platform::icon(QString::fromLatin1(bar.icon)));
  button->setIconSize(kIcon);
  button->setToolTip(QString::fromUtf8(bar.tip));
  platform::nameControl(*button, QString::fromUtf8(bar.tip));
  if (!action->shortcut().isEmpty()) {
    platform::showKeysInTip(*button, action->shortcut().toString(QKeySequence::NativeText));
  }
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  button->setMinimumSize(42, 38);
  button->setEnabled(action->isEnabled());
  // The pressed button is painted before a long command begins.
  platform::onSignal(button, &QToolButton::clicked, window, [action] {
    Cedi();
    action->trigger();
  });
  panBar->layout()->addWidget(button);
  if (bar.gapAfter) static_cast<QHBoxLayout*>(panBar->layout())->addSpacing(14);
}

}  // namespace

void buildCommands(frmMain& form, QWidget* widget, QWidget* panBar) {
  auto* window = static_cast<QMainWindow*>(widget);
  std::array<QMenu*, 3> menus{};
  for (std::size_t i = 0; i < std::size(kEntries); ++i) addEntry(form, window, menus, i);
  window->findChild<QAction*>(QStringLiteral("mnuMaxExtension"))->setCheckable(true);
  for (const KeyCommand& key : kSearchKeys) {
    auto* shortcut = new QShortcut(QKeySequence(QString::fromLatin1(key.shortcut)), window);
    platform::onCommand(shortcut, &QShortcut::activated, window,
                        [&form, key] { form.CercaAncora(key.forward); });
  }
  for (const BarButton& bar : kBar) addBarButton(window, panBar, bar);
  static_cast<QHBoxLayout*>(panBar->layout())->addStretch(1);
  panBar->setFixedHeight(44);
}

}  // namespace tavolix
