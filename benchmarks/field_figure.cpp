// A field typed and left: the row is written and shown.

#include "books.h"
#include "core/modcuore.h"
#include "desk.h"
#include "figures.h"
#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/form.h"

namespace bench {
namespace {

constexpr int kBooks = 0;
constexpr int kWrites = 25;
constexpr int kRowStep = 97;

QVariant valueOf(const char* field) {
  return tavolix::dbElenco().Recordset()->Value(QString::fromLatin1(field));
}

QWidget* box(const char* name) {
  return tavolix::aRaccolte(kBooks).oForm->Control(QString::fromLatin1(name));
}

double typeTitle(const QString& title) {
  QWidget* edit = box("txtTitolo");
  edit->setFocus(Qt::TabFocusReason);
  showAll();
  if (!edit->hasFocus()) qFatal("the box has not taken the focus");
  // The typist's keys are no part of it: what counts is leaving the box.
  typeText(edit, title);
  showAll();
  return secondsOf([&] {
    pressKey(edit, Qt::Key_Tab);
    showAll();
  });
}

void fieldScene(const QStringList& files) {
  const RawFile file(files[1]);
  RawStatement update(file, "UPDATE MAIN SET Titolo = ? WHERE ID = ?");
  const Keys books = firstBooks(file, (kWrites + 1) * kRowStep + 1);
  int rounds[2] = {0, 0};
  const auto title = [](int round) { return QStringLiteral("Titolo di prova %1").arg(round); };
  const auto ours = [&] {
    const int round = ++rounds[0];
    tavolix::dbElenco().Recordset()->SetAbsolutePosition(round * kRowStep);
    showAll();
    if (valueOf("MAIN.ID") != books.value(round * kRowStep).first) qFatal("another row");
    const double seconds = typeTitle(title(round));
    if (valueOf("Titolo") != title(round)) qFatal("the title was not written");
    return seconds;
  };
  const auto raw = [&] {
    const int round = ++rounds[1];
    return secondsOf([&] {
      update.bind(1, title(round).toUtf8());
      update.bind(2, books.value(round * kRowStep).first);
      update.execute();
    });
  };
  const Sides sides = inTurn(kWrites, ours, raw);
  report("ours", sides.ours);
  report("raw", sides.other);
}

QVector<Reading> fieldFigure(const Ground& ground) {
  const QString campo = QStringLiteral("campo");
  return {compared(campo, sidesOf(ground.play(campo, ground.twoCopies())), 1.5)};
}

}  // namespace

QVector<Figure> fieldFigures() {
  return {{QStringLiteral("campo"), fieldFigure, fieldScene}};
}

}  // namespace bench
