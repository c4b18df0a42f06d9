// The key code a KeyPress handler sees for a key typed in Qt.
#pragma once

#include <optional>

#include "platform/vb_types.h"

class QKeyEvent;

namespace fc {

// The character of the key as a code 1..255 (Enter 13, Backspace 8, Esc 27),
// or nothing for keys that raise no KeyPress: Tab (it moves the focus),
// Delete, arrows and function keys, and characters beyond Latin-1.
std::optional<Integer> keyAsciiOf(const QKeyEvent& event);

}  // namespace fc
