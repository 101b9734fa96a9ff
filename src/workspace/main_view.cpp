#include "workspace/main_view.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/icons.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

// The smallest size at which everything stands in its place: fits a screen of 1920 x 1080 at twice
// the size. It is wider with large letters.
constexpr QSize kDesignSize(800, 480);
constexpr QSize kLeastSize(200, 200);
constexpr int kStripMargin = 6;
constexpr int kCharactersWide = 98;  // tabs, some of the list, and a form

QWidget* panel(QWidget* parent, const char* name) {
  auto* widget = new QWidget(parent);
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

QHBoxLayout* rowIn(QWidget* panel, int margin) {
  auto* row = new QHBoxLayout(panel);
  row->setContentsMargins(margin, 0, margin, 0);
  row->setSpacing(6);
  return row;
}

QLabel* titleLine(QWidget* parent) {
  auto* title = new QLabel(QStringLiteral("Avvio in corso..."), parent);
  title->setObjectName(QStringLiteral("panTitolo"));
  title->setToolTip(
      QStringLiteral("Per cambiare raccolta, premere uno dei pulsanti presenti sul bordo sinistro "
                     "della finestra"));
  title->setAccessibleDescription(QStringLiteral("Titolo della raccolta"));
  title->setContentsMargins(10, 5, 10, 5);
  title->setTextFormat(Qt::PlainText);
  QFont font = title->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.15);
  title->setFont(font);
  title->setAutoFillBackground(true);
  title->setBackgroundRole(QPalette::AlternateBase);
  return title;
}

constexpr platform::ButtonSpec kRecordButtons[] = {
    {"cmdAddNew", "&Nuovo     ", "Crea un nuovo record", "nuovo", "Alt+N, F12"},
    {"cmdCancella", "&Cancella    ", "Elimina il record corrente", "cancella", "Alt+C"},
    {"cmdDuplica", "&Duplica   ", "Duplica il record corrente", "duplica", "Alt+D, F11"},
    {"cmdSubRac", "", "Visualizza la sottoraccolta associata al record corrente", "sottoraccolta",
     "F9"},
};

// The record buttons keep to the top of their panel, whatever height it is given.
QWidget* recordButtons(QWidget* parent) {
  QWidget* panCrea = panel(parent, "panCrea");
  QHBoxLayout* row = rowIn(panCrea, 0);
  for (const platform::ButtonSpec& record : kRecordButtons) {
    row->addWidget(platform::newButton(record, panCrea), 0, Qt::AlignTop);
  }
  // Room for the longest sub-collection from the start, so that nothing moves at a change.
  auto* cmdSubRac = panCrea->findChild<QPushButton*>(QStringLiteral("cmdSubRac"));
  platform::setCaption(*cmdSubRac, QStringLiteral("Contatti    "));
  cmdSubRac->setMinimumWidth(cmdSubRac->sizeHint().width());
  QSizePolicy policy = cmdSubRac->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  cmdSubRac->setSizePolicy(policy);
  panCrea->resize(panCrea->sizeHint());
  return panCrea;
}

QWidget* expandPanel(QWidget* parent) {
  QWidget* panEspandi = panel(parent, "panEspandi");
  QHBoxLayout* row = rowIn(panEspandi, 0);
  auto* cmdEspandi = new QPushButton(platform::icon(QStringLiteral("espandi")), {}, panEspandi);
  cmdEspandi->setObjectName(QStringLiteral("cmdEspandi"));
  cmdEspandi->setToolTip(QStringLiteral("Dimensionamento elenco record"));
  cmdEspandi->setAccessibleName(QStringLiteral("Dimensionamento elenco record"));
  cmdEspandi->setCheckable(true);
  cmdEspandi->setChecked(true);
  cmdEspandi->setAutoDefault(false);
  auto* lblStatus = new QLabel(QStringLiteral("Voci"), panEspandi);
  lblStatus->setObjectName(QStringLiteral("lblStatus"));
  lblStatus->setAccessibleDescription(QStringLiteral("Numero di record"));
  row->addWidget(cmdEspandi);
  row->addWidget(lblStatus, 1);
  const QString longest = QStringLiteral("Elenco completo: 1000000 records");
  lblStatus->setMinimumWidth(lblStatus->fontMetrics().horizontalAdvance(longest));
  panEspandi->resize(panEspandi->sizeHint());
  return panEspandi;
}

// The list's panel and the buttons beside each other; below each other where the screen is too
// narrow for both.
QWidget* bottomStrip(QWidget* parent, int width) {
  QWidget* picSfondo = panel(parent, "picSfondo");
  QWidget* panCrea = recordButtons(picSfondo);
  QWidget* panEspandi = expandPanel(picSfondo);
  const int height = std::max(panCrea->height(), panEspandi->height());
  const bool beside = panEspandi->width() + panCrea->width() + 3 * kStripMargin <= width;
  const int top = beside ? kStripMargin : 2 * kStripMargin + height;
  panEspandi->setGeometry(kStripMargin, kStripMargin, panEspandi->width(), height);
  panCrea->setGeometry(width - panCrea->width() - kStripMargin, top, panCrea->width(), height);
  picSfondo->setFixedHeight(top + height + kStripMargin);
  return picSfondo;
}

void dateAndTime(QMainWindow* window) {
  auto* panStato = new QStatusBar(window);
  panStato->setObjectName(QStringLiteral("panStato"));
  for (const char* name : {"lblData", "lblOra"}) {
    auto* label = new QLabel(panStato);
    label->setObjectName(QString::fromLatin1(name));
    label->setAccessibleDescription(name[3] == 'D' ? QStringLiteral("Data")
                                                   : QStringLiteral("Ora"));
    label->setContentsMargins(8, 0, 8, 0);
    panStato->addPermanentWidget(label);
  }
  window->setStatusBar(panStato);
}

}  // namespace

int designWidth() {
  const QFontMetrics metrics(QApplication::font());
  const int wanted = metrics.horizontalAdvance(u'0') * kCharactersWide;
  return std::min(std::max(kDesignSize.width(), wanted), platform::roomOnScreen().width());
}

void layOutHidden(QWidget* window) {
  window->setAttribute(Qt::WA_DontShowOnScreen);
  window->show();
  window->hide();
  window->setAttribute(Qt::WA_DontShowOnScreen, false);
}

QWidget* buildMainWindow() {
  auto* window = new QMainWindow;
  window->resize(designWidth(), kDesignSize.height());
  auto* client = new QWidget(window);
  auto* column = new QVBoxLayout(client);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  QWidget* panBar = panel(client, "panBar");
  rowIn(panBar, 4)->setSpacing(2);
  QWidget* area = panel(client, "area");
  column->addWidget(panBar);
  column->addWidget(titleLine(client));
  column->addWidget(area, 1);
  column->addWidget(bottomStrip(client, window->width()));
  window->setCentralWidget(client);
  dateAndTime(window);
  buildCommands(window, panBar);
  window->setWindowIcon(platform::windowIcon(QStringLiteral("tavolix")));
  window->setMinimumSize(kLeastSize);
  layOutHidden(window);
  return window;
}

}  // namespace tavolix
