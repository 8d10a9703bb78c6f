#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

/// An X11 server without a screen (Xvfb), one a process; DISPLAY names it. Where the program isn't
/// installed the test is to skip.
class VirtualScreen {
  public:
    VirtualScreen();
    bool is_there() const { return !name().empty(); }
    const std::string &name() const; ///< ":3"
    pid_t process() const;           ///< of the server
};

/// Skips the test without a server.
#define NEED_SCREEN(screen)                                                                        \
    if (!(screen).is_there())                                                                      \
    GTEST_SKIP() << "Xvfb isn't installed"

/// A picture as colours, 0xRRGGBB, from the top row on.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<unsigned> pixels;

    unsigned at(int x, int y) const;
    /// How many pixels have that colour.
    int count(unsigned colour) const;
    /// How many differ from another picture; all of them where the sizes do.
    int differences(const Picture &other) const;
};

/// What stands on the kernel's draw target; empty without one.
Picture grab_picture();
/// An image file, read by ImageMagick; empty where that fails.
Picture read_picture(const std::string &path);
