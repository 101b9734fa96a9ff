#include "workspace/frmgrid.h"

#include <QAbstractScrollArea>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <functional>

#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/handlers.h"
#include "platform/icons.h"
#include "platform/tab_strip.h"
#include "workspace/frmmain.h"
#include "workspace/modrepos.h"

namespace tavolix {
namespace {

struct Tab {
  const char* tag;
  const char* caption;
  const char* icon;
};

constexpr Tab kTabs[] = {
    {"7", "Persone e contatti", "persone"},
    {"0", "Libri", "libri"},
    {"1", "Riviste", "riviste"},
    {"2", "Audio", "audio"},
    {"3", "Video", "video"},
    {"4", "Software", "software"},
    {"5", "Medicinali", "medicinali"},
    {"6", "Oggetti vari", "oggetti"},
};

constexpr int kTop = 6;  // twips

constexpr const char* kVuota =
    "Questa raccolta è ancora vuota.\nCon \"Nuovo\" si scrive il primo record; F1 apre la guida "
    "alla pagina \"Cominciare\".";
constexpr const char* kFiltrato =
    "Nessun record risponde al filtro.\nCon \"Elimina filtro\" tornano tutti.";

// Stands where the rows would.
void addAdvice(QAbstractScrollArea& list) {
  auto* lblVuoto = new QLabel(list.viewport());
  lblVuoto->setObjectName(QStringLiteral("lblVuoto"));
  lblVuoto->setAlignment(Qt::AlignCenter);
  lblVuoto->setWordWrap(true);
  lblVuoto->setAttribute(Qt::WA_TransparentForMouseEvents);
  lblVuoto->hide();
  auto* place = new QVBoxLayout(list.viewport());
  place->addWidget(lblVuoto);
}

}  // namespace

frmGrid::frmGrid() : platform::Form(QStringLiteral("frmGrid")) {}

void frmGrid::loadOwner() {
  FrmMain().Load();
}

QWidget* frmGrid::build() {
  auto* form = new QWidget(FrmMain().Area());
  auto* dbCurr = new platform::DataControl(form);
  dbCurr->setObjectName(QStringLiteral("dbCurr"));
  auto* tabSelez = new platform::TabStrip(form);
  tabSelez->setObjectName(QStringLiteral("tabSelez"));
  tabSelez->setAccessibleName(QStringLiteral("Raccolte"));
  // No collection is chosen yet, whichever tab comes first.
  const QSignalBlocker blocker(tabSelez);
  for (const Tab& tab : kTabs) {
    tabSelez->addTab(platform::icon(QString::fromLatin1(tab.icon)), QString::fromUtf8(tab.caption),
                     QString::fromLatin1(tab.tag));
  }
  auto* panGrd = new QWidget(form);
  panGrd->setObjectName(QStringLiteral("panGrd"));
  auto* grd = new platform::DataGrid(panGrd);
  grd->setObjectName(QStringLiteral("grd"));
  grd->setAccessibleName(QStringLiteral("Elenco dei record"));
  grd->SetDataSource(dbCurr);
  addAdvice(*grd);
  return form;
}

void frmGrid::MostraConsiglio(bool bFiltrato) {
  auto* lblVuoto = control<QLabel>(QStringLiteral("lblVuoto"));
  lblVuoto->setText(QString::fromUtf8(bFiltrato ? kFiltrato : kVuota));
  lblVuoto->show();
}

void frmGrid::NascondiConsiglio() {
  auto* lblVuoto = control<QLabel>(QStringLiteral("lblVuoto"));
  lblVuoto->clear();
  lblVuoto->hide();
}

void frmGrid::loaded() {
  platform::SetLeft(Window(), 0);
  platform::SetTop(Window(), kTop);
  Window()->resize(FrmMain().ListDesignSize());
  placeControls();
  QWidget* panGrd = Control(QStringLiteral("panGrd"));
  PosRegistra(*this, Control(QStringLiteral("tabSelez")), 0, 2);
  PosRegistra(*this, panGrd, 2, 2);
  PosRegistra(*this, Control(QStringLiteral("grd")), 2, 2);
  PosCattura(*this, true);
  connectControls();
}

void frmGrid::placeControls() {
  QWidget* tabSelez = Control(QStringLiteral("tabSelez"));
  QWidget* panGrd = Control(QStringLiteral("panGrd"));
  const QSize size = Window()->size();
  const int tabs = tabSelez->sizeHint().width();
  tabSelez->setGeometry(0, 0, tabs, size.height());
  panGrd->setGeometry(tabs, 0, size.width() - tabs, size.height());
  Control(QStringLiteral("grd"))->setGeometry(0, 0, panGrd->width() - 6, panGrd->height());
}

void frmGrid::connectControls() {
  auto* grd = control<platform::DataGrid>(QStringLiteral("grd"));
  platform::onCommand(control<platform::TabStrip>(QStringLiteral("tabSelez")),
                      &platform::TabStrip::clicked, this, &frmGrid::tabSelez_Click);
  platform::onCommand(grd, &platform::DataGrid::headClicked, this,
                      [this](int column) { grd_HeadClick(column); });
  platform::onSignal(grd, &platform::DataGrid::menuWanted, this, &frmGrid::grd_Menu);
  platform::onSignal(grd, &platform::DataGrid::beforeUpdate, this,
                     [] { CorreggiValoriGriglia(6); });
  platform::onSignal(grd, &platform::DataGrid::afterUpdate, this, [] { MostraValoriCorretti(); });
  connect(grd, &platform::DataGrid::writeFailed, this, SegnalaErrore);
  platform::onSignal(grd, &platform::DataGrid::readFailed, &FrmMain(), &frmMain::SegnalaLettura);
  platform::onCommand(grd, &platform::DataGrid::reloadAsked, &FrmMain(), &frmMain::InizializzaTab);
  platform::onCommand(grd, &platform::DataGrid::leaveAsked, &FrmMain(),
                      &frmMain::mnuFileChiudi_Click);
  connect(part<platform::DataControl>(QStringLiteral("dbCurr")),
          &platform::DataControl::writeFailed, this, SegnalaErrore);
}

void frmGrid::resized() {
  PosChange(*this);
}

bool frmGrid::wantsShortcut(int key, Qt::KeyboardModifiers modifiers) {
  return frmMain::bTastoGestMain(key, modifiers);
}

bool frmGrid::keyDown(int key, Qt::KeyboardModifiers modifiers) {
  return FrmMain().TastiGestMain(key, modifiers);
}

void frmGrid::tabSelez_Click() {
  Cedi();
  // What could not be written holds its collection.
  if (!FrmMain().bSalvato()) return returnToTab();
  FrmMain().InizializzaTab();
}

void frmGrid::returnToTab() {
  const QSignalBlocker silence(Control(QStringLiteral("tabSelez")));
  iSelRaccolta(iRacCorr);
}

void frmGrid::grd_HeadClick(int iColonna) {
  if (!FrmMain().bSalvato()) return;
  auto* grd = control<platform::DataGrid>(QStringLiteral("grd"));
  aRaccolte(iRacCorr).sOrdine = QStringLiteral(" ORDER BY ") + grd->Column(iColonna).dataField;
  DBRefresh();
  // A list that could not be read before opens its record again.
  if (lRecordElenco() != 0) FrmMain().AbilitazionePannello();
}

// What can be done with a cell and with its column; for a heading with the column alone.
void frmGrid::grd_Menu(int iColonna, bool bCella, const QPoint& dove) {
  auto* grd = control<platform::DataGrid>(QStringLiteral("grd"));
  const QModelIndex cell = bCella ? grd->currentIndex() : QModelIndex();
  const int iCampo = iColonna < 0 ? -1 : iCampoColonna(grd->Column(iColonna).dataField);
  auto* menu = new QMenu(grd);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const char* testo, bool bPossibile, const std::function<void()>& azione) {
    QAction* action = menu->addAction(QString::fromUtf8(testo));
    action->setEnabled(bPossibile);
    platform::onCommand(action, &QAction::triggered, this, azione);
  };
  add("&Modifica\tF2", cell.flags().testFlag(Qt::ItemIsEditable),
      [grd] { grd->edit(grd->currentIndex()); });
  add("&Copia\tCtrl+C", cell.isValid(), [grd] { grd->CopyCell(); });
  menu->addSeparator();
  add("&Filtra per questo valore", cell.isValid() && iCampo >= 0,
      [iCampo, grd] { verbi().FiltraValore(iCampo, grd->currentIndex().data(Qt::EditRole)); });
  add("&Ordina per questa colonna", iColonna >= 0, [this, iColonna] { grd_HeadClick(iColonna); });
  menu->addSeparator();
  add("&Trova...\tCtrl+F", true, [] { verbi().Cerca(); });
  menu->popup(dove);
}

void RegistraFormGrid() {
  platform::forms().add<frmGrid>(QStringLiteral("frmGrid"));
}

}  // namespace tavolix
