#include <QAbstractItemView>
#include <QAccessible>
#include <QClipboard>
#include <QMenuBar>
#include <QTabBar>
#include <QToolButton>

#include "desk.h"
#include "platform/data_combo.h"
#include "platform/screen_reader.h"

namespace tavolix {
namespace {

// What holds for each field of each collection.
class Fields : public Desk {
 protected:
  void SetUp() override { ASSERT_TRUE(start()); }

  static QWidget* field(int j) { return aCampi(iRacCorr, j).oControllo->widget(); }
  static QVector<QWidget*> fields() {
    QVector<QWidget*> all;
    for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) all << field(j);
    return all;
  }
  // What a screen reader calls a widget. A box is called by its label, a button by its own text.
  static QString nameOf(QWidget* widget) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    for (const auto& [label, relation] : interface->relations(QAccessible::Label)) {
      if (relation == QAccessible::Label) return label->text(QAccessible::Name);
    }
    const bool box = platform::BoundControl::of(widget) != nullptr;
    return box && !widget->inherits("QCheckBox") ? "" : interface->text(QAccessible::Name);
  }
  static void expectNames(const QVector<QWidget*>& widgets) {
    QMap<QString, QString> owners;
    for (QWidget* widget : widgets) {
      const QString name = nameOf(widget);
      SCOPED_TRACE(qPrintable(form()->objectName() + '!' + widget->objectName() + ' ' + name));
      EXPECT_FALSE(name.trimmed().isEmpty());
      EXPECT_EQ(owners.value(name), QString(""));
      owners[name] = widget->objectName();
    }
  }

  // The field that has the focus, itself or by its open list.
  static QWidget* reached() {
    const QWidget* popup = QApplication::activePopupWidget();
    return popup != nullptr ? popup->parentWidget() : QApplication::focusWidget();
  }
  // The fields with the colour of the focus. A tick has none.
  static QVector<QWidget*> marked() {
    QVector<QWidget*> all = fields();
    all.removeIf([](const QWidget* widget) {
      return widget->palette().color(QPalette::Base) != QColor(0xFF, 0xFF, 0xC0);
    });
    return all;
  }
  static void leaveByTab() {
    do press(Qt::Key_Tab);
    while (qobject_cast<QToolButton*>(QApplication::focusWidget()) != nullptr);
  }
  // In a text of several lines the key is a new line.
  static void leaveByReturn(QWidget* field, Qt::Key key) {
    press(key);
    if (!field->inherits("QPlainTextEdit")) return;
    EXPECT_TRUE(platform::BoundControl::of(field)->Text().startsWith('\n'));
    press(Qt::Key_Backspace);
    CampoSuccessivo();
    QApplication::processEvents();
  }
  static void walk(bool byReturn) {
    enter(aCampi(iRacCorr, 0).sControllo);
    for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
      const tCampo& campo = aCampi(iRacCorr, j);
      SCOPED_TRACE(qPrintable(aRaccolte(iRacCorr).sNome + ' ' + campo.sTitolo));
      if (!byReturn && pages()->currentIndex() != campo.iPagina) enter(campo.sControllo);
      EXPECT_EQ(reached(), field(j));
      EXPECT_EQ(pages()->currentIndex(), campo.iPagina);
      const bool tick = field(j)->inherits("QCheckBox");
      EXPECT_EQ(marked().size(), tick ? 0 : 1);
      EXPECT_EQ(marked().value(0), tick ? nullptr : field(j));
      byReturn ? leaveByReturn(field(j), j % 2 == 0 ? Qt::Key_Return : Qt::Key_Enter)
               : leaveByTab();
    }
  }
};

TEST_F(Fields, HaveNamesOfTheirOwnLikeAllControls) {
  QVector<QWidget*> widgets = {grid(), tabs(), pages()};
  QStringList names = {"cmdAddNew", "cmdCancella", "cmdDuplica", "cmdEspandi"};
  for (int i = 0; i <= 10; ++i) names << QStringLiteral("cmdBar(%1)").arg(i);
  for (const QString& name : names) widgets << mainControl(name);
  expectNames(widgets);
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    selectByTab(collection);
    widgets = fields();
    for (auto* button : form()->findChildren<QToolButton*>()) {
      if (button->objectName().startsWith("cmd")) widgets << button;
    }
    expectNames(widgets);
  }
}

QAccessible::Id told = 0;

void listen(QAccessibleEvent* event) {
  told = QAccessible::uniqueId(event->accessibleInterface());
}

// Lists and tabs tell of the focus whenever their current row changes, whoever has the keyboard.
TEST_F(Fields, TellReadersWhereTheKeyboardIs) {
  QAccessible::installUpdateHandler(listen);
  const platform::FocusTeller teller;
  const auto handler = QAccessible::installUpdateHandler(nullptr);
  const auto passes = [&](QWidget* widget) {
    told = 0;
    QAccessibleEvent event(widget, QAccessible::Focus);
    handler(&event);
    return told != 0;
  };
  auto* combo = static_cast<platform::DataCombo*>(box("cboAutore"));
  QWidget* const places[] = {grid(), tabs(), box("txtTitolo"), combo};
  for (QWidget* focus : places) {
    focus->setFocus();
    for (QWidget* widget : places) EXPECT_EQ(passes(widget), widget == focus);
    EXPECT_FALSE(passes(pages()->tabBar()));
  }
  // The keyboard goes to no other control while a collection is loaded.
  grid()->setFocus();
  bool strayed = false;
  const auto follow = [&](QWidget*, QWidget* to) {
    strayed |= to != nullptr && to != grid() && to != tabs();
  };
  const auto following = QObject::connect(qApp, &QApplication::focusChanged, window(), follow);
  selectByTab(1);
  selectByTab(0);
  QObject::disconnect(following);
  EXPECT_FALSE(strayed);
  combo = static_cast<platform::DataCombo*>(box("cboAutore"));
  combo->showPopup();
  EXPECT_TRUE(passes(combo->view()));
  combo->hidePopup();
  // A closing menu names an entry it does not have.
  QMenuBar* menus = window()->findChild<QMenuBar*>();
  QAccessibleEvent none(menus, QAccessible::Focus);
  none.setChild(99);
  told = 0;
  handler(&none);
  EXPECT_EQ(told, QAccessible::uniqueId(QAccessible::queryAccessibleInterface(menus)));
}

TEST_F(Fields, AreReachedInTheirOrderByTabAndReturn) {
  // A window with boxes of its own has been there before.
  inForm(
      "frmTab", [] { ApriTabella(3); }, [] { press("Esc"); });
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    selectByTab(collection);
    EXPECT_EQ(changesBy([] {
                walk(false);
                walk(true);
                EXPECT_EQ(reached(), field(0));
                leave();
              }),
              QString(""));
    EXPECT_TRUE(marked().isEmpty());
  }
}

TEST_F(Fields, TakeNoMoreThanTheirColumnsHold) {
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    selectByTab(collection);
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      const tCampo& campo = aCampi(collection, j);
      if (campo.sTipo != TXTSTR) continue;
      SCOPED_TRACE(qPrintable(aRaccolte(collection).sNome + ' ' + campo.sTitolo));
      const int most = campo.box.maxLength;
      EXPECT_TRUE(0 < most && most <= list()->Fields()[list()->FieldIndex(campo.sCampoDB)].size);
      QGuiApplication::clipboard()->setText(QString(most + 5, 'x'));
      enter(campo.sControllo);
      press("Ctrl+A Ctrl+V");
      type("y");
      leave();
      EXPECT_EQ(stored(campo.sCampoDB), QString(most, 'x'));
    }
  }
}

}  // namespace
}  // namespace tavolix
