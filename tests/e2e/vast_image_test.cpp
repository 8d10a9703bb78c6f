// Small files that say they are vast pictures, as grounds of a map in a window.

#include <sys/resource.h>

#include "support/program.h"
#include "support/screen.h"
#include "support/temp_dir.h"
#include "support/window_user.h"

namespace {

constexpr long kMegabyte = 1024; ///< kB

/// A limit on the address space of programs that are started while it lives.
class MemoryLimit {
  public:
    explicit MemoryLimit(long megabytes)
    {
        getrlimit(RLIMIT_AS, &before_);
        rlimit limited = before_;
        limited.rlim_cur = static_cast<rlim_t>(megabytes) << 20U;
        if (megabytes > 0) {
            setrlimit(RLIMIT_AS, &limited);
        }
    }
    ~MemoryLimit() { setrlimit(RLIMIT_AS, &before_); }
    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;

  private:
    rlimit before_{};
};

bool is_under_a_sanitizer()
{
#ifdef __SANITIZE_ADDRESS__
    return true;
#else
    return false;
#endif
}

TEST(VastImage, CostsNoMoreThanIsSeenOfIt)
{
    const VirtualScreen screen;
    NEED_SCREEN(screen);
    if (is_under_a_sanitizer()) {
        GTEST_SKIP() << "a sanitizer takes an address space of its own";
    }
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 1);
    dir.write("plain.img", "TYRIMG\n\n\n16384 16384\n");
    dir.write("vast.gif", std::string("GIF89a\xff\x3f\xff\x3f\x80\0\0\0\0\0\xff\xff\xff"
                                      ",\0\0\0\0\xff\x3f\xff\x3f\0\x02\x02\x44\x01\0;",
                                      35));
    const struct {
        const char *name, *image;
        long limit; ///< MB of address space; 0 for none
        const char *told;
    } cases[] = {
        {"TYRIMG", "plain.img", 0, ""},
        {"TYRIMG under a limit", "plain.img", 200, "Unable to allocate"},
        {"GIF", "vast.gif", 0, ""},
        {"GIF under a limit", "vast.gif", 200, "Unable to allocate"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string log = dir.file(std::string(c.name) + ".log");
        const MemoryLimit limit(c.limit);
        WindowUser user(screen,
                        {"-de", "d", "-va", "wbrb", "-le", "3000", "-re", "us", "-ti", "Vast",
                         "-ip", dir.file(""), "-mf", std::string("im:") + c.image, files[0]},
                        log);
        ASSERT_TRUE(user.sees_window("Vast")) << read_file(log);
        EXPECT_GT(user.look().count(0xFFFFFF), 500) << "the map is drawn";
        const long peak = user.peak_memory();
        EXPECT_GT(peak, 0);
        EXPECT_LT(peak, 64 * kMegabyte);
        user.press_key("q", true);
        EXPECT_EQ(user.wait_for_exit(), 0) << read_file(log);
        EXPECT_EQ(read_file(log).find(" not ") == std::string::npos, c.told[0] == '\0')
            << read_file(log);
        EXPECT_NE(read_file(log).find(c.told), std::string::npos) << read_file(log);
    }
}

} // namespace
