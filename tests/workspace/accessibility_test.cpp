#include <QAccessible>
#include <QApplication>
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
  static QWidget* fieldOf(int collection, int j) {
    return aCampi(collection, j).oControllo->widget();
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
};

TEST_F(Accessibility, NamesEachControlDifferently) {
  ASSERT_TRUE(start());
  QVector<QWidget*> widgets = {grid(), tabs(), pages()};
  QStringList names = {"cmdAddNew", "cmdCancella", "cmdDuplica", "cmdEspandi"};
  for (int i = 0; i <= 10; ++i) names << QStringLiteral("cmdBar(%1)").arg(i);
  for (const QString& name : names) widgets << mainControl(name);
  expectNames(widgets);
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    widgets.clear();
    for (int j = 0; j < iNumeroCampi(collection); ++j) widgets << fieldOf(collection, j);
    for (auto* button : form()->findChildren<QToolButton*>()) {
      if (button->objectName().startsWith("cmd")) widgets << button;
    }
    expectNames(widgets);
  }
}

TEST_F(Accessibility, ReachesTheFieldsInTheirOrderByTab) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    int page = -1;
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      const tCampo& campo = aCampi(collection, j);
      if (campo.iPagina != page) enter(campo.sControllo);
      page = campo.iPagina;
      EXPECT_TRUE(fieldOf(collection, j)->hasFocus())
          << collection << ' ' << qPrintable(campo.sTitolo);
      do press(Qt::Key_Tab);
      while (qobject_cast<QToolButton*>(QApplication::focusWidget()) != nullptr);
    }
  }
}

}  // namespace
}  // namespace tavolix
