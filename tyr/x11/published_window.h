#pragma once

#include <string>

/// A window that other programs draw into (device `w`): how they find it.

/// The window id text of this process's window, "+window:pixmap:WIDTHxHEIGHT:colours"; empty
/// without one. It changes with the window's size.
std::string gwindow_id();

/// Name of the display that the window is on; empty without one.
std::string ginq_display_name();

/// The folder of this user for window id files, where device `w` looks when `file_path` has none:
/// XDG_RUNTIME_DIR, else /tmp/tyr-UID, made with `make`. Empty where it isn't this user's own.
std::string gwindow_folder(bool make);
