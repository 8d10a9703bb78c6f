#pragma once

#include <string>

#include <sys/types.h>

#include "support/screen.h"

/// A running program and the user before its window: presses keys and buttons, drags, resizes,
/// looks. Everything waits until the program has answered.
class WindowUser {
  public:
    /// Starts the program (words of its command line, without its name) on a screen. Its messages
    /// go to the file `log`.
    WindowUser(const VirtualScreen &screen, const std::vector<std::string> &words,
               const std::string &log, const std::string &program = "profiler");
    ~WindowUser();
    WindowUser(const WindowUser &) = delete;
    WindowUser &operator=(const WindowUser &) = delete;

    /// Waits for a window of that title with a picture on it. False if none comes.
    bool sees_window(const std::string &title);
    /// A key, by its name ("q", "Return"), with Alt where asked for.
    void press_key(const char *name, bool alt = false);
    /// The same with any modifiers (Mod1Mask | LockMask).
    void press_key_with(const char *name, unsigned modifiers);
    /// The window's name as it stands now.
    std::string title() const;
    /// Kills the program, which gets no chance to tidy up.
    void kill_program();
    /// Takes the window away from the program.
    void destroy_window();
    /// Drags the first button with Shift from one place to another, window pixels.
    void drag(int x0, int y0, int x1, int y1);
    /// Gives the window a size, as a window manager does.
    void resize(int width, int height);
    /// Sends a client message of a plotting program.
    void send_message(char wish);
    /// The window's picture once the program and the server have nothing left to do.
    Picture look();
    /// Waits for the program's end. Its exit code; -1 if it doesn't end.
    int wait_for_exit();
    /// The most memory that the running program has held, kB; -1 where that can't be told.
    long peak_memory() const;
    /// Number of the window.
    unsigned long window() const { return window_; }

  private:
    struct Connection;
    void send_button(int type, int x, int y, unsigned state);

    bool is_idle() const;

    Connection *server_;
    pid_t screen_;
    unsigned long window_ = 0;
    pid_t program_ = -1;
};
