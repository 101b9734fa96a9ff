#include "platform/form.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPushButton>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "platform/commands.h"
#include "platform/handlers.h"
#include "platform/help_key.h"
#include "platform/icons.h"
#include "platform/key_handover.h"
#include "platform/key_sender.h"
#include "store/failure.h"

namespace platform {
namespace {

// In a cell of a list that is being typed into.
bool isInCell(const QWidget* widget) {
  if (widget != nullptr) widget = widget->parentWidget();
  while (widget != nullptr && qobject_cast<const QAbstractItemView*>(widget) == nullptr) {
    widget = widget->parentWidget();
  }
  return widget != nullptr;
}

}  // namespace

// A click may just have made a window active that has no input.
QWidget* windowInFront() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : QApplication::activeWindow();
}

Form::Form(const QString& name, const Dialog& dialog) : dialog_(dialog) {
  setObjectName(name);
}

Form::~Form() {
  if (window_) {
    qApp->removeEventFilter(this);
    delete window_;
    Q_EMIT windowGone();
  }
}

void Form::Load() {
  if (window_) return;
  loadOwner();
  if (window_) return;
  QWidget* window = build();
  window->setObjectName(Name());
  if (*dialog_.title != '\0') window->setWindowTitle(QString::fromUtf8(dialog_.title));
  if (*dialog_.icon != '\0') window->setWindowIcon(windowIcon(QString::fromLatin1(dialog_.icon)));
  window_ = window;
  // The form sees keys before its controls do, wherever the focus is.
  qApp->installEventFilter(this);
  loaded();
}

void Form::Unload() {
  if (!window_) return;
  qApp->removeEventFilter(this);
  window_->hide();
  // The window may be the sender of the event that is being handled.
  window_->setObjectName(QString());
  QWidget* window = window_;
  window_ = nullptr;
  found_.clear();
  if (window->parentWidget() != nullptr) window->setParent(nullptr);
  window->deleteLater();
  unloaded();
  Q_EMIT windowGone();
}

QWidget* Form::Window() {
  Load();
  return window_;
}

void Form::Show() {
  Load();
  window_->show();
  if (window_->isWindow()) {
    window_->raise();
    window_->activateWindow();
  }
}

void Form::belongTo(Form* owner) {
  Load();
  if (owner != nullptr && owner->IsLoaded() && window_->parentWidget() == nullptr) {
    window_->setParent(owner->Window(), window_->windowFlags() | Qt::Dialog);
  }
}

void Form::ShowOver(Form* owner) {
  belongTo(owner);
  Show();
}

void Form::ShowModal(Form* owner) {
  belongTo(owner);
  QPointer<QWidget> front = windowInFront();
  if (front == nullptr && owner != nullptr && owner->IsLoaded()) front = owner->Window();
  {
    const Commands::Question question;
    if (front != nullptr && front != window_) standOver(*front);
    window_->setWindowModality(Qt::ApplicationModal);
    KeyHandover::to(window_);
    window_->show();
    window_->activateWindow();
    QEventLoop loop;
    while (window_ && window_->isVisible()) {
      loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    if (window_) window_->setWindowModality(Qt::NonModal);
  }
  if (front == nullptr) return;
  front->activateWindow();
  KeyHandover::to(front);
}

// Above the window that is in front, whichever it belongs to.
void Form::standOver(const QWidget& front) {
  window_->winId();  // creates what knows the window it stands over
  window_->windowHandle()->setTransientParent(front.windowHandle());
}

void Form::Hide() {
  if (window_) window_->hide();
}

bool Form::IsVisible() const {
  return window_ && window_->isVisible();
}

QObject* Form::find(const QString& name) {
  Load();
  QPointer<QObject>& known = found_[name];
  if (known.isNull()) known = window_->findChild<QObject*>(name);
  if (known.isNull()) missing(Name() + u'!' + name);
  return known;
}

QWidget* Form::Control(const QString& name) {
  return require<QWidget>(find(name), Name() + u'!' + name);
}

QObject* Form::Part(const QString& name) {
  return find(name);
}

void Form::missing(const QString& name) {
  throw store::Failure(store::failure::kItemNotFound,
                       QStringLiteral("Elemento '%1' non trovato").arg(name));
}

bool Form::keyDown(int, Qt::KeyboardModifiers) {
  return false;
}

bool Form::queryUnload() {
  const char* button = *dialog_.box != '\0' ? dialog_.box : dialog_.escape;
  if (*button == '\0') return true;
  control<QAbstractButton>(QString::fromLatin1(button))->click();
  return false;
}

// A key goes to the form whose window holds the focus: the nearest one above the control.
bool Form::watchesKey(QObject* watched) const {
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || widget != QApplication::focusWidget()) return false;
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (widget == window_) return true;
    if (widget->isWindow()) return false;
    if (forms().isFormWindow(widget)) return false;
  }
  return false;
}

// The form's window that was last in front: one that comes back from a message or from another
// program has not been left.
QPointer<QWidget>& Form::inFront() {
  static QPointer<QWidget> window;
  return window;
}

void Form::cameToFront() {
  if (inFront() == window_) return;
  inFront() = window_;
  activated();
}

// A button pressed by its letter would act only after a moment, and keys typed on would be lost.
bool Form::takesShortcut(QKeyEvent& key) {
  const bool letter = key.modifiers() == Qt::AltModifier && buttonOf(*window_, key) != nullptr;
  if (!letter && !wantsShortcut(key.key(), key.modifiers())) return false;
  key.accept();
  return true;
}

bool Form::pressKey(QKeyEvent& key) {
  if (HelpKey::press(QApplication::focusWidget(), key)) return true;
  QAbstractButton* button = key.modifiers() == Qt::AltModifier ? buttonOf(*window_, key) : nullptr;
  if (button == nullptr) return pressDialogKey(key.key()) || keyDown(key.key(), key.modifiers());
  button->click();
  return true;
}

bool Form::pressDialogKey(int key) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  const char* name = enter ? dialog_.enter : dialog_.escape;
  if (*name == '\0' || !(enter || key == Qt::Key_Escape)) return false;
  if (isInCell(QApplication::focusWidget())) return false;
  QAbstractButton* focused =
      enter ? qobject_cast<QPushButton*>(QApplication::focusWidget()) : nullptr;
  (focused != nullptr ? focused : control<QAbstractButton>(QString::fromLatin1(name)))->click();
  return true;
}

bool Form::eventFilter(QObject* watched, QEvent* event) {
  return guarded([&] { return filtered(watched, *event); });
}

bool Form::filtered(QObject* watched, QEvent& event) {
  const bool asked = event.type() == QEvent::ShortcutOverride;
  if ((asked || event.type() == QEvent::KeyPress) && watchesKey(watched)) {
    auto& key = static_cast<QKeyEvent&>(event);
    return asked ? takesShortcut(key) : pressKey(key);
  }
  if (watched != window_) return false;
  if (event.type() == QEvent::Resize) resized();
  if (event.type() == QEvent::WindowActivate) cameToFront();
  if (event.type() == QEvent::Hide && inFront() == window_) inFront() = nullptr;
  if (event.type() == QEvent::Close && event.spontaneous()) {
    event.ignore();
    closeByBox();
    return true;
  }
  return false;
}

// The answer may show a dialog: the close event must be over before.
void Form::closeByBox() {
  const auto close = [this] {
    runCommand([this] {
      if (queryUnload()) Unload();
    });
  };
  QMetaObject::invokeMethod(this, close, Qt::QueuedConnection);
}

void Form::runCommand(std::function<void()> work) {
  Commands::run(window_, [work = std::move(work)] { guarded(work); });
}

void Forms::add(const QString& name, std::function<std::unique_ptr<Form>()> make) {
  entries_.push_back({name, std::move(make), nullptr});
}

Form& Forms::operator[](const QString& name) {
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& e) { return e.name == name; });
  if (entry == entries_.end()) {
    throw store::Failure(store::failure::kItemNotFound,
                         QStringLiteral("Finestra '%1' non trovata").arg(name));
  }
  if (!entry->form) entry->form = entry->make();
  return *entry->form;
}

bool Forms::has(const QString& name) const {
  return std::any_of(entries_.begin(), entries_.end(),
                     [&](const Entry& e) { return e.name == name; });
}

bool Forms::isLoaded(const QString& name) const {
  return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& e) {
    return e.name == name && e.form && e.form->IsLoaded();
  });
}

bool Forms::isFormWindow(const QWidget* widget) const {
  return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& e) {
    return e.form && e.form->IsLoaded() && e.form->Window() == widget;
  });
}

std::vector<Form*> Forms::loadedForms() const {
  std::vector<Form*> loaded;
  for (const Entry& entry : entries_) {
    if (entry.form && entry.form->IsLoaded()) loaded.push_back(entry.form.get());
  }
  return loaded;
}

void Forms::clear() {
  entries_.clear();
}

Forms& forms() {
  static Forms all;
  return all;
}

int toPixels(int twips) {
  return static_cast<int>(std::lround(static_cast<double>(twips) / kTwipsPerPixel));
}
int toTwips(int pixels) {
  return pixels * kTwipsPerPixel;
}

int Left(const QWidget* widget) {
  return toTwips(widget->x());
}
int Top(const QWidget* widget) {
  return toTwips(widget->y());
}
int Width(const QWidget* widget) {
  return toTwips(widget->width());
}
int Height(const QWidget* widget) {
  return toTwips(widget->height());
}
void SetLeft(QWidget* widget, int twips) {
  widget->move(toPixels(twips), widget->y());
}
void SetTop(QWidget* widget, int twips) {
  widget->move(widget->x(), toPixels(twips));
}
void SetWidth(QWidget* widget, int twips) {
  widget->resize(std::max(0, toPixels(twips)), widget->height());
}
void SetHeight(QWidget* widget, int twips) {
  widget->resize(widget->width(), std::max(0, toPixels(twips)));
}

}  // namespace platform
