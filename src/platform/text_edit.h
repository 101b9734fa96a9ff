#pragma once

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>

#include "platform/clipboard.h"
#include "platform/complaint.h"
#include "platform/text_menu.h"

namespace platform {

inline bool hasSelection(const QLineEdit& box) {
  return box.hasSelectedText();
}
inline bool hasSelection(const QPlainTextEdit& box) {
  return box.textCursor().hasSelection();
}
inline bool canUndo(const QLineEdit& box) {
  return box.isUndoAvailable();
}
inline bool canUndo(const QPlainTextEdit& box) {
  return box.document()->isUndoAvailable();
}
inline bool canRedo(const QLineEdit& box) {
  return box.isRedoAvailable();
}
inline bool canRedo(const QPlainTextEdit& box) {
  return box.document()->isRedoAvailable();
}
inline void deleteSelection(QLineEdit& box) {
  box.del();
}
inline void deleteSelection(QPlainTextEdit& box) {
  box.textCursor().removeSelectedText();
}
inline void putCursor(QLineEdit& box, const QPoint& place) {
  box.setCursorPosition(box.cursorPositionAt(place));
}
inline void putCursor(QPlainTextEdit& box, const QPoint& place) {
  box.setTextCursor(box.cursorForPosition(place));
}

// A text box of the toolkit that never waits long for the program the clipboard belongs to, and
// whose menu tells every key.
template <typename Box>
class TextEdit : public Box {
 public:
  using Box::Box;

  void paste() { pasteFrom(QClipboard::Clipboard); }

 protected:
  // A key that undoes nothing here is left to the window.
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ShortcutOverride && !canUndo(*this) &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Undo)) {
      event->ignore();
      return false;
    }
    return Box::event(event);
  }

  // Puts a text in at the cursor, as if typed.
  virtual void putText(const QString& text) = 0;

  void keyPressEvent(QKeyEvent* event) override {
    const auto mode = this->isReadOnly() ? std::nullopt : pastesFrom(*event);
    mode ? pasteFrom(*mode) : Box::keyPressEvent(event);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() != Qt::MiddleButton) return Box::mouseReleaseEvent(event);
    if (this->isReadOnly() || !QGuiApplication::clipboard()->supportsSelection()) return;
    putCursor(*this, event->position().toPoint());
    pasteFrom(QClipboard::Selection);
  }

  void contextMenuEvent(QContextMenuEvent* event) override {
    const bool writable = !this->isReadOnly();
    const bool marked = hasSelection(*this);
    showTextMenu(
        *this, event->globalPos(),
        {{"&Annulla", QKeySequence::Undo, writable && canUndo(*this), [this] { this->undo(); }},
         {"&Ripeti", QKeySequence::Redo, writable && canRedo(*this), [this] { this->redo(); }},
         {},
         {"&Taglia", QKeySequence::Cut, writable && marked, [this] { this->cut(); }},
         {"&Copia", QKeySequence::Copy, marked, [this] { this->copy(); }},
         {"&Incolla", QKeySequence::Paste, writable, [this] { paste(); }},
         {"&Elimina", QKeySequence::Delete, writable && marked, [this] { deleteSelection(*this); }},
         {},
         {"&Seleziona tutto", QKeySequence::SelectAll, true, [this] { this->selectAll(); }}});
  }

 private:
  void pasteFrom(QClipboard::Mode mode) {
    const std::optional<QString> text = clipboardText(mode);
    if (!text) {
      const QString silent = QStringLiteral("Il programma da cui si incolla non risponde");
      complain(*this, silent, silent);
    } else if (!text->isEmpty()) {
      putText(*text);
    }
  }
};

}  // namespace platform
