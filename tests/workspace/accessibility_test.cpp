#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QTabWidget>
#include <QToolButton>

#include "core/campi.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/bound_control.h"

namespace tavolix {
namespace {

class Accessibility : public Desk {
 protected:
  static QString nameOf(QWidget* widget) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    if (interface == nullptr) return {};
    // A label in relation to its box is what a screen reader calls the box.
    for (const auto& [label, relation] : interface->relations(QAccessible::Label)) {
      if (relation == QAccessible::Label) return label->text(QAccessible::Name);
    }
    return interface->text(QAccessible::Name);
  }
  static bool hasCaption(QWidget* widget) {
    const auto* button = qobject_cast<QAbstractButton*>(widget);
    if (button != nullptr && !button->text().isEmpty()) return true;
    for (const QLabel* label : form()->findChildren<QLabel*>()) {
      if (label->buddy() == widget && !label->text().isEmpty()) return true;
    }
    return false;
  }
  // What the Tab key reaches in a form, in its order.
  static QVector<QWidget*> tabOrder(QWidget* first) {
    QVector<QWidget*> order;
    QWidget* widget = first;
    do {
      const bool reached =
          (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr;
      if (reached && form()->isAncestorOf(widget)) order << widget;
      widget = widget->nextInFocusChain();
    } while (widget != first);
    return order;
  }
};

TEST_F(Accessibility, NamesEveryControlOfTheForms) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    QMap<QString, QString> owners;
    for (QWidget* widget : form()->findChildren<QWidget*>()) {
      const bool bound = platform::BoundControl::of(widget) != nullptr;
      if (!bound && qobject_cast<QToolButton*>(widget) == nullptr) continue;
      if (widget->objectName().isEmpty() || widget->objectName().startsWith("qt_")) continue;
      const QString name = nameOf(widget);
      SCOPED_TRACE(qPrintable(form()->objectName() + '!' + widget->objectName() + ' ' + name));
      EXPECT_TRUE(!bound || hasCaption(widget));
      EXPECT_FALSE(name.trimmed().isEmpty());
      EXPECT_EQ(owners.value(name), QString(""));
      owners[name] = widget->objectName();
    }
    EXPECT_GE(owners.size(), iNumeroCampi(collection));
  }
}

TEST_F(Accessibility, NamesWhatTheKeyboardReachesInTheMainWindow) {
  ASSERT_TRUE(start());
  selectByTab(2);
  QMap<QString, QString> owners;
  QStringList names = {"cmdAddNew", "cmdCancella", "cmdDuplica", "cmdSubRac", "cmdEspandi"};
  for (int i = 0; i <= 10; ++i) names << QStringLiteral("cmdBar(%1)").arg(i);
  QVector<QWidget*> widgets = {grid(), tabs(), pages()};
  for (const QString& name : names) widgets << mainControl(name);
  for (QWidget* widget : widgets) {
    const QString name = nameOf(widget);
    EXPECT_FALSE(name.trimmed().isEmpty()) << qPrintable(widget->objectName());
    EXPECT_EQ(owners.value(name), QString("")) << qPrintable(widget->objectName());
    owners[name] = widget->objectName();
  }
}

TEST_F(Accessibility, ReachesTheFieldsInTheirOrder) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    QStringList expected;
    for (int j = 0; j < iNumeroCampi(collection); ++j) expected << aCampi(collection, j).sControllo;
    QStringList reached;
    for (QWidget* widget : tabOrder(aCampi(collection, 0).oControllo->widget())) {
      if (platform::BoundControl::of(widget) != nullptr) reached << widget->objectName();
    }
    EXPECT_EQ(reached.join(' '), expected.join(' ')) << collection;
  }
}

TEST_F(Accessibility, ReachesTheFieldsOfAPageByTab) {
  ASSERT_TRUE(start());
  for (const int collection : {0, 7}) {
    if (collection != 0) selectByTab(collection);
    enter("txtCod");
    for (int j = 0; j < iNumeroCampi(collection) && aCampi(collection, j).iPagina == 0; ++j) {
      EXPECT_TRUE(aCampi(collection, j).oControllo->widget()->hasFocus())
          << qPrintable(aCampi(collection, j).sTitolo);
      do press(Qt::Key_Tab);
      while (qobject_cast<QToolButton*>(QApplication::focusWidget()) != nullptr);
    }
  }
}

}  // namespace
}  // namespace tavolix
