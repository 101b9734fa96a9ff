#include "hand.h"

#include "core/modcuore.h"
#include "model/raccolte.h"
#include "platform/bound_control.h"
#include "workspace/frmmain.h"

namespace tavolix {

int Hand::currentKey() {
  return lRecordElenco() == 0 ? 0 : stored("RacID").toInt();
}

void Hand::act(const QByteArray& command, int value, bool leaves) {
  if (command == "add") press(Qt::Key_F12);
  if (command == "copy") press(Qt::Key_F11);
  if (command == "delete") press(Qt::Key_C, Qt::AltModifier);
  if (command == "clear") trigger("mnuCancellaMultiplo");
  if (command == "title") {
    grid()->setFocus();
    grid()->setCurrentIndex(cellAt(grid()->currentIndex().row(), "Titolo"));
    press(Qt::Key_F2);
    press(Qt::Key_A, Qt::ControlModifier);
    type(QString::number(value));
    press(Qt::Key_Return);
  }
  if (command == "note") {
    enter("txtNote");
    press(Qt::Key_A, Qt::ControlModifier);
    type(QString::number(value));
    if (leaves) leave();
  }
  if (command == "edit") {
    for (const char* name : {"txtNote", kCollections[iRacCorr].box}) {
      platform::BoundControl::of(box(name))->SetValue(value);
    }
    FrmMain().Salva();
  }
}

}  // namespace tavolix
