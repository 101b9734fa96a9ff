#include "platform/progress_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>

#include "platform/commands.h"
#include "platform/form.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace platform {
namespace {

constexpr int kSteps = 1000;
constexpr int kCharacters = 52;
constexpr int kBetweenPaints = 50;  // milliseconds

QString grouped(qint64 number) {
  return QLocale().toString(number);
}

}  // namespace

class ProgressWindow::Window final : public QDialog {
 public:
  Window(const QString& what, const QString& unit, QWidget* front) : QDialog(front), unit_(unit) {
    setObjectName(QStringLiteral("progress"));
    setWindowTitle(what);
    setWindowModality(Qt::ApplicationModal);
    amount_ = new QLabel(this);
    bar_ = new QProgressBar(this);
    bar_->setRange(0, kSteps);
    bar_->setAccessibleName(what);
    bar_->setMinimumWidth(widthOfCharacters(bar_, kCharacters));
    stop_ = newButton({"cmdInterrompi", "&Interrompi"}, this);
    QObject::connect(stop_, &QPushButton::clicked, this, [this] { stopped_ = true; });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(stop_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(amount_);
    column->addWidget(bar_);
    column->addLayout(buttons);
    stop_->setFocus();
  }

  void tell(qint64 done, qint64 total) {
    amount_->setText(QStringLiteral("%1 di %2 %3").arg(grouped(done), grouped(total), unit_));
    bar_->setValue(total > 0 ? static_cast<int>(done * kSteps / total) : 0);
  }
  bool isStopped() const { return stopped_; }
  // Escape and the window's box break off, too.
  void reject() override { stopped_ = true; }

 protected:
  void closeEvent(QCloseEvent* event) override {
    stopped_ = true;
    event->ignore();
  }

 private:
  const Commands::Question question_;  // its button works while a command is at work
  QString unit_;
  QLabel* amount_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QPushButton* stop_ = nullptr;
  bool stopped_ = false;
};

ProgressWindow::ProgressWindow(const QString& what, int patience, const QString& unit)
    : what_(what), patience_(patience), unit_(unit) {
  since_.start();
}

ProgressWindow::~ProgressWindow() = default;

bool ProgressWindow::report(qint64 done, qint64 total) {
  if (!window_) {
    if (since_.elapsed() < patience_) return true;
    window_ = std::make_unique<Window>(what_, unit_, windowInFront());
    window_->show();
    window_->activateWindow();
  } else if (sinceShown_.isValid() && sinceShown_.elapsed() < kBetweenPaints) {
    return !window_->isStopped();
  }
  window_->tell(done, total);
  QCoreApplication::processEvents();
  sinceShown_.start();
  return !window_->isStopped();
}

}  // namespace platform
