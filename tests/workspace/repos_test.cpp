#include <gtest/gtest.h>

#include <QWidget>

#include "core/program_folder.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "workspace/modrepos.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

// A window of 400 x 300 pixels with controls named c0, c1, ...
class Plain final : public platform::Form {
 public:
  Plain(const QString& name, int controls) : Form(name), controls_(controls) {}
  QWidget* c(int i) { return Control(QStringLiteral("c%1").arg(i)); }
  void resizeTo(int width, int height) {
    Window()->resize(width, height);
    PosChange(*this);
  }

 private:
  QWidget* build() override {
    auto* window = new QWidget;
    window->resize(400, 300);
    for (int i = 0; i < controls_; ++i) {
      auto* control = new QWidget(window);
      control->setObjectName(QStringLiteral("c%1").arg(i));
      control->setGeometry(kPlace);
    }
    return window;
  }

  static constexpr QRect kPlace{50, 40, 100, 80};
  int controls_;
};

class Repos : public ::testing::Test {
 protected:
  Repos() { MessageBoxSeam::setNoWindow(true); }
  ~Repos() override {
    PosRimuoviForm(form_);
    MessageBoxSeam::reset();
  }
  void expectPlace(int control, const QRect& place) {
    const QRect found = form_.c(control)->geometry();
    EXPECT_EQ(found, place) << control << ": " << found.x() << ' ' << found.y() << ' '
                            << found.width() << ' ' << found.height();
  }

  Plain form_{"frmProva", 32};
};

TEST_F(Repos, FollowsTheRulesOfEachAxis) {
  const struct {
    int x;
    int y;
    QRect larger;
  } cases[] = {
      {0, 0, {50, 40, 100, 80}},  {1, 0, {150, 40, 100, 80}}, {2, 0, {50, 40, 200, 80}},
      {0, 1, {50, 140, 100, 80}}, {0, 2, {50, 40, 100, 180}}, {1, 2, {150, 40, 100, 180}},
      {2, 1, {50, 140, 200, 80}},
  };
  int i = 0;
  for (const auto& c : cases) PosRegistra(form_, form_.c(i++), c.x, c.y);
  PosCattura(form_, true);
  for (int round = 0; round < 3; ++round) {
    form_.resizeTo(500, 400);
    i = 0;
    for (const auto& c : cases) expectPlace(i++, c.larger);
    form_.resizeTo(400, 300);
    for (i = 0; i < 7; ++i) expectPlace(i, {50, 40, 100, 80});
  }
  // Below its first size nothing follows.
  form_.resizeTo(200, 150);
  for (i = 0; i < 7; ++i) expectPlace(i, {50, 40, 100, 80});
}

TEST_F(Repos, KeepsTheFirstMinimum) {
  PosRegistra(form_, form_.c(0), 1, 2);
  PosCattura(form_, true);
  form_.resizeTo(500, 400);
  form_.c(0)->setGeometry(60, 40, 100, 80);
  PosCattura(form_, true);
  form_.resizeTo(450, 350);
  expectPlace(0, {10, 40, 100, 30});
  form_.resizeTo(600, 500);
  expectPlace(0, {160, 40, 100, 180});
}

TEST_F(Repos, ForgetsControlsAndForms) {
  for (int i = 0; i < 3; ++i) PosRegistra(form_, form_.c(i), 1, 1);
  PosCattura(form_, true);
  PosRegistra(form_, form_.c(1), 0, 0);
  PosRimuoviControllo(form_, "c0");
  PosRimuoviControllo(form_, "nessuno");
  delete form_.c(2);
  form_.resizeTo(500, 400);
  expectPlace(0, {50, 40, 100, 80});
  expectPlace(1, {50, 40, 100, 80});
  PosRegistra(form_, form_.c(3), 1, 1);
  PosRimuoviForm(form_);
  form_.resizeTo(700, 600);
  expectPlace(3, {50, 40, 100, 80});
  EXPECT_TRUE(MessageBoxSeam::shown().isEmpty());
}

TEST_F(Repos, ReportsASizeThatCannotBe) {
  PosRegistra(form_, form_.c(0), 2, 0);
  PosCattura(form_, true);
  form_.c(0)->move(350, 40);
  MessageBoxSeam::setNextAnswer(platform::kOk);
  form_.resizeTo(410, 300);
  ASSERT_EQ(MessageBoxSeam::shown().size(), 1);
  EXPECT_TRUE(MessageBoxSeam::shown()[0].text.contains("Codice errore: 380"));
  EXPECT_TRUE(MessageBoxSeam::shown()[0].text.endsWith("Procedura: modRepos!PosChange"));
}

TEST_F(Repos, TellsItsLimits) {
  for (int i = 0; i < 31; ++i) PosRegistra(form_, form_.c(i), 0, 0);
  EXPECT_TRUE(MessageBoxSeam::shown().isEmpty());
  MessageBoxSeam::setNextAnswer(platform::kOk);
  PosRegistra(form_, form_.c(31), 0, 0);
  EXPECT_EQ(MessageBoxSeam::shown().last().text,
            QString("Superato il limite di registrazione controlli per un form in roudine di "
                    "Repos!"));
  EXPECT_EQ(MessageBoxSeam::shown().last().title, QString("Attenzione!"));
  EXPECT_EQ(MessageBoxSeam::shown().last().style, 48);
  std::vector<std::unique_ptr<Plain>> others;
  for (int i = 1; i < 12; ++i)
    others.push_back(std::make_unique<Plain>(QStringLiteral("frm%1").arg(i), 1));
  for (int i = 0; i < 10; ++i)
    PosRegistra(*others[static_cast<std::size_t>(i)], others[static_cast<std::size_t>(i)]->c(0), 0,
                0);
  EXPECT_EQ(MessageBoxSeam::shown().size(), 1);
  MessageBoxSeam::setNextAnswer(platform::kOk);
  PosRegistra(*others[10], others[10]->c(0), 0, 0);
  ASSERT_EQ(MessageBoxSeam::shown().size(), 2);
  EXPECT_EQ(MessageBoxSeam::shown().last().text,
            QString("Superato il limite di registrazione forms in roudine di Repos!"));
  PosRimuoviForm(*others[4]);
  PosRegistra(*others[10], others[10]->c(0), 0, 0);
  EXPECT_EQ(MessageBoxSeam::shown().size(), 2);
  for (const auto& other : others) PosRimuoviForm(*other);
}

}  // namespace
}  // namespace tavolix
