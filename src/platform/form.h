#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class QKeyEvent;

namespace platform {

// The window that has the input: the uppermost modal one, else the active one; null if none has.
QWidget* windowInFront();

// Sizes and places are told in twips: 15 to a pixel at 96 dots an inch.
inline constexpr int kTwipsPerPixel = 15;
int toPixels(int twips);  // to the nearest pixel
int toTwips(int pixels);

// The window of a dialog, and the buttons that keys and box press for the user.
struct Dialog {
  const char* title = "";
  const char* icon = "";
  const char* enter = "";   // pressed by Enter, unless another button has the focus
  const char* escape = "";  // by Escape, but not in a cell that is being typed into
  const char* box = "";     // by the window's box; without one, that of Escape
};

// A window known by its name. The object exists from the first touch, its widgets from Load: the
// first use of a control, or the first showing. A class derived from it builds its widgets in
// build(), gives each control its name as objectName, and keeps no other state in Qt objects.
class Form : public QObject {
  Q_OBJECT
 public:
  explicit Form(const QString& name, const Dialog& dialog = {});
  ~Form() override;

  QString Name() const { return objectName(); }
  bool IsLoaded() const { return window_ != nullptr; }
  // Creates the window, hidden. Nothing happens if it is there.
  void Load();
  // Destroys the window; the form object stays.
  void Unload();
  QWidget* Window();  // loads

  void Show();                 // modeless
  void ShowOver(Form* owner);  // modeless, always above the owner's window
  // Before all other windows, which get no input; returns when it has been hidden or closed.
  void ShowModal(Form* owner);
  void Hide();
  bool IsVisible() const;
  // The form's control by its name; loads. A missing name is failure 3265 with the name.
  QWidget* Control(const QString& name);
  template <typename T>
  T* control(const QString& name) {
    return require<T>(Control(name), name);
  }
  // A helper object of the form that is no widget (a data control), by its name; loads.
  template <typename T>
  T* part(const QString& name) {
    return require<T>(Part(name), name);
  }
  QObject* Part(const QString& name);

 Q_SIGNALS:
  void windowGone();

 protected:
  // Loads the form that this one stands in, whose loading may load this one in turn.
  virtual void loadOwner() {}
  // Makes the window with all controls; its parent is given where the form is a child window.
  virtual QWidget* build() = 0;
  virtual void loaded() {}     // the window exists, nothing is shown yet
  virtual void unloaded() {}   // the window is gone
  virtual void activated() {}  // the window has come to the front, from another form's or anew
  virtual void resized() {}
  // The user closes the window by its box: true lets it go (it is unloaded). By itself presses the
  // button that the dialog has for it, if any.
  virtual bool queryUnload();
  // A key pressed in the window that none of the dialog's buttons takes, seen before the control
  // that has the focus.
  // True if the key has been used up.
  virtual bool keyDown(int key, Qt::KeyboardModifiers modifiers);
  // True for a key that keyDown is to get even where it is a shortcut of the window.
  virtual bool wantsShortcut(int, Qt::KeyboardModifiers) { return false; }

  // Runs a command of the form that no signal has brought: in its turn, its failures told.
  void runCommand(std::function<void()> work);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool filtered(QObject* watched, QEvent& event);
  void closeByBox();
  bool watchesKey(QObject* watched) const;
  bool takesShortcut(QKeyEvent& key);
  bool pressKey(QKeyEvent& key);
  bool pressDialogKey(int key);
  void belongTo(Form* owner);
  void standOver(const QWidget& front);
  static QPointer<QWidget>& inFront();
  void cameToFront();
  [[noreturn]] static void missing(const QString& name);
  template <typename T>
  static T* require(QObject* object, const QString& name) {
    T* typed = dynamic_cast<T*>(object);
    if (typed == nullptr) missing(name);
    return typed;
  }

  QObject* find(const QString& name);

  Dialog dialog_;
  QPointer<QWidget> window_;
  QHash<QString, QPointer<QObject>> found_;  // by name, so that each is searched for once
};

// The forms of the program by name, each made at its first touch.
class Forms final {
 public:
  void add(const QString& name, std::function<std::unique_ptr<Form>()> make);
  template <typename F>
  void add(const QString& name) {
    add(name, [] { return std::make_unique<F>(); });
  }
  Form& operator[](const QString& name);  // failure 3265 for an unknown name
  // The same as what it was added as.
  template <typename F>
  F& as(const QString& name) {
    return static_cast<F&>((*this)[name]);
  }
  bool has(const QString& name) const;
  bool isLoaded(const QString& name) const;
  bool isFormWindow(const QWidget* widget) const;
  std::vector<Form*> loadedForms() const;
  // Destroys all form objects (the end of the program).
  void clear();

 private:
  struct Entry {
    QString name;
    std::function<std::unique_ptr<Form>()> make;
    std::unique_ptr<Form> form;
  };
  std::vector<Entry> entries_;
};
Forms& forms();

// Left, top, width and height of a widget in twips, relative to its parent (window: the screen).
int Left(const QWidget* widget);
int Top(const QWidget* widget);
int Width(const QWidget* widget);
int Height(const QWidget* widget);
void SetLeft(QWidget* widget, int twips);
void SetTop(QWidget* widget, int twips);
void SetWidth(QWidget* widget, int twips);
void SetHeight(QWidget* widget, int twips);

}  // namespace platform
