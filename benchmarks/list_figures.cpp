// The windows over a record: the list behind a combo, and the child rows.

#include <QApplication>
#include <QLineEdit>

#include "core/modcuore.h"
#include "core/modmain.h"
#include "desk.h"
#include "figures.h"
#include "model/campi.h"
#include "model/raccolte.h"
#include "platform/bound_control.h"
#include "platform/data_combo.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/form.h"
#include "raw_file.h"
#include "store/page_checksum.h"
#include "workspace/frmmain.h"
#include "workspace/frmtab.h"

namespace bench {
namespace {

constexpr int kAudio = 2;
constexpr int kAuthor = 3;  // the field's row among the books
constexpr int kOpenings = 9;
constexpr int kPrograms = 3;
constexpr int kEdits = 15;
constexpr double kEditLimit = 0.050;  // seconds
constexpr double kFrame = 1.0 / 60;

const QString kTime = QStringLiteral("time");

// Seconds from the command that opens a form to its painted window; `work` is done in it then.
// Something else has been written since it was open before.
double secondsToOpen(
    const QString& name, const std::function<void()>& open,
    const std::function<void()>& work = [] {}) {
  tavolix::lNewCont();
  double seconds = 0;
  const auto start = std::chrono::steady_clock::now();
  inForm(name, open, [&] {
    seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    work();
  });
  return seconds;
}

double openList(const std::function<void()>& work = [] {}) {
  return secondsToOpen(
      QStringLiteral("frmTab"), [] { tavolix::ApriTabella(kAuthor); }, work);
}

void reportOpenings(const std::function<double()>& open) {
  open();
  for (int i = 0; i < kOpenings; ++i) report("time", open());
}

void openListScene(const QStringList&) {
  reportOpenings([] { return openList(); });
  for (int i = 0; i < kOpenings; ++i) {
    tavolix::lNuovaVoceTab(QStringLiteral("AUTORE"), 0, QStringLiteral("Nuova %1").arg(i));
    report("changed", openList());
  }
}

void openChildrenScene(const QStringList&) {
  reportOpenings([] {
    return secondsToOpen(QStringLiteral("frmSub"), [] { tavolix::FrmMain().cmdSubRac_Click(); });
  });
}

void editListScene(const QStringList&) {
  platform::Form& frmTab = platform::forms()[QStringLiteral("frmTab")];
  openList([&] {
    auto* box = frmTab.control<QLineEdit>(QStringLiteral("txtAdd"));
    auto* grid = frmTab.control<platform::DataGrid>(QStringLiteral("grd"));
    const auto rows = [&] {
      return frmTab.part<platform::DataControl>(QStringLiteral("dbTab"))->Recordset();
    };
    for (int i = 0; i < kEdits; ++i) {
      const QString text = QStringLiteral("Nuova %1").arg(i);
      box->setText(text);
      report("add", secondsOf([&] {
               pressKey(box, Qt::Key_Return);
               showWindow(frmTab.Window());
             }));
      if (rows()->Value(QStringLiteral("Desc")).toString() != text) qFatal("nothing was added");
      report("rename", secondsOf([&] {
               grid->edit(grid->currentIndex().siblingAtColumn(0));
               static_cast<QLineEdit*>(grid->indexWidget(grid->currentIndex()))->setFocus();
               typeText(QApplication::focusWidget(), QStringLiteral("altra%1").arg(i));
               grid->CommitCell();
               showWindow(frmTab.Window());
             }));
      if (rows()->Value(QStringLiteral("Desc")).toString() == text) qFatal("nothing was renamed");
      report("find", secondsOf([&] {
               rows()->FindFirst(QStringLiteral("Desc = 'altra0'"));
               showWindow(frmTab.Window());
             }));
    }
  });
}

void prefixScene(const QStringList&) {
  const tavolix::tCampo& campo = tavolix::aCampi(0, kAuthor);
  for (int i = 0; i < kEdits; ++i) {
    tavolix::ListaValori(campo.iRacTab, campo.sCodTab)->invalidate();
    auto* combo = static_cast<platform::DataCombo*>(campo.oControllo->widget());
    list().setFocus();
    combo->setFocus();
    showAll();
    const QString letters = QStringLiteral("voc");
    for (const QChar letter : letters) {
      const double seconds = secondsOf([&] {
        typeText(combo, letter);
        showAll();
      });
      report(letter == letters.at(0) ? "first" : "next", seconds);
    }
  }
}

// A value that no record has, in a column without an index: all of it is looked through.
void useScene(const QStringList& files) {
  // In other words each time, so that nothing is remembered.
  int value = 99999999;
  const auto query = [&value] {
    return QStringLiteral("SELECT TabEditoreID FROM MAIN WHERE TabEditoreID = %1").arg(--value);
  };
  const RawFile file(files[0]);
  const Sides sides = inTurn(
      kOpenings,
      [&] {
        const QString text = query();
        return secondsOf([&] {
          const auto rs = tavolix::dbArc->OpenRecordset(text, store::RecordsetType::Dynaset);
          if (rs->RecordCount() != 0) qFatal("the value is in use");
          rs->Close();
        });
      },
      [&] {
        const QByteArray text = query().toUtf8();
        return secondsOf([&] {
          RawStatement raw(file, text);
          while (raw.step()) qFatal("the value is in use");
        });
      });
  report("ours", sides.ours);
  report("raw", sides.other);
}

QString authors(const Ground& ground, const char* count) {
  return ground.generated(
      QStringLiteral("voci_%1.tvx").arg(QLatin1String(count)),
      {QStringLiteral("--records"), QStringLiteral("200"), QStringLiteral("--list"),
       QStringLiteral("AUTORE:0:") + QLatin1String(count)});
}

// The first record of the discs with so many pieces.
QString pieces(const Ground& ground, int count) {
  const QString path = ground.generated(QStringLiteral("brani_%1.tvx").arg(count),
                                        {QStringLiteral("--records"), QStringLiteral("200")});
  RawFile(path, store::checkedFileLayer())
      .run(QStringLiteral(
               "DELETE FROM AUDSUB WHERE AudID = (SELECT min(ID) FROM AUD); "
               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
               "INSERT INTO AUDSUB (AudID, NrBrano) SELECT (SELECT min(ID) FROM AUD), i "
               "FROM n")
               .arg(count)
               .toUtf8());
  return path;
}

QVector<Reading> twoSizes(const Ground& ground, const QString& scene, const QString& large,
                          const QString& small, int collection) {
  Sides sides;
  for (int i = 0; i < kPrograms; ++i) {
    sides.ours += ground.play(scene, {large}, collection)[kTime];
    sides.other += ground.play(scene, {small}, collection)[kTime];
  }
  return {compared(scene, sides, 1.5)};
}

QVector<Reading> openListFigure(const Ground& ground) {
  const QString voci = QStringLiteral("voci");
  const QString large = authors(ground, "50000");
  const QString small = authors(ground, "50");
  QVector<Reading> readings = twoSizes(ground, voci, large, small, 0);
  const Sides changed{ground.play(voci, {large})[QStringLiteral("changed")],
                      ground.play(voci, {small})[QStringLiteral("changed")]};
  readings.append(compared(QStringLiteral("voci_cambiate"), changed, 0));
  return readings;
}

QVector<Reading> openChildrenFigure(const Ground& ground) {
  return twoSizes(ground, QStringLiteral("figli"), pieces(ground, 5000), pieces(ground, 5), kAudio);
}

QVector<Reading> editListFigure(const Ground& ground) {
  const Found found = ground.play(QStringLiteral("voce"), {authors(ground, "50000")});
  return {{QStringLiteral("voce_aggiunta"), median(found["add"]), kEditLimit},
          {QStringLiteral("voce_cambiata"), median(found["rename"]), kEditLimit},
          {QStringLiteral("voce_cercata"), median(found["find"]), kEditLimit}};
}

QVector<Reading> prefixFigure(const Ground& ground) {
  const Found found = ground.play(QStringLiteral("prefisso"), {authors(ground, "50000")});
  return {{QStringLiteral("prefisso_primo"), median(found["first"]), kFrame},
          {QStringLiteral("prefisso"), median(found["next"]), kFrame}};
}

QVector<Reading> useFigure(const Ground& ground) {
  const QString uso = QStringLiteral("uso");
  return {compared(uso, sidesOf(ground.play(uso, {ground.copy(QStringLiteral("uso.tvx"))})), 1.2)};
}

}  // namespace

QVector<Figure> listFigures() {
  return {
      {QStringLiteral("voci"), openListFigure, openListScene},
      {QStringLiteral("voce"), editListFigure, editListScene},
      {QStringLiteral("prefisso"), prefixFigure, prefixScene},
      {QStringLiteral("uso"), useFigure, useScene},
      {QStringLiteral("figli"), openChildrenFigure, openChildrenScene},
  };
}

}  // namespace bench
