#include "workspace/frmmain.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <algorithm>
#include <optional>
#include <utility>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/clock.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/handlers.h"
#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "platform/screen_room.h"
#include "platform/tab_strip.h"
#include "workspace/frmcalendario.h"
#include "workspace/frmgrid.h"
#include "workspace/frmrac.h"
#include "workspace/frmsub.h"
#include "workspace/frmtab.h"
#include "workspace/lampeggio.h"
#include "workspace/main_view.h"
#include "workspace/modrepos.h"

namespace tavolix {
namespace {

using platform::forms;

const QString kMain = QStringLiteral("frmMain");
constexpr int kOverlap = 8;         // twips by which the form stands over the list
constexpr int kPageMargin = 90;     // twips between the form's height and its pages
constexpr int kLeastWindow = 3000;  // twips
constexpr QSize kFirstSize(1200, 780);

constexpr const char* kMenus[] = {"mnuFile", "mnuRaccolte", "mnuRacCorrente", "mnuModifica"};

frmGrid& Griglia() {
  return forms().as<frmGrid>(QStringLiteral("frmGrid"));
}
platform::DataGrid* grd() {
  return Griglia().control<platform::DataGrid>(QStringLiteral("grd"));
}

void applicationSettings() {
  ImpostaFileIni(sPathCompleto(QStringLiteral("tvx.ini")));
  ImpostaSezioneIni(QStringLiteral("Application"));
}

// A number of the window's place; nothing where the settings have none.
std::optional<int> pixelsOf(const char* key) {
  int twips = 0;
  if (!bLeggiInt(QString::fromLatin1(key), twips)) return std::nullopt;
  return platform::toPixels(twips);
}

void offerVerbs() {
  Verbi& all = verbi();
  all.bSalvato = [] { return FrmMain().bSalvato(); };
  all.RicaricaRaccolta = [] { FrmMain().InizializzaTab(); };
  all.AbilitazionePannello = [] { FrmMain().AbilitazionePannello(); };
}

// What windows may lie on, the main screen first.
QVector<QRect> screens() {
  QVector<QRect> areas;
  for (const QScreen* screen : QGuiApplication::screens()) areas << screen->availableGeometry();
  return areas;
}

}  // namespace

frmMain& FrmMain() {
  return forms().as<frmMain>(kMain);
}

void RegistraFormWorkspace() {
  forms().add<frmMain>(kMain);
  offerVerbs();
  RegistraComandiWorkspace();
  RegistraFormGrid();
  RegistraFormRaccolte();
  RegistraFormSub();
  RegistraFormTab();
  RegistraFormCalendario();
}

frmMain::frmMain() : platform::Form(kMain) {}

QWidget* frmMain::build() {
  return buildMainWindow();
}

QWidget* frmMain::Area() {
  return Control(QStringLiteral("area"));
}

QSize frmMain::ListDesignSize() {
  const int beside = platform::toPixels(iLarghezzaScheda());
  return {Area()->width() - beside, std::max(200, Area()->height())};
}

QWidget* frmMain::panRecord(int iRac) {
  return aRaccolte(iRac).oForm->Control(QStringLiteral("panRecord"));
}

void frmMain::title(const QString& text) {
  control<QLabel>(QStringLiteral("panTitolo"))->setText(text);
}

void frmMain::AbilitaControlli(bool bAbilita) {
  protetto("frmMain!AbilitaControlli", [&] {
    Griglia().Control(QStringLiteral("tabSelez"))->setEnabled(bAbilita);
    for (const char* menu : kMenus) {
      control<QMenu>(QString::fromLatin1(menu))->menuAction()->setEnabled(bAbilita);
    }
    grd()->setEnabled(bAbilita);
    for (const char* name : {"panEspandi", "panCrea"}) {
      Control(QString::fromLatin1(name))->setEnabled(bAbilita);
    }
    for (int i = 0; i <= 10; ++i) {
      Control(QStringLiteral("cmdBar(%1)").arg(i))->setEnabled(bAbilita);
    }
  });
}

void frmMain::PermettiInput(bool bPermetti) {
  if (!bPermetti) Griglia().NascondiConsiglio();
  Control(QStringLiteral("panCrea"))->setVisible(bPermetti);
  Griglia().Control(QStringLiteral("tabSelez"))->setEnabled(bPermetti);
  Control(QStringLiteral("panBar"))->setEnabled(bPermetti);
  for (const char* menu : kMenus) {
    control<QMenu>(QString::fromLatin1(menu))->menuAction()->setEnabled(bPermetti);
  }
}

void frmMain::InizializzaTab() {
  const bool loaded = protetto("frmMain!InizializzaTab", [&] { return loadCollection(), true; });
  if (!loaded) ignorando([&] { giveUpCollection(); });
}

void frmMain::loadCollection() {
  // It goes from control to control otherwise, as they are hidden.
  if (QWidget* focus = Window()->focusWidget()) focus->clearFocus();
  PermettiInput(false);
  Puntatore(kClessidra);
  Cedi();
  const int iVecchia = std::exchange(iRacCorr, iSelRaccolta(-1));
  const tRaccolta& raccolta = aRaccolte(iRacCorr);
  title(QStringLiteral("Caricamento raccolta ") + raccolta.sNome + QStringLiteral(" in corso..."));
  Griglia().Control(QStringLiteral("panGrd"))->setVisible(false);
  unloadOldForm(iVecchia);
  Cedi();
  CaricaFinestra();
  loadList();
  Griglia().Control(QStringLiteral("panGrd"))->setVisible(true);
  if (control<QPushButton>(QStringLiteral("cmdEspandi"))->isChecked()) raccolta.oForm->Show();
  dbElenco().UpdateControls();
  grd()->setFocus();
  Cedi();
  AbilitazionePannello();
  showSubCollection();
  verbi().SegueRicerca();
  PermettiInput(true);
  showCollection();
  Puntatore(kPuntatoreNormale);
}

// Of a collection that was loaded in part nothing is left that could be worked on: there is none
// until it, or another one, can be loaded.
void frmMain::giveUpCollection() {
  const QString name = aRaccolte(iSelRaccolta(-1)).sNome;
  for (int iRac = 0; iRac < kRaccoltePrincipali; ++iRac) {
    if (aRaccolte(iRac).oForm->IsLoaded()) unloadOldForm(iRac);
  }
  iRacCorr = -1;
  dbElenco().SetRecordset(nullptr);
  grd()->RemoveColumns();
  platform::nameControl(*grd(), QStringLiteral("Elenco dei record"));
  control<QLabel>(QStringLiteral("lblStatus"))->clear();
  verbi().SegueRicerca();
  title(QStringLiteral("Raccolta ") + name + QStringLiteral(" non caricata"));
  offerReload(QStringLiteral("L'archivio non si legge: la raccolta ") + name +
              QStringLiteral(" non e' stata caricata."));
  for (const char* menu : {"mnuFile", "mnuRaccolte"})
    control<QMenu>(QString::fromLatin1(menu))->menuAction()->setEnabled(true);
  Griglia().Control(QStringLiteral("tabSelez"))->setEnabled(true);
  Griglia().Control(QStringLiteral("panGrd"))->setVisible(true);
  Griglia().Control(QStringLiteral("cmdRiprova"))->setFocus();
}

// The same collection can be chosen again too.
void frmMain::offerReload(const QString& why) {
  Griglia().control<platform::TabStrip>(QStringLiteral("tabSelez"))->ForgetChoice();
  grd()->TellMissing(why);
}

void frmMain::showCollection() {
  title(QStringLiteral("Raccolta ") + aRaccolte(iRacCorr).sNome);
}

void frmMain::unloadOldForm(int iVecchia) {
  if (iVecchia == -1) return;
  platform::Form& old = *aRaccolte(iVecchia).oForm;
  old.Hide();
  Cedi();
  aTabCorrente_.at(static_cast<std::size_t>(iVecchia)) =
      old.control<QTabWidget>(QStringLiteral("panRecord"))->currentIndex();
  PosRimuoviControllo(*this, old.Name());
  PosRimuoviForm(old);
  old.Unload();
}

void frmMain::loadList() {
  grd()->SetRedraw(false);
  auto redraw = infine([] { grd()->SetRedraw(true); });
  const tRaccolta& raccolta = aRaccolte(iRacCorr);
  // A list that cannot be read must not leave another collection's rows beside the new form.
  dbElenco().SetRecordset(nullptr);
  // Columns first: an archive that cannot be read ends it here, and is told once.
  CaricaGrigliaConfig(raccolta.sQuery, *grd());
  DBRefresh();
  Cedi();
  platform::nameControl(*grd(), QStringLiteral("Elenco ") + raccolta.sNome);
  if (dbElenco().Recordset() == nullptr) {
    offerReload(QStringLiteral("L'elenco della raccolta ") + raccolta.sNome +
                QStringLiteral(" non si apre."));
  }
  grd()->SetRedraw(true);
  redraw.dismiss();
  CollegaCampi(true, iRacCorr);
  Cedi();
}

void frmMain::CaricaFinestra() {
  protetto("frmMain!CaricaFinestra", [&] {
    platform::Form& F = *aRaccolte(iRacCorr).oForm;
    QWidget* G = Griglia().Window();
    CaricaCampi(iRacCorr);
    CaricaComboCampi(iRacCorr);
    QWidget* pages = panRecord(iRacCorr);
    PosRegistra(F, pages, 0, 2);
    PosCattura(F, true);
    QWidget* form = F.Window();
    platform::SetTop(form, platform::Top(G));
    const bool hidden = !control<QPushButton>(QStringLiteral("cmdEspandi"))->isChecked();
    const int right = platform::Left(G) + platform::Width(G) - kOverlap;
    platform::SetLeft(form, hidden ? right - platform::Width(form) : right);
    platform::SetHeight(form, platform::Height(G));
    platform::SetHeight(pages, platform::Height(G) - kPageMargin);
    const auto place = static_cast<std::size_t>(iRacCorr);
    static_cast<QTabWidget*>(pages)->setCurrentIndex(
        aTabImpostata_.at(place) ? aTabCorrente_.at(place) : 0);
    PosRegistra(*this, form, 1, 2);
    PosCattura(*this, false);
    form->raise();
    aTabImpostata_.at(place) = true;
  });
}

void frmMain::showSubCollection() {
  const int sub = aRaccolte(iRacCorr).iSottoRaccolta;
  auto* cmdSubRac = control<QPushButton>(QStringLiteral("cmdSubRac"));
  cmdSubRac->setVisible(sub != -1);
  if (sub == -1) return;
  platform::setCaption(*cmdSubRac, aRaccolte(sub).sNome + QStringLiteral("    "));
}

void frmMain::AbilitazionePannello() {
  protetto("frmMain!AbilitazionePannello", [&] { AbilitazionePannello(lRecordElenco() != 0); });
}

void frmMain::AbilitazionePannello(bool bAbilita) {
  protetto("frmMain!AbilitazionePannello", [&] {
    auto* pages = static_cast<QTabWidget*>(panRecord(iRacCorr));
    if (pages->isEnabled() != bAbilita) {
      if (!bAbilita) pages->setCurrentIndex(0);
      pages->setEnabled(bAbilita);
      aRaccolte(iRacCorr).oForm->Control(QStringLiteral("picRecord(0)"))->update();
    }
    for (const char* name : {"cmdCancella", "cmdDuplica", "cmdSubRac"}) {
      Control(QString::fromLatin1(name))->setEnabled(bAbilita);
    }
    QWidget* cmdAddNew = Control(QStringLiteral("cmdAddNew"));
    const bool filtered = !aRaccolte(iRacCorr).sFiltro.isEmpty();
    bAbilita ? Griglia().NascondiConsiglio() : Griglia().MostraConsiglio(filtered);
    cmdAddNew->setProperty("HelpPage", bAbilita || filtered ? "" : "cominciare");
    if (bAbilita) {
      FermaLampeggio();
    } else {
      FaiLampeggiare(cmdAddNew);
      cmdAddNew->setFocus();
    }
  });
}

void frmMain::cmdEspandi_Click() {
  protetto("frmMain!Espandi", [&] {
    const bool beside = control<QPushButton>(QStringLiteral("cmdEspandi"))->isChecked();
    QWidget* G = Griglia().Window();
    part<QAction>(QStringLiteral("mnuMaxExtension"))->setChecked(!beside);
    if (iRacCorr < 0) {
      // No form is loaded yet: the list takes the form's place, or gives it up.
      const int width = iLarghezzaScheda();
      platform::SetWidth(G, platform::Width(G) + (beside ? -width : width));
    } else {
      platform::Form& F = *aRaccolte(iRacCorr).oForm;
      if (beside) {
        platform::SetWidth(G, platform::Left(F.Window()) - platform::Left(G) + kOverlap);
        F.Window()->raise();
        F.Show();
      } else {
        F.Hide();
        platform::SetWidth(G, platform::Width(G) + platform::Width(F.Window()));
      }
    }
    PosCattura(*this, true);
  });
}

void frmMain::setExtended(bool extended) {
  control<QPushButton>(QStringLiteral("cmdEspandi"))->setChecked(!extended);
  cmdEspandi_Click();
}

void frmMain::mnuMaxExtension_Click() {
  setExtended(control<QPushButton>(QStringLiteral("cmdEspandi"))->isChecked());
}

bool frmMain::bTastoGestMain(int key, Qt::KeyboardModifiers modifiers) {
  return (modifiers & ~Qt::KeypadModifier) == Qt::AltModifier &&
         (key == Qt::Key_N || key == Qt::Key_C || key == Qt::Key_D);
}

bool frmMain::TastiGestMain(int key, Qt::KeyboardModifiers modifiers) {
  if (!bTastoGestMain(key, modifiers)) return false;
  auto command = &frmMain::TastoDuplica;
  if (key == Qt::Key_N) command = &frmMain::TastoAddNew;
  if (key == Qt::Key_C) command = &frmMain::TastoCancella;
  runCommand([this, command] { (this->*command)(); });
  return true;
}

void frmMain::loaded() {
  PreparaDialogo(*this);
  place_ = new platform::WindowPlace(Window());
  growForList();
  PosRegistra(*this, Griglia().Window(), 2, 2);
  PosRegistra(*this, Control(QStringLiteral("panCrea")), 1, 2);
  PosCattura(*this, true);
  placeWindow();
  connectButtons();
  extendAtStart();
  Griglia().Window()->show();
}

// Creates the list at its design size; the window grows where the list would not fit.
void frmMain::growForList() {
  const int room = platform::Height(Area());
  const int list = platform::Height(Griglia().Window());
  if (list > room) platform::SetHeight(Window(), list + platform::Height(Window()) - room);
}

void frmMain::placeWindow() {
  applicationSettings();
  int rePos = 0;
  if (bLeggiInt(QStringLiteral("Win_RePos"), rePos) && rePos != 0) {
    restorePosition();
  } else {
    firstPlace();
  }
  // List and form follow before the window is seen.
  layOutHidden(Window());
}

// As large as is comfortable, and the screen allows.
void frmMain::firstPlace() {
  Window()->resize(kFirstSize.expandedTo(Window()->size()).boundedTo(platform::roomOnScreen()));
  CentraForm(*this);
  place_->moveTo(Window()->pos());
}

void frmMain::restorePosition() {
  firstPlace();
  QRect place = place_->normal();
  if (const auto left = pixelsOf("Win_X")) place.moveLeft(*left);
  if (const auto top = pixelsOf("Win_Y")) place.moveTop(*top);
  const QSize room = platform::roomOnScreen();
  const int least = platform::toPixels(kLeastWindow);
  if (const auto height = pixelsOf("Win_Alt")) {
    place.setHeight(std::max(std::min(*height, room.height()), least));
  }
  if (const auto width = pixelsOf("Win_Lar")) {
    place.setWidth(std::max(std::min(*width, room.width()), least));
  }
  Window()->resize(place.size());
  place_->moveTo(platform::broughtBack(place.topLeft(), screens()));
  int state = 0;
  bLeggiInt(QStringLiteral("Win_Stato"), state);
  if (state == 1) Window()->setWindowState(Qt::WindowMinimized);
  if (state == 2) Window()->setWindowState(Qt::WindowMaximized);
}

void frmMain::writePosition() {
  const QRect place = place_->normal();
  const bool maximized = Window()->isMaximized();
  const int state = maximized ? 2 : (Window()->isMinimized() ? 1 : 0);
  applicationSettings();
  const std::pair<const char*, int> values[] = {
      {"Win_X", platform::toTwips(place.x())},
      {"Win_Y", platform::toTwips(place.y())},
      {"Win_Alt", platform::toTwips(place.height())},
      {"Win_Lar", platform::toTwips(place.width())},
      {"Win_Stato", state},
  };
  for (const auto& [key, value] : values)
    bScriviStr(QString::fromLatin1(key), QString::number(value));
}

void frmMain::extendAtStart() {
  applicationSettings();
  int extension = 0;
  if (!bLeggiInt(QStringLiteral("ElencoExt"), extension) || extension != -1) setExtended(true);
}

void frmMain::connectButtons() {
  platform::onClick(this, "cmdAddNew", &frmMain::TastoAddNew);
  platform::onClick(this, "cmdCancella", &frmMain::TastoCancella);
  platform::onClick(this, "cmdDuplica", &frmMain::TastoDuplica);
  platform::onClick(this, "cmdSubRac", &frmMain::cmdSubRac_Click);
  platform::onClick(this, "cmdEspandi", &frmMain::cmdEspandi_Click);
  auto* timer = new QTimer(Window());
  platform::onSignal(timer, &QTimer::timeout, this, &frmMain::tick);
  timer->start(1000);
  tick();
}

void frmMain::tick() {
  const QDateTime now = platform::now();
  control<QLabel>(QStringLiteral("lblData"))
      ->setText(QLocale().toString(now.date(), QLocale::ShortFormat));
  control<QLabel>(QStringLiteral("lblOra"))
      ->setText(QLocale().toString(now.time(), QLocale::ShortFormat));
}

void frmMain::resized() {
  PosChange(*this);
}

// The window's box takes the one way out, which decides.
bool frmMain::queryUnload() {
  mnuFileChiudi_Click();
  return false;
}

void frmMain::mnuFileChiudi_Click() {
  protetto("frmMain!mnuFileChiudi", [&] {
    title(QStringLiteral("Chiusura in corso..."));
    Puntatore(kClessidra);
    Cedi();
    if (!bLasciaRiga()) return showCollection();
    writePosition();
    closeProgram();
  });
}

void frmMain::closeProgram() {
  Hide();
  for (platform::Form* form : forms().loadedForms()) {
    if (form->Name() != Name()) form->Unload();
  }
  verbi().ChiudiStampe();
  const bool closed = ChiudiDB(dbArc);
  Puntatore(kPuntatoreNormale);
  if (closed) {
    TerminaProgramma(0);
  } else {
    Show();
  }
}

}  // namespace tavolix
