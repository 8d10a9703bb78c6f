#pragma once

#include <string>

#include <X11/Xlib.h>

namespace tyr {

/// What keys and buttons do to the picture that is held.

/// Text of a key ("e", "Ret") and of a button with its modifiers ("B1-P-Shft", "B1-R").
std::string key_text(XKeyEvent *event);
std::string button_text(const XButtonEvent &event);
/// Modifiers that are held, as a callback's text tells them: "-Alt", "-Shft", "-Cntrl".
std::string modifier_text(unsigned state);

enum class KeyResult {
    pass,  ///< the program is told
    end,   ///< the hold ends, and the program is told
    taken, ///< the program isn't told
};

/// Does what a key stands for. All but Return need Alt.
KeyResult do_key(const std::string &key, const XKeyEvent &event);
/// Does what a button stands for when Alt isn't held: frames and loops.
void do_button(const XButtonEvent &event);

} // namespace tyr
