#include "workspace/frmcalendario.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>

#include "core/dialogo.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "platform/clock.h"
#include "platform/flash_target.h"
#include "platform/handlers.h"
#include "platform/theme.h"
#include "workspace/calendar_view.h"

namespace tavolix {
namespace {

const QString kCalendario = QStringLiteral("frmCalendario");
constexpr int kLightBlue = 9;
constexpr int kRightMargin = 20;  // twips
constexpr int kBottomMargin = 80;
constexpr const char* kLockable[] = {"cboMese", "cboAnno", "cmdAvanti", "cmdIndietro", "cmdOggi"};

QString text(const char* latin) {
  return QString::fromLatin1(latin);
}

Giorno oggi() {
  const QDate today = platform::today();
  return {today.day(), today.month(), today.year()};
}

QColor markColor() {
  return platform::isDark() ? platform::accentColor()
                            : platform::fromBgr(platform::qbColor(kLightBlue));
}

void setMark(QLabel& cell, bool marked) {
  QFont font = cell.font();
  font.setBold(marked);
  font.setUnderline(marked);
  cell.setFont(font);
  QPalette palette;
  if (marked) palette.setColor(QPalette::WindowText, markColor());
  cell.setPalette(palette);
}

}  // namespace

frmCalendario::frmCalendario()
    : platform::Form(
          kCalendario,
          {.title = "Calendario", .icon = "calendario", .enter = "cmdOK", .escape = "Command1"}) {}

QWidget* frmCalendario::build() {
  return buildCalendarWindow();
}

QLabel& frmCalendario::cell(int iCella) {
  return *control<QLabel>(QStringLiteral("cmdGiorno(%1)").arg(iCella));
}

int frmCalendario::number(const char* label) {
  return control<QLabel>(text(label))->text().toInt();
}

void frmCalendario::write(const char* label, int number) {
  control<QLabel>(text(label))->setText(QString::number(number));
}

std::optional<QDate> frmCalendario::Scegli(const QDate& data, const QWidget& sotto) {
  write("lblGG", data.day());
  write("lblMM", data.month());
  write("lblAA", data.year());
  const QPoint place = sotto.mapToGlobal(QPoint(0, sotto.height()));
  platform::SetLeft(Window(), platform::toTwips(place.x()));
  platform::SetTop(Window(), platform::toTwips(place.y()));
  ShowModal(nullptr);
  if (!bConfermato_) return std::nullopt;
  return QDate(number("lblAA"), number("lblMM"), number("lblGG"));
}

bool frmCalendario::isLocked() {
  return control<QLabel>(QStringLiteral("lblBlock"))->text() == QLatin1String("BLOCCO");
}

void frmCalendario::loaded() {
  PreparaDialogo(*this);
  CaricaMesi(*control<QComboBox>(QStringLiteral("cboMese")));
  CaricaAnni(*control<QComboBox>(QStringLiteral("cboAnno")));
  show(oggi());
  connectControls();
}

void frmCalendario::unloaded() {
  bIncorniciata_ = false;
}

void frmCalendario::connectControls() {
  platform::onClick(this, "cmdIndietro", [this] { show(mesePrecedente(giorno_)); });
  platform::onClick(this, "cmdAvanti", [this] { show(meseSuccessivo(giorno_)); });
  platform::onClick(this, "cmdOggi", [this] { show(oggi()); });
  platform::onClick(this, "cmdOK", &frmCalendario::cmdOK_Click);
  platform::onClick(this, "Command1", [this] { Hide(); });
  for (const char* name : {"cboMese", "cboAnno"}) {
    platform::onSignal(control<QComboBox>(text(name)), &QComboBox::currentIndexChanged, this,
                       [this] { cboClick(); });
  }
  for (int i = 0; i < kCelle; ++i) {
    auto* day = static_cast<DayCell*>(&cell(i));
    connect(day, &DayCell::clicked, this, [this, i] { cmdGiorno_Click(i); });
    connect(day, &DayCell::doubleClicked, this, [this, i] {
      cmdGiorno_Click(i);
      cmdOK_Click();
    });
  }
}

// Sets lists, cells and mark to a date, as far as the calendar goes.
void frmCalendario::show(const Giorno& giorno) {
  const QScopedValueRollback<bool> busy(bOccupato_, true);
  giorno_ = entroAnni(giorno);
  control<QComboBox>(QStringLiteral("cboAnno"))->setCurrentIndex(giorno_.anno - kPrimoAnno);
  control<QComboBox>(QStringLiteral("cboMese"))->setCurrentIndex(giorno_.mese - 1);
  fillCells();
  markDay();
}

void frmCalendario::cboClick() {
  if (bOccupato_) return;
  giorno_ = cambiaMese(giorno_, control<QComboBox>(QStringLiteral("cboMese"))->currentIndex() + 1,
                       control<QComboBox>(QStringLiteral("cboAnno"))->currentIndex() + kPrimoAnno);
  fillCells();
  markDay();
}

void frmCalendario::fillCells() {
  for (int i = 0; i < kCelle; ++i) {
    const int day = giornoInCella(i, giorno_.mese, giorno_.anno);
    const bool today = day != 0 && Giorno{day, giorno_.mese, giorno_.anno} == oggi();
    cell(i).setText(day == 0 ? QString() : QString::number(day));
    cell(i).setFrameShape(today ? QFrame::Box : QFrame::NoFrame);
    cell(i).setToolTip(today ? QStringLiteral("Oggi") : QString());
  }
}

void frmCalendario::markDay() {
  setMark(cell(iCellaSegnata_), false);
  iCellaSegnata_ = primaCella(giorno_.mese, giorno_.anno) + giorno_.giorno - 1;
  setMark(cell(iCellaSegnata_), true);
  QWidget* days = Control(QStringLiteral("panGiorni"));
  days->setAccessibleDescription(QStringLiteral("%1 %2 %3")
                                     .arg(giorno_.giorno)
                                     .arg(sNomeMese(giorno_.mese))
                                     .arg(giorno_.anno));
  QAccessibleEvent told(days, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&told);
}

void frmCalendario::cmdGiorno_Click(int iCella) {
  const int day = giornoInCella(iCella, giorno_.mese, giorno_.anno);
  Control(QStringLiteral("panGiorni"))->setFocus();
  if (day == 0) return;
  giorno_.giorno = day;
  markDay();
}

void frmCalendario::cmdOK_Click() {
  write("lblGG", giorno_.giorno);
  write("lblMM", giorno_.mese);
  write("lblAA", giorno_.anno);
  bConfermato_ = true;
  Hide();
}

void frmCalendario::activated() {
  bConfermato_ = false;
  show(daNumeri(number("lblGG"), number("lblMM"), number("lblAA")));
  const bool locked = isLocked();
  for (const char* name : kLockable) Control(text(name))->setEnabled(!locked);
  keepOnScreen();
  Control(QStringLiteral("panGiorni"))->setFocus();
}

void frmCalendario::keepOnScreen() {
  QWidget* window = Window();
  if (!bIncorniciata_) {
    // It was placed before it had a frame, which now stands where the window should.
    window->move(window->pos() + window->geometry().topLeft() - window->frameGeometry().topLeft());
    bIncorniciata_ = true;
  }
  const QRect screen = window->screen()->geometry();
  const QSize size = window->frameGeometry().size();
  const int right = platform::toTwips(screen.x() + screen.width() - size.width());
  const int bottom = platform::toTwips(screen.y() + screen.height() - size.height());
  int left = std::max(platform::Left(window), 1);
  int top = std::max(platform::Top(window), 1);
  if (left > right) left = right - kRightMargin;
  if (top > bottom) top = bottom - kBottomMargin;
  platform::SetLeft(window, left);
  platform::SetTop(window, top);
}

// Walks the days by keys while they have the focus.
bool frmCalendario::keyDown(int key, Qt::KeyboardModifiers) {
  if (QApplication::focusWidget() != Control(QStringLiteral("panGiorni"))) return false;
  Giorno giorno = giorno_;
  switch (key) {
    case Qt::Key_Left:
      giorno = spostaGiorni(giorno, -1);
      break;
    case Qt::Key_Right:
      giorno = spostaGiorni(giorno, 1);
      break;
    case Qt::Key_Up:
      giorno = spostaGiorni(giorno, -7);
      break;
    case Qt::Key_Down:
      giorno = spostaGiorni(giorno, 7);
      break;
    case Qt::Key_PageUp:
      giorno = mesePrecedente(giorno);
      break;
    case Qt::Key_PageDown:
      giorno = meseSuccessivo(giorno);
      break;
    case Qt::Key_Home:
      giorno.giorno = 1;
      break;
    case Qt::Key_End:
      giorno.giorno = GiorniNelMese(giorno.mese, giorno.anno);
      break;
    default:
      return false;
  }
  if (!isLocked() || giorno.mese == giorno_.mese) show(giorno);
  return true;
}

void RegistraFormCalendario() {
  platform::forms().add<frmCalendario>(kCalendario);
  verbi().ScegliData = [](const QDate& data, const QWidget& sotto) {
    return platform::forms().as<frmCalendario>(kCalendario).Scegli(data, sotto);
  };
}

}  // namespace tavolix
