#include "query/frmfiltro.h"

#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalBlocker>

#include "core/dialogo.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/drop_down.h"
#include "platform/handlers.h"
#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

enum Colonna { kAltro, kCampo, kCondizione, kValore };

constexpr const char* kConnettori[] = {"", "e..", "o.."};

QString indexed(const char* name, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

QHBoxLayout* newButtons(QWidget* window) {
  auto* row = new QHBoxLayout;
  row->addWidget(platform::newButton({"cmdFiltro", "Applica &filtro    ", "", "filtra"}, window));
  row->addWidget(
      platform::newButton({"cmdAnnulla", "&Annulla ogni filtro ", "", "annulla-filtro"}, window));
  row->addStretch(1);
  row->addWidget(platform::newButton({"cmdAiuto", "Aiuto", "", "guida"}, window));
  row->addWidget(platform::newButton({"cmdEsci", "&Esci    ", "", "esci"}, window));
  return row;
}

}  // namespace

frmFiltro::frmFiltro()
    : platform::Form(
          QStringLiteral("frmFiltro"),
          {.title = "Filtro", .icon = "filtra", .enter = "cmdFiltro", .escape = "cmdEsci"}) {}
frmFiltro::~frmFiltro() = default;

QWidget* frmFiltro::build() {
  auto* window = new QDialog;
  auto* grid = new QGridLayout;
  const std::pair<Colonna, const char*> heads[] = {
      {kCampo, "Campo"}, {kCondizione, "Condizione"}, {kValore, "Valore"}};
  for (const auto& [column, text] : heads) {
    grid->addWidget(new QLabel(QString::fromLatin1(text), window), 0, column);
  }
  grid->setColumnStretch(kValore, 1);
  grid->setColumnMinimumWidth(kValore, platform::widthOfCharacters(window, 30));
  auto* column = new QVBoxLayout(window);
  auto* what = new QLabel(QStringLiteral("Visualizzare solo i record della raccolta corrente "
                                         "che rispettano le seguenti caratteristiche:"),
                          window);
  what->setWordWrap(true);
  column->addWidget(what);
  column->addLayout(grid);
  for (int i = 0; i < kRighe; ++i) {
    buildRow(i, window);
    grid->addWidget(window->findChild<QWidget*>(indexed("cboAltro", i)), i + 1, kAltro);
    grid->addWidget(riga(i).Campo(), i + 1, kCampo);
    grid->addWidget(riga(i).Condizioni(), i + 1, kCondizione);
    grid->addLayout(riga(i).Valori(), i + 1, kValore);
  }
  column->addStretch(1);
  column->addLayout(newButtons(window));
  return window;
}

// The connector is made first: the Tab key goes from the left to the right.
void frmFiltro::buildRow(int iRiga, QWidget* window) {
  auto* altro = new platform::DropDown(window);
  altro->setObjectName(indexed("cboAltro", iRiga));
  platform::nameControl(*altro, QStringLiteral("Connettore %1").arg(iRiga + 1));
  altro->setMinimumWidth(platform::widthOfCharacters(altro, 9));
  QSizePolicy policy = altro->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  altro->setSizePolicy(policy);
  altro->setVisible(iRiga == 1);
  righe_.at(static_cast<std::size_t>(iRiga)) = std::make_unique<ControlliCondizione>(
      ControlliCondizione::Nomi{"cbpCampo", QStringLiteral("(%1)").arg(iRiga)},
      QStringLiteral(" %1").arg(iRiga + 1), window);
}

QComboBox& frmFiltro::cboAltro(int iRiga) {
  return *control<QComboBox>(indexed("cboAltro", iRiga));
}

void frmFiltro::loaded() {
  PreparaDialogo(*this);
  iRaccolta_ = -1;
  for (int i = 0; i < kRighe; ++i) connectRow(i);
  platform::onClick(this, "cmdFiltro", &frmFiltro::cmdFiltro_Click);
  platform::onClick(this, "cmdAnnulla", [this] { applica({}); });
  platform::onClick(this, "cmdEsci", [this] { Hide(); });
  focus_.watch(Window());
}

// The focus goes on where a row was taken from an open list; keys that go through the rows of a
// closed one stay in it.
void frmFiltro::connectRow(int iRiga) {
  const auto changed = &QComboBox::currentIndexChanged;
  const auto picked = &platform::DropDown::picked;
  auto* altro = static_cast<platform::DropDown*>(&cboAltro(iRiga));
  using platform::onSignal;
  onSignal(altro, changed, this, [this, iRiga] { cboAltro_Click(iRiga); });
  onSignal(altro, picked, this, [this, iRiga] { goTo(riga(iRiga).Campo()); });
  onSignal(riga(iRiga).Campo(), changed, this, [this, iRiga] { cbpCampo_Click(iRiga); });
  onSignal(riga(iRiga).Campo(), picked, this, [this, iRiga] { goTo(riga(iRiga).Condizioni()); });
  onSignal(riga(iRiga).Condizioni(), picked, this,
           [this, iRiga] { goTo(riga(iRiga).Valore(iRaccolta_)); });
}

void frmFiltro::goTo(QWidget* control) {
  if (control->isVisible()) control->setFocus();
}

void frmFiltro::Carica() {
  Load();
  riga(0).Campo()->setFocus();
  if (iRacCorr == iRaccolta_ && sPathArc == sArchivio_) {
    for (const auto& controlli : righe_) controlli->RivediVoce();
    return;
  }
  iRaccolta_ = iRacCorr;
  sArchivio_ = sPathArc;
  for (int i = 0; i < kRighe; ++i) {
    riga(i).CaricaCampi(iRacCorr);
    const QSignalBlocker silence(&cboAltro(i));
    cboAltro(i).clear();
    for (const char* text : kConnettori) cboAltro(i).addItem(QString::fromLatin1(text));
    cboAltro(i).setCurrentIndex(i == 0 ? 1 : 0);
    cboAltro(i).setVisible(i == 1);
    cbpCampo_Click(i);
  }
}

bool frmFiltro::isActive(int iRiga) {
  return iRiga == 0 || !cboAltro(iRiga).currentText().trimmed().isEmpty();
}

void frmFiltro::VisibilitaControlli(int iRiga) {
  riga(iRiga).Mostra(iRaccolta_, isActive(iRiga));
}

void frmFiltro::cbpCampo_Click(int iRiga) {
  const tCampo& campo = aCampi(iRaccolta_, riga(iRiga).iCampo());
  riga(iRiga).Prepara(iRaccolta_, sCondizioniFiltro(campo.sTipo));
  VisibilitaControlli(iRiga);
}

void frmFiltro::cboAltro_Click(int iRiga) {
  VisibilitaControlli(iRiga);
  if (!isActive(iRiga)) {
    switchOffBehind(iRiga);
  } else if (iRiga + 1 < kRighe) {
    cboAltro(iRiga + 1).setVisible(true);
  }
}

void frmFiltro::switchOffBehind(int iRiga) {
  for (int i = iRiga + 1; i < kRighe; ++i) {
    const QSignalBlocker silence(&cboAltro(i));
    cboAltro(i).setCurrentIndex(0);
    cboAltro(i).setVisible(false);
    VisibilitaControlli(i);
  }
}

void frmFiltro::cmdFiltro_Click() {
  QVector<RigaFiltro> attive;
  QVector<int> places;
  for (int i = 0; i < kRighe; ++i) {
    if (!isActive(i)) continue;
    attive.append({cboAltro(i).currentText(), riga(i).Letta()});
    places.append(i);
  }
  const Esito esito =
      ClausolaFiltro(iRaccolta_, {attive.constData(), static_cast<std::size_t>(attive.size())});
  if (esito.sRifiuto.isEmpty()) {
    applica(esito.sTesto);
    return;
  }
  iMsg(esito.sRifiuto, 0);
  riga(places.at(esito.iRiga)).Valore(iRaccolta_)->setFocus();
}

void frmFiltro::applica(const QString& sFiltro) {
  aRaccolte(iRacCorr).sFiltro = sFiltro;
  DBRefresh();
  Hide();
}

bool frmFiltro::keyDown(int key, Qt::KeyboardModifiers) {
  EntryFocus::openList(key);
  return false;
}

void RegistraFormFiltro() {
  platform::forms().add<frmFiltro>(QStringLiteral("frmFiltro"));
}

}  // namespace tavolix
