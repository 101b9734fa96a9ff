// The windows that fill a field: the list behind a combo, the calendar under a date.

#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>

#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/clock.h"
#include "platform/data_combo.h"
#include "platform/date_box.h"
#include "platform/system_path.h"

namespace tavolix {
namespace {

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
    const qint64 held = NullAZero(combo->Value()).toLongLong();
    const auto chosen = verbi().ModificaTabella(iRacCorr, iCampo, held, combo->MissedText());
    Cedi();
    CaricaComboCampo(iRacCorr, iCampo);
    // By its key: two values may differ in nothing that a search by text would see.
    if (chosen) ImpostaValoreCombo(*combo, 1, *chosen);
    combo->setFocus(Qt::OtherFocusReason);
  });
}

void ApriCalendario(platform::DateBox& oData) {
  const QDate held = oData.Date();
  const auto chosen = verbi().ScegliData(held.isValid() ? held : platform::today(), oData);
  oData.setFocus(Qt::OtherFocusReason);
  // Given up, what stood in the box stays, if it was no date too.
  if (chosen) oData.SetRawData(chosen->toString(QStringLiteral("ddMMyyyy")));
}

void CollegaAiuto(QAbstractButton& cmdAiuto) {
  const QString guide = platform::systemPath(sPathCompleto(QStringLiteral("tvx.hlp")));
  cmdAiuto.setEnabled(QFileInfo::exists(guide));
  QObject::connect(&cmdAiuto, &QAbstractButton::clicked, &cmdAiuto, sendF1);
}

}  // namespace tavolix
