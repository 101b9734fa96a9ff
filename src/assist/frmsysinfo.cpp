#include "assist/frmsysinfo.h"

#include <QClipboard>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>

#include "assist/modsysinfo.h"
#include "core/dialogo.h"
#include "platform/fitting_area.h"
#include "platform/handlers.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 46;
constexpr int kSistema = 4;  // the first ones are about the system

constexpr const char* kCaptions[kInformazioni] = {
    "Sistema operativo",
    "Processore",
    "Windows avviato da",
    "Dimensioni utili dello schermo",
    "Path",
    "Nome file",
    "Versione",
    "Data del file",
};

QString nameOf(const char* array, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

QGroupBox* newFrame(const char* caption, int first, int last, QWidget* parent) {
  auto* group = new QGroupBox(QString::fromLatin1(caption), parent);
  auto* form = new QFormLayout(group);
  for (int i = first; i < last; ++i) {
    auto* label = new QLabel(QString::fromLatin1(kCaptions[i]), group);
    label->setObjectName(nameOf("Label2", i));
    auto* value = new QLabel(group);
    value->setObjectName(nameOf("lblInf", i));
    value->setAccessibleDescription(label->text());
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setWordWrap(true);
    value->setMinimumWidth(platform::widthOfCharacters(value, kCharacters));
    form->addRow(label, value);
  }
  return group;
}

}  // namespace

frmSysInfo::frmSysInfo()
    : platform::Form(QStringLiteral("frmSysInfo"), {.title = "Informazioni di sistema",
                                                    .icon = "informazione",
                                                    .enter = "Command1",
                                                    .escape = "Command1"}) {}

QWidget* frmSysInfo::build() {
  auto* window = new QDialog;
  auto* area = new platform::FittingArea(window);
  auto* content = new QVBoxLayout(area->widget());
  content->setContentsMargins(0, 0, 0, 0);
  content->addWidget(newFrame(" Sistema ", 0, kSistema, area->widget()));
  content->addWidget(newFrame(" Applicazione ", kSistema, kInformazioni, area->widget()));
  content->addStretch(1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(
      platform::newButton({"cmdCopia", "&Copia", "Copia tutto negli appunti", "copia"}, window));
  buttons->addStretch(1);
  buttons->addWidget(platform::newButton({"Command1", "Esci", "", "esci"}, window));
  auto* column = new QVBoxLayout(window);
  column->addWidget(area, 1);
  column->addLayout(buttons);
  return window;
}

void frmSysInfo::loaded() {
  PreparaDialogo(*this);
  platform::onClick(this, "cmdCopia", &frmSysInfo::cmdCopia_Click);
  platform::onClick(this, "Command1", [this] { Unload(); });
  Control(QStringLiteral("Command1"))->setFocus();
  activated();
  platform::fitToScreen(*Window());
}

void frmSysInfo::activated() {
  const auto informazioni = RaccogliInformazioni();
  for (int i = 0; i < kInformazioni; ++i) {
    control<QLabel>(nameOf("lblInf", i))->setText(informazioni[static_cast<std::size_t>(i)]);
  }
}

void frmSysInfo::cmdCopia_Click() {
  QString text;
  for (int i = 0; i < kInformazioni; ++i) {
    text += control<QLabel>(nameOf("Label2", i))->text() + QStringLiteral(": ") +
            control<QLabel>(nameOf("lblInf", i))->text() + u'\n';
  }
  QGuiApplication::clipboard()->setText(text);
}

void RegistraFormSysInfo() {
  platform::forms().add<frmSysInfo>(QStringLiteral("frmSysInfo"));
}

}  // namespace tavolix
