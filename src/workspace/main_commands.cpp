// The commands of the main window: its own, and menus and bar from those of all areas.

#include <QAction>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QToolButton>
#include <algorithm>
#include <string_view>

#include "core/comandi.h"
#include "core/modcuore.h"
#include "core/modutil.h"
#include "platform/data_control.h"
#include "platform/handlers.h"
#include "platform/icons.h"
#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "workspace/frmmain.h"
#include "workspace/main_view.h"

namespace tavolix {
namespace {

template <int iRac>
void select() {
  iSelRaccolta(iRac);
}

template <void (frmMain::*procedure)()>
void run() {
  (FrmMain().*procedure)();
}

constexpr Quando kRaccolta = Quando::kRaccolta;

// clang-format off
constexpr Comando kComandi[] = {
    {"", 10, "mnuFile", "&File"},
    {"mnuFile", 20, "mnuFile1", "-"},
    {"mnuFile", 50, "mnuImportazioni", "Importazioni"},
    {"mnuFile", 80, "mnuFile3", "-"},
    {"mnuFile", 100, "mnuFile2", "-"},
    {"mnuFile", 110, "mnuFileChiudi", "&Esci", "Ctrl+Q", 0, run<&frmMain::mnuFileChiudi_Click>, {}, {3, 43, "esci", "Uscita dal programma"}},
    {"", 20, "mnuModifica", "&Modifica "},
    {"mnuModifica", 10, "mnuModNuovo", "&Crea nuovo record", "Alt+N; F12", 1150, run<&frmMain::TastoAddNew>},
    {"mnuModifica", 20, "mnuModElimina", "&Elimina record corrente", "Alt+C", 1150, run<&frmMain::TastoCancella>},
    {"mnuModifica", 30, "mnuCancellaMultiplo", "Elimina &tutti i record visualizzati", "", 1150, run<&frmMain::mnuCancellaMultiplo_Click>},
    {"mnuModifica", 40, "mnuModDuplica", "&Duplica record", "Alt+D; F11", 1150, run<&frmMain::TastoDuplica>},
    {"mnuModifica", 50, "mnuModifica2", "-"},
    {"mnuModifica", 60, "mnuSottoraccolta", "&Mostra sottoraccolta record corrente", "F9", 10, run<&frmMain::mnuSottoraccolta_Click>},
    {"", 30, "mnuRaccolte", "&Raccolte"},
    {"mnuRaccolte", 10, "mnuRaccoltePersone", "&Persone e contatti", "Ctrl+P", 0, select<7>},
    {"mnuRaccolte", 20, "mnuRaccolteLibri", "&Libri", "Ctrl+L", 0, select<0>},
    {"mnuRaccolte", 30, "mnuRaccolteRiviste", "&Riviste e giornali", "Ctrl+R", 0, select<1>},
    {"mnuRaccolte", 40, "mnuRaccolteAudio", "&Audio", "Ctrl+A", 0, select<2>},
    {"mnuRaccolte", 50, "mnuRaccolteVideo", "&Video", "Ctrl+V", 0, select<3>},
    {"mnuRaccolte", 60, "mnuRaccolteSoftware", "&Software (programmi e giochi)", "Ctrl+S", 0, select<4>},
    {"mnuRaccolte", 70, "mnuRaccolteMedicinali", "&Medicinali", "Ctrl+M", 0, select<5>},
    {"mnuRaccolte", 80, "mnuRaccolteOggetti", "&Oggetti vari", "Ctrl+O", 0, select<6>},
    {"mnuRaccolte", 90, "mnuRaccolte2", "-"},
    {"", 40, "mnuRacCorrente", "R&accolta corrente"},
    {"mnuRacCorrente", 60, "mnuElenco2", "-"},
    {"mnuRacCorrente", 70, "mnuMaxExtension", "&Massima estensione elenco", "", 0, run<&frmMain::mnuMaxExtension_Click>, {}, {}, true},
    {"mnuRacCorrente", 80, "mnuVarieSalva", "&Salva disposizione elenco", "", 17, run<&frmMain::mnuVarieSalva_Click>, kRaccolta},
    {"", 50, "mnuAiuto", "&?"},
    {"mnuAiuto", 40, "mnuAiuto2", "-"},
    {nullptr, 0, "", "", "Ctrl+Z", 0, [] { dbForm(iRacCorr).UndoWrite(); }, kRaccolta},
};
// clang-format on

constexpr QSize kIcon(24, 24);
constexpr int kGroupGap = 14;

using Rows = std::vector<const Comando*>;

Rows rowsOf(const Rows& all, std::string_view menu) {
  Rows rows;
  std::copy_if(all.begin(), all.end(), std::back_inserter(rows),
               [&](const Comando* row) { return row->menu != nullptr && row->menu == menu; });
  return rows;
}

void connectAction(QAction* action, const Comando& row, QMainWindow* window) {
  if (*row.tasti != '\0')
    action->setShortcuts(QKeySequence::listFromString(QString::fromLatin1(row.tasti)));
  action->setData(row.guida);
  action->setCheckable(row.spunta);
  action->setEnabled(row.esegui != nullptr);
  if (row.esegui == nullptr) return;
  platform::onCommand(action, &QAction::triggered, window, [&row] { EseguiComando(row); });
}

void addRow(const Rows& all, const Comando& row, QMenu* menu, QMainWindow* window);

// The menu bar or a menu takes another menu.
void addMenu(const Rows& all, const Comando& row, QMenu* menu, QMainWindow* window) {
  const QString caption = QString::fromUtf8(row.testo);
  QMenu* child = menu == nullptr ? window->menuBar()->addMenu(caption) : menu->addMenu(caption);
  child->setObjectName(QString::fromLatin1(row.nome));
  for (const Comando* entry : rowsOf(all, row.nome)) addRow(all, *entry, child, window);
}

void addRow(const Rows& all, const Comando& row, QMenu* menu, QMainWindow* window) {
  if (!rowsOf(all, row.nome).empty()) return addMenu(all, row, menu, window);
  const QString caption = QString::fromUtf8(row.testo);
  QAction* action = caption == u'-' ? menu->addSeparator() : menu->addAction(caption);
  action->setObjectName(QString::fromLatin1(row.nome));
  connectAction(action, row, window);
}

void addKeys(const Comando& row, QMainWindow* window) {
  auto* shortcut = new QShortcut(QKeySequence(QString::fromLatin1(row.tasti)), window);
  platform::onCommand(shortcut, &QShortcut::activated, window, [&row] { EseguiComando(row); });
}

void addBarButton(QMainWindow* window, QWidget* panBar, const Comando& row) {
  const PulsanteBarra& bar = row.pulsante;
  auto* action = window->findChild<QAction*>(QString::fromLatin1(row.nome));
  auto* button = new QToolButton(panBar);
  button->setObjectName(QStringLiteral("cmdBar(%1)").arg(bar.indice));
  button->setIcon(platform::icon(QString::fromLatin1(bar.icona)));
  button->setIconSize(kIcon);
  button->setToolTip(QString::fromUtf8(bar.suggerimento));
  platform::nameControl(*button, QString::fromUtf8(bar.suggerimento));
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
}

void buildBar(Rows rows, QMainWindow* window, QWidget* panBar) {
  std::erase_if(rows, [](const Comando* row) { return row->pulsante.indice < 0; });
  std::sort(rows.begin(), rows.end(), [](const Comando* one, const Comando* other) {
    return one->pulsante.posto < other->pulsante.posto;
  });
  auto* line = static_cast<QHBoxLayout*>(panBar->layout());
  int group = rows.empty() ? 0 : rows.front()->pulsante.posto / 10;
  for (const Comando* row : rows) {
    if (row->pulsante.posto / 10 != group) line->addSpacing(kGroupGap);
    group = row->pulsante.posto / 10;
    addBarButton(window, panBar, *row);
  }
  line->addStretch(1);
  panBar->setFixedHeight(44);
}

}  // namespace

void RegistraComandiWorkspace() {
  RegistraComandi(kComandi);
}

void buildCommands(QWidget* widget, QWidget* panBar) {
  auto* window = static_cast<QMainWindow*>(widget);
  const Rows all = Comandi();
  for (const Comando* menu : rowsOf(all, "")) addMenu(all, *menu, nullptr, window);
  for (const Comando* row : all) {
    if (row->menu == nullptr) addKeys(*row, window);
  }
  buildBar(all, window, panBar);
}

}  // namespace tavolix
