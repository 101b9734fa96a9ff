// The windows that fill a field: the list behind a combo, the calendar under a date.

#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>

#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/clock.h"
#include "platform/data_combo.h"
#include "platform/date_box.h"
#include "platform/form.h"
#include "platform/system_path.h"
#include "platform/text_box.h"

namespace tavolix {
namespace {

using platform::forms;

constexpr const char* kValoreCorrente = "ValoreCorrente";

// Number in one of the labels by which the calendar is told a date, and tells one.
int readLabel(platform::Form& form, const char* label) {
  return form.control<QLabel>(QString::fromLatin1(label))->text().toInt();
}

void writeLabel(platform::Form& form, const char* label, int number) {
  form.control<QLabel>(QString::fromLatin1(label))->setText(QString::number(number));
}

void writeDate(platform::Form& form, const QDate& date) {
  writeLabel(form, "lblGG", date.day());
  writeLabel(form, "lblMM", date.month());
  writeLabel(form, "lblAA", date.year());
}

void placeUnder(platform::Form& form, const QWidget& box) {
  const QPoint place = box.mapToGlobal(QPoint(0, box.height()));
  platform::SetLeft(form.Window(), platform::toTwips(place.x()));
  platform::SetTop(form.Window(), platform::toTwips(place.y()));
}

void sendF1() {
  QWidget* receiver = QApplication::focusWidget();
  if (receiver == nullptr) return;
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QCoreApplication::postEvent(receiver, new QKeyEvent(type, Qt::Key_F1, Qt::NoModifier));
  }
}

}  // namespace

void ApriTabella(int iCampo) {
  protetto("modCuore!ApriTabella", [&] {
    auto* combo = static_cast<platform::DataCombo*>(aCampi(iRacCorr, iCampo).oControllo->widget());
    platform::Form& frmTab = forms()[QStringLiteral("frmTab")];
    frmTab.Load();
    QMetaObject::invokeMethod(&frmTab, "CaricaTAB", Q_ARG(int, iRacCorr), Q_ARG(int, iCampo));
    frmTab.setProperty(kValoreCorrente, NullAZero(combo->Value()));
    frmTab.control<platform::TextBox>(QStringLiteral("txtAdd"))->setText(combo->MissedText());
    frmTab.ShowModal(&forms()[QStringLiteral("frmMain")]);
    Cedi();
    CaricaComboCampo(iRacCorr, iCampo);
    if (!frmTab.property(kValoreCorrente).toString().isEmpty()) {
      // By its key: two values may differ in nothing that a search by text would see.
      ImpostaValoreCombo(*combo, 1, frmTab.property("VoceCorrente"));
    }
    combo->setFocus(Qt::OtherFocusReason);
  });
}

void ApriCalendario(platform::DateBox& oData) {
  platform::Form& form = forms()[QStringLiteral("frmCalendario")];
  const QDate date = oData.Date();
  writeDate(form, date.isValid() ? date : platform::now().date());
  placeUnder(form, oData);
  form.ShowModal(nullptr);
  oData.setFocus(Qt::OtherFocusReason);
  // Given up, what stood in the box stays, if it was no date too.
  if (!form.property("Confermato").toBool()) return;
  oData.SetRawData(QStringLiteral("%1%2%3")
                       .arg(readLabel(form, "lblGG"), 2, 10, QLatin1Char('0'))
                       .arg(readLabel(form, "lblMM"), 2, 10, QLatin1Char('0'))
                       .arg(readLabel(form, "lblAA"), 4, 10, QLatin1Char('0')));
}

void CollegaAiuto(QAbstractButton& cmdAiuto) {
  const QString guide = platform::systemPath(sPathCompleto(QStringLiteral("tvx.hlp")));
  cmdAiuto.setEnabled(QFileInfo::exists(guide));
  QObject::connect(&cmdAiuto, &QAbstractButton::clicked, &cmdAiuto, sendF1);
}

}  // namespace tavolix
