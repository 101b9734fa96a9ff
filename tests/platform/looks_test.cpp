#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <functional>

#include "platform/icons.h"
#include "platform/message_box.h"
#include "platform/tab_strip.h"
#include "platform/theme.h"
#include "platform/window_place.h"

namespace platform {
namespace {

void apply(const QString& wish) {
  applyTheme(*qobject_cast<QApplication*>(QApplication::instance()), wish);
}

// Shows a message, looks at its window, and leaves it by a key.
int showAnd(const QString& text, int style, Qt::Key key,
            const std::function<void(QMessageBox&)>& look) {
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    look(*box);
    QTest::keyClick(box, key);
  });
  return MsgBox(text, style, "");
}

TEST(MessageBoxTest, HasTheButtonsAndAnswersOfItsStyle) {
  apply("chiaro");
  const std::tuple<int, const char*, QMessageBox::Icon, Qt::Key, int> cases[] = {
      {kOkOnly + kCritical, "OK", QMessageBox::Critical, Qt::Key_Escape, kOk},
      {kOkCancel + kWarning, "OK Annulla", QMessageBox::Warning, Qt::Key_Return, kOk},
      {kOkCancel + kInformation, "OK Annulla", QMessageBox::Information, Qt::Key_A, kCancel},
      {kOkCancel + kSetForeground, "OK Annulla", QMessageBox::NoIcon, Qt::Key_Escape, kCancel},
      {kYesNo + kQuestion, "Sì No", QMessageBox::Question, Qt::Key_S, kYes},
      {kYesNo + kWarning, "Sì No", QMessageBox::Warning, Qt::Key_Escape, kNo},
  };
  for (const auto& [style, buttons, icon, key, wanted] : cases) {
    const int answer = showAnd("<b>uno</b>\rdue\r\ntre", style, key, [&](QMessageBox& box) {
      QStringList texts;
      for (const QAbstractButton* button : box.buttons()) texts << button->text();
      EXPECT_EQ(texts.join(' '), buttons);
      EXPECT_EQ(box.icon(), icon);
      const QSize side = box.iconPixmap().size();
      const QStringList ours = {"", "informazione", "avviso", "errore", "domanda"};
      const QPixmap drawn = platform::icon(ours[icon]).pixmap(side);
      EXPECT_EQ(box.iconPixmap().toImage(), drawn.toImage());
      EXPECT_EQ(box.text(), "<b>uno</b>\ndue\ntre");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
    });
    EXPECT_EQ(answer, wanted) << "style " << style << " key " << key;
  }
}

TEST(MessageBoxTest, KeepsLongTextsOnTheScreen) {
  for (const QString& text : {QString("riga\r").repeated(500), QString("parola ").repeated(5000)}) {
    showAnd(text, kYesNo, Qt::Key_Escape, [](QMessageBox& box) {
      EXPECT_EQ(box.size().boundedTo(box.screen()->availableSize()), box.size());
      const auto labels = box.findChildren<QLabel*>();
      const auto* label = *std::find_if(labels.begin(), labels.end(), [&](const QLabel* one) {
        return one->text() == box.text();
      });
      EXPECT_GE(label->height(), label->heightForWidth(label->width())) << "cut off";
    });
  }
}

TEST(TabStripTest, TellsEachSelectionOnceWhoeverMakesIt) {
  TabStrip strip;
  QStringList told;
  QObject::connect(&strip, &TabStrip::clicked, &strip, [&] { told << strip.SelectedTag(); });
  strip.addTab({}, "Libri", "10");
  strip.addTab({}, "Dischi", "20");
  strip.addTab({}, "Videocassette e altro", "30");
  strip.resize(strip.sizeHint());
  strip.Select(2);
  strip.Select(2);
  QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.tabRect(2).center());
  strip.setTabEnabled(1, false);
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Down}) QTest::keyClick(&strip, key);
  QTest::keyClick(&strip, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(told, QStringList({"10", "20", "30", "10", "30"}));
  const int text = strip.fontMetrics().horizontalAdvance(strip.tabText(2));
  EXPECT_GE(strip.tabRect(2).width(), text + strip.iconSize().width());
}

TEST(WindowPlaceTest, IsBroughtBackFromWhereNoScreenIs) {
  const QRect main(0, 30, 1920, 1050);
  const QRect left(-1280, 0, 1280, 1024);
  const std::tuple<QPoint, QVector<QRect>, QPoint> cases[] = {
      {{-900, 20}, {main, left}, {-900, 20}}, {{-900, 20}, {main}, {0, 30}},
      {{700, -5}, {main}, {700, 30}},         {{1900, 1075}, {main}, {0, 30}},
      {{1800, 1050}, {main}, {1800, 1050}},   {{5, 2000}, {}, {5, 2000}},
  };
  for (const auto& [place, screens, wanted] : cases) {
    EXPECT_TRUE(broughtBack(place, screens) == wanted) << place.x() << ' ' << place.y();
  }
}

// Relative luminance and contrast as in the Web Content Accessibility Guidelines 2.1.
double luminance(const QColor& color) {
  const auto part = [](double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double contrast(const QColor& left, const QColor& right) {
  const auto [low, high] = std::minmax({luminance(left), luminance(right)});
  return (high + 0.05) / (low + 0.05);
}

TEST(Theme, FollowsTheWishOrTheSystem) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"chiaro", "Adwaita:dark", false},
      {"Scuro", "", true},
      {"sistema", "Adwaita:dark", true},
      {"sistema", "Adwaita", false},
  };
  for (const auto& [wish, desktop, dark] : cases) {
    qputenv("GTK_THEME", desktop);
    apply("scuro");  // what was in use before does not count
    apply(wish);
    EXPECT_EQ(isDark(), dark) << wish << desktop;
    EXPECT_EQ(luminance(QApplication::palette().color(QPalette::Window)) < 0.5, dark);
  }
  qunsetenv("GTK_THEME");
}

TEST(Theme, KeepsTheFontOfTheDesktop) {
  const std::tuple<int, Looks, int> cases[] = {
      {20, Looks::Desktop, 20}, {8, Looks::Desktop, 8}, {20, Looks::Own, 20}, {8, Looks::Own, 10}};
  for (const auto& [points, looks, wanted] : cases) {
    EXPECT_EQ(themeFont(QFont("DejaVu Sans", points), looks).pointSize(), wanted) << points;
  }
  EXPECT_EQ(themeFont(QFont("DejaVu Sans Mono", 12), Looks::Desktop).family(), "DejaVu Sans Mono");
  EXPECT_EQ(themeFont(QFont("DejaVu Sans Mono", 12), Looks::Own).family(), "DejaVu Sans");
}

TEST(Theme, LetsTextsStandOut) {
  using P = QPalette;
  const std::pair<P::ColorRole, P::ColorRole> pairs[] = {{P::WindowText, P::Window},
                                                         {P::Text, P::Base},
                                                         {P::ButtonText, P::Button},
                                                         {P::Text, P::AlternateBase},
                                                         {P::Link, P::Base},
                                                         {P::HighlightedText, P::Highlight},
                                                         {P::PlaceholderText, P::Base},
                                                         {P::LinkVisited, P::Window},
                                                         {P::ToolTipText, P::ToolTipBase}};
  for (const char* wish : {"scuro", "chiaro"}) {
    apply(wish);
    const QPalette palette = QApplication::palette();
    for (const auto group : {P::Active, P::Inactive, P::Disabled}) {
      for (const auto& [text, ground] : pairs) {
        EXPECT_GE(contrast(palette.color(group, text), palette.color(group, ground)), 4.5)
            << wish << " group " << group << " roles " << text << ' ' << ground;
      }
    }
  }
}

TEST(Theme, DrawsIconsForSizeAndState) {
  EXPECT_GE(iconNames().size(), 27);
  for (const QString& name : iconNames()) {
    SCOPED_TRACE(qPrintable(name));
    const auto draw = [&](double scale, QIcon::Mode mode = QIcon::Normal) {
      return icon(name).pixmap(QSize(24, 24), scale, mode).toImage();
    };
    apply("scuro");
    const QImage dark = draw(2);
    const QImage titleBar = windowIcon(name).pixmap(24, 24).toImage();
    EXPECT_NE(dark, draw(1).scaled(48, 48)) << "blown up";
    EXPECT_NE(dark, draw(2, QIcon::Disabled));
    apply("chiaro");
    EXPECT_EQ(dark == draw(2), name == "tavolix");  // whose colours are its own
    EXPECT_EQ(titleBar, windowIcon(name).pixmap(24, 24).toImage());
  }
}

}  // namespace
}  // namespace platform
