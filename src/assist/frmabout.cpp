#include "assist/frmabout.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include "core/modmain.h"
#include "core/modutil.h"
#include "platform/handlers.h"
#include "platform/picture.h"
#include "platform/screen_reader.h"
#include "platform/theme.h"

namespace tavolix {
namespace {

constexpr int kFrame = 1;
constexpr int kPanelHeight = 24;
constexpr QRgb kPanelText = 0xFF3B2A1A;
constexpr QRgb kPanelTextDark = 0xFFF0E2C6;

// The room by lamplight: walls and what is written on them, the rest stays as it is.
platform::Picture::Colors eveningColors() {
  return {{"#fdf4e3", "#2b3240"}, {"#f3dfb9", "#1c2129"}, {"#fff3c4", "#ffd98a"},
          {"#3b2a1a", "#fbeed3"}, {"#6b4b2a", "#d9c6a3"}, {"#8a5a2b", "#e0b271"}};
}

QString sTestoVersione() {
  return QStringLiteral("Versione ") + QLatin1String(kVersione) + QStringLiteral(" Revisione ") +
         QLatin1String(kRevisione);
}

// On the picture's lower edge.
void addVersion(QWidget& picture) {
  auto* panVersione = new QLabel(sTestoVersione(), &picture);
  panVersione->setObjectName(QStringLiteral("panVersione"));
  panVersione->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  QPalette colors = panVersione->palette();
  colors.setColor(QPalette::WindowText,
                  QColor::fromRgb(platform::isDark() ? kPanelTextDark : kPanelText));
  panVersione->setPalette(colors);
  panVersione->setGeometry(12, picture.height() - kPanelHeight - 4, picture.width() - 24,
                           kPanelHeight);
}

}  // namespace

frmAbout::frmAbout() : platform::Form(QStringLiteral("frmAbout"), {.icon = "tavolix"}) {
  platform::onSignal(qApp, &QGuiApplication::focusWindowChanged, this,
                     [this](const QWindow* to) { focusWent(to); });
}

QWidget* frmAbout::build() {
  auto* window = new QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint);
  window->setWindowTitle(QStringLiteral("Informazioni sul programma"));
  auto* picture = new platform::Picture(
      QStringLiteral(":/immagini/casa.svg"),
      platform::isDark() ? eveningColors() : platform::Picture::Colors(), window);
  picture->setObjectName(QStringLiteral("Picture1"));
  picture->setFocusPolicy(Qt::StrongFocus);
  platform::nameControl(*picture,
                        QLatin1String(kNomeProgramma) + QStringLiteral(", ") + sTestoVersione());
  addVersion(*picture);
  auto* column = new QVBoxLayout(window);
  column->setContentsMargins(kFrame, kFrame, kFrame, kFrame);
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addWidget(picture);
  return window;
}

void frmAbout::loaded() {
  hasHadFocus_ = false;
  Window()->adjustSize();
  CentraForm(*this);
  auto* picture = control<platform::Picture>(QStringLiteral("Picture1"));
  picture->setFocus();
  platform::onSignal(picture, &platform::Picture::pressed, this, [this] { Unload(); });
}

// It has had the focus, or a dialog takes it as the program starts. The focus also goes while the
// window is being unloaded.
void frmAbout::focusWent(const QWindow* to) {
  if (!IsLoaded()) return;
  const QWindow* own = Window()->windowHandle();
  if (to == own) {
    hasHadFocus_ = own != nullptr;
  } else if (hasHadFocus_ || (to != nullptr && to == QGuiApplication::modalWindow())) {
    QTimer::singleShot(0, this, [this] { Unload(); });
  }
}

void RegistraFormAbout() {
  platform::forms().add<frmAbout>(QStringLiteral("frmAbout"));
}

}  // namespace tavolix
