#include <QApplication>
#include <QAction>
#include "core/raccolte.h"
#include "core/modcuore.h"
#include "desk.h"
#include "platform/form.h"
#include "workspace/frmmain.h"
namespace tavolix { namespace {
class Probe : public Desk {};
TEST_F(Probe, A) {
  ASSERT_TRUE(start());
  for (const char* sql : {"DELETE FROM MAIN WHERE TipoRac = 0 AND RacID = ", "DELETE FROM LIB WHERE ID = "}) {
  for (int goneBefore : {0, 1}) {
  goTo(4);
  qWarning("row %s", qPrintable(stored("RacID")));
  folder_.outside(sql + stored("RacID"));
  if (goneBefore) { press(Qt::Key_Down); press(Qt::Key_Up);}
  answer(platform::kYes);
  for (int i=0;i<3;++i) answer(platform::kOk);
  press(Qt::Key_C, Qt::AltModifier);
  for (auto& m : platform::MessageBoxSeam::shown()) qWarning("  %s", qPrintable(m.text.mid(60).replace('\r',' ')));
  message();
  qWarning("  %s", qPrintable(status()));
  selectByTab(2); selectByTab(0);
  }}
}
// start w/o list
TEST_F(Probe, NoList) {
  folder_.outside("DELETE FROM QUERYDEF WHERE Name = 'Q_LIB'");
  for (int i=0;i<9;++i) answer(platform::kOk);
  qWarning("start %d", start());
  for (auto& m : platform::MessageBoxSeam::shown()) qWarning("  %s", qPrintable(m.text.mid(60).replace('\r',' ')));
  selectByTab(2);
  qWarning("%s", qPrintable(title()));
}
TEST_F(Probe, NoCollection) {
  folder_.set("Application", "RacAvvio", "99");
  start();
  for (int i=0;i<9;++i) answer(platform::kOk);
  const char* what = qgetenv("WHAT").data();
  QByteArray w = qgetenv("WHAT");
  qWarning("do %s", what ? w.data() : "");
  if (w == "click") click(mainControl("cmdAddNew")); else trigger(QString::fromUtf8(w));
  for (auto& m : platform::MessageBoxSeam::shown()) qWarning("  %s", qPrintable(m.text.mid(60).replace('\r',' ')));
}
}}
