#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

/// An X11 server without a screen (Xvfb) for the time of a test; DISPLAY names it. Where the
/// program isn't installed the test is to skip.
class VirtualScreen {
  public:
    VirtualScreen();
    ~VirtualScreen();
    VirtualScreen(const VirtualScreen &) = delete;
    VirtualScreen &operator=(const VirtualScreen &) = delete;

    bool is_there() const { return !name_.empty(); }
    const std::string &name() const { return name_; } ///< ":3"

  private:
    pid_t process_ = -1;
    std::string name_;
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
