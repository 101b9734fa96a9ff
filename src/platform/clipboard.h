#pragma once

#include <QClipboard>
#include <optional>

class QKeyEvent;

namespace platform {

// The text of the clipboard, or the one that is marked somewhere (Selection). Empty if there is
// none. No value if the program it belongs to does not answer: no one waits for it longer than a
// second.
std::optional<QString> clipboardText(QClipboard::Mode mode);

// Where a key pastes from, by the desktop's customs; no value if it is not one that pastes.
std::optional<QClipboard::Mode> pastesFrom(const QKeyEvent& key);

}  // namespace platform
