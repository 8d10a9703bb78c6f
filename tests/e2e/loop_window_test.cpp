// The window of loops with the programs that draw into it.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/screen.h"
#include "support/temp_dir.h"
#include "support/window_user.h"

namespace {

using std::chrono::milliseconds;

/// Tries until something holds, a few seconds.
template <class Condition> bool comes_true(const Condition &condition)
{
    for (int i = 0; i < 400; i++) {
        if (condition()) {
            return true;
        }
        std::this_thread::sleep_for(milliseconds(25));
    }
    return false;
}

struct LoopWindow : testing::Test {
    VirtualScreen screen;
    TempDir dir;
    int later = -1; ///< the end of the file that a half drawn section waits for
    std::string number = std::to_string(10000 + getpid() % 100000);

    LoopWindow() { chmod(dir.path().c_str(), S_IRWXU); }

    /// Words of the window's own command line.
    std::vector<std::string> words(const std::vector<std::string> &more = {}) const
    {
        // the folder of window numbers is this test's, for the programs as well
        setenv("XDG_RUNTIME_DIR", dir.path().c_str(), 1);
        std::vector<std::string> all = {"-wn", number,     "-ge", "300x240",
                                        "-ip", dir.path(), "-me", "mess"};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    std::string title() const { return "TYRloop " + number; }
    std::string device() const { return "w,,w" + number + ",new"; }
    std::string log() const { return read_file(dir.file("log")); }
    bool is_told(const std::string &text) const
    {
        return comes_true([&] { return log().find(text) != std::string::npos; });
    }
    RunOptions there() const
    {
        return {.env = {"DISPLAY=" + screen.name(), "XDG_RUNTIME_DIR=" + dir.path()},
                .folder = dir.path()};
    }
    RunResult draw_map(const std::string &file, const std::vector<std::string> &more = {}) const
    {
        std::vector<std::string> all = {"-de", device(), "-le",  "3000m", "-re",
                                        "us",  "-va",    "wbrb", "-me",   "warn"};
        all.insert(all.end(), more.begin(), more.end());
        all.push_back(file);
        return run_profiler(all, there());
    }
    bool has_queue() const { return msgget(std::stoi(number), 0) >= 0; }
    bool is_gone() const
    {
        return comes_true([&] {
            return !has_queue() && !std::filesystem::exists(dir.file("tyrloop." + number));
        });
    }
    /// Starts a section that stops in the middle, waiting for a file; its process.
    pid_t start_half_drawn(const std::string &first)
    {
        const std::string fifo = dir.file("later");
        unlink(fifo.c_str());
        EXPECT_EQ(mkfifo(fifo.c_str(), S_IRWXU), 0);
        const std::string program = TYR_BINARY_DIR "/bin/profiler";
        const pid_t process = fork();
        if (process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            const int out = open(dir.file("half").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
            dup2(out, STDOUT_FILENO);
            dup2(out, STDERR_FILENO);
            setenv("DISPLAY", screen.name().c_str(), 1);
            execl(program.c_str(), program.c_str(), "-df", "/nonexistent", "-fp",
                  TYR_SOURCE_DIR "/data", "-de", device().c_str(), "-id", "PLTC2", "-va", "wbrb",
                  "-me", "mess", first.c_str(), fifo.c_str(), first.c_str(), nullptr);
            _exit(127);
        }
        EXPECT_TRUE(comes_true([&] {
            later = open(fifo.c_str(), O_WRONLY | O_NONBLOCK); // not before it reads
            return later >= 0;
        })) << read_file(dir.file("half"));
        return process;
    }
};

int exit_code(pid_t process)
{
    int status = 0;
    bool has_ended = comes_true([&] { return waitpid(process, &status, WNOHANG) == process; });
    EXPECT_TRUE(has_ended) << "it hangs";
    if (!has_ended) {
        kill(process, SIGKILL);
        waitpid(process, &status, 0);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

TEST_F(LoopWindow, LoopOf24FramesIsStoppedSteppedAndSaved)
{
    NEED_SCREEN(screen);
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 24);
    ASSERT_EQ(files.size(), 24U);
    WindowUser user(screen, words({"-of", "day.gif"}), dir.file("log"), "tyrloop");
    ASSERT_TRUE(user.sees_window(title())) << log();
    for (const std::string &file : files) {
        const RunResult drawn = draw_map(file);
        ASSERT_EQ(drawn.code, 0) << drawn.err;
    }
    // it loops by itself: the name tells the frame, and goes on changing
    std::vector<std::string> names;
    comes_true([&] {
        const std::string name = user.title();
        if (name.find('[') != std::string::npos && (names.empty() || names.back() != name)) {
            names.push_back(name);
        }
        return names.size() > 3;
    });
    EXPECT_GT(names.size(), 3U);
    user.press_key("l", true);
    std::this_thread::sleep_for(milliseconds(1200)); // the frame's time runs out
    const std::string stopped = user.title();
    std::this_thread::sleep_for(milliseconds(1200));
    EXPECT_EQ(user.title(), stopped);
    const int at = std::stoi(stopped.substr(stopped.find('[') + 1));
    user.press_key("bracketright", true);
    const Picture shown = user.look();
    const int next = (at + 1) % 24;
    EXPECT_EQ(user.title(), title() + " [" + std::to_string(next) + "]");
    user.press_key("s", true);
    ASSERT_TRUE(is_told("Created GIF loop of 24 frames: " + dir.file("day.gif"))) << log();
    if (have_program("identify") && have_program("convert")) {
        const RunResult listed = run({"identify", "-format", "%T %w %h\n", dir.file("day.gif")});
        EXPECT_EQ(std::count(listed.out.begin(), listed.out.end(), '\n'), 24);
        EXPECT_EQ(listed.out.rfind("50 300 240\n", 0), 0U) << "half a second each";
        EXPECT_NE(listed.out.find("\n100 300 240\n"), std::string::npos) << "the last one rests";
        const std::string one = dir.file("one.png");
        run({"convert", dir.file("day.gif") + "[" + std::to_string(next) + "]", one});
        EXPECT_EQ(read_picture(one).differences(shown), 0);
        run({"convert", dir.file("day.gif") + "[" + std::to_string(at) + "]", one});
        EXPECT_GT(read_picture(one).differences(shown), 100) << "each hour has its own winds";
    }
    user.press_key("q", true);
    EXPECT_EQ(user.wait_for_exit(), 0) << log();
    EXPECT_TRUE(is_gone()) << "neither queue nor file stay behind";
}

TEST_F(LoopWindow, RocksToAndFro)
{
    NEED_SCREEN(screen);
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 3);
    WindowUser user(screen, words(), dir.file("log"), "tyrloop");
    ASSERT_TRUE(user.sees_window(title())) << log();
    for (const std::string &file : files) {
        ASSERT_EQ(draw_map(file).code, 0);
    }
    user.press_key("r", true);
    std::vector<int> order;
    comes_true([&] {
        const std::string name = user.title();
        const size_t place = name.find('[');
        const int frame = place == std::string::npos ? -1 : std::stoi(name.substr(place + 1));
        if (frame >= 0 && (order.empty() || order.back() != frame)) {
            order.push_back(frame);
        }
        return order.size() > 7;
    });
    ASSERT_GT(order.size(), 7U);
    for (size_t i = order.size() - 5; i + 1 < order.size(); i++) {
        EXPECT_EQ(std::abs(order[i + 1] - order[i]), 1) << "no jump from the last to the first";
    }
    user.press_key("q", true);
    EXPECT_EQ(user.wait_for_exit(), 0);
}

TEST_F(LoopWindow, GoesOnWhenFramesAreDeleted)
{
    NEED_SCREEN(screen);
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 3);
    WindowUser user(screen, words(), dir.file("log"), "tyrloop");
    ASSERT_TRUE(user.sees_window(title())) << log();
    for (const int frames : {3, 2, 1}) { // each time the last of them is deleted
        SCOPED_TRACE(frames);
        for (int i = 0; i < frames; i++) {
            ASSERT_EQ(draw_map(files[static_cast<size_t>(i)]).code, 0);
        }
        user.press_key("l", true);
        std::this_thread::sleep_for(milliseconds(1200)); // the frame's time runs out
        const std::string last = "[" + std::to_string(frames - 1) + "]";
        for (int i = 0; i < frames && user.title().find(last) == std::string::npos; i++) {
            user.press_key("bracketright", true);
            user.look();
        }
        for (int i = 0; i < frames; i++) {
            user.press_key("d", true);
            user.look();
        }
    }
    EXPECT_EQ(draw_map(files[2]).code, 0) << log();
    EXPECT_GT(user.look().differences(Picture{300, 240, std::vector<unsigned>(300 * 240)}), 1000);
    EXPECT_EQ(log().find("X11 error"), std::string::npos) << log();
    user.press_key("q", true);
    EXPECT_EQ(user.wait_for_exit(), 0);
}

TEST_F(LoopWindow, ProgramThatDiesHalfWayIsToldAndTheNextOneDraws)
{
    NEED_SCREEN(screen);
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 2);
    WindowUser user(screen, words(), dir.file("log"), "tyrloop");
    ASSERT_TRUE(user.sees_window(title())) << log();
    ASSERT_EQ(draw_map(files[0]).code, 0);
    const pid_t half = start_half_drawn(files[0]);
    kill(half, SIGKILL);
    EXPECT_EQ(exit_code(half), 128 + SIGKILL);
    EXPECT_TRUE(is_told("The program that drew frame 1 has ended without finishing it\n")) << log();
    EXPECT_EQ(draw_map(files[1]).code, 0);
    user.press_key("q", true);
    EXPECT_EQ(user.wait_for_exit(), 0);
    const std::string told = log();
    EXPECT_EQ(told.find("has ended"), told.rfind("has ended")) << "only of that one:\n" << told;
}

TEST_F(LoopWindow, WindowThatDiesEndsTheProgramThatDraws)
{
    NEED_SCREEN(screen);
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 1);
    WindowUser user(screen, words(), dir.file("log"), "tyrloop");
    ASSERT_TRUE(user.sees_window(title())) << log();
    const pid_t half = start_half_drawn(files[0]);
    user.kill_program();
    EXPECT_TRUE(is_gone()) << "neither queue nor file stay behind";
    close(later);
    EXPECT_EQ(exit_code(half), 4);
    const std::string told = read_file(dir.file("half"));
    EXPECT_NE(told.find("gx_error: the window of the other program is gone\nFatal X11 Error\n"),
              std::string::npos)
        << told;
    EXPECT_EQ(told.find("X11 error:"), std::string::npos) << told;
    // the next one is told that there is none
    const RunResult late = draw_map(files[0]);
    EXPECT_EQ(late.code, 4);
    EXPECT_NE(late.err.find("unable to open window id file"), std::string::npos) << late.err;
}

TEST_F(LoopWindow, KeepsTheResourcesOfASeries)
{
    NEED_SCREEN(screen);
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 1);
    WindowUser user(screen, words({"-pa", "variable=wbrb"}), dir.file("log"), "tyrloop");
    ASSERT_TRUE(user.sees_window(title())) << log();
    const auto ask = [&](const std::vector<std::string> &more) {
        std::vector<std::string> all = {TYR_BINARY_DIR "/bin/profiler", "-df", "#" + number, "-fp",
                                        TYR_SOURCE_DIR "/data"};
        all.insert(all.end(), more.begin(), more.end());
        return run(all, there());
    };
    // no device, no variable: both are the window's. What is given is kept for the next one.
    const RunResult first = ask({"-le", "3000m", "-re", "us", "-me", "warn", files[0]});
    EXPECT_EQ(first.code, 0) << first.err;
    const Picture picture = user.look();
    EXPECT_GT(picture.differences(Picture{300, 240, std::vector<unsigned>(300 * 240)}), 1000);
    const RunResult second = ask({files[0]});
    EXPECT_EQ(second.code, 0) << second.err;
    EXPECT_EQ(second.err + second.out, "") << "even how much it tells";
    user.press_key("l", true);
    EXPECT_EQ(user.look().differences(picture), 0) << "the same map once more";
    EXPECT_NE(user.title().find('['), std::string::npos);
    const RunResult other = ask({"-h"});
    EXPECT_EQ(other.code, 0);
    user.press_key("q", true);
    EXPECT_EQ(user.wait_for_exit(), 0);
    const RunResult late =
        ask({"-me", "warn", "-de", "p,x.ps", "-va", "wbrb", "-id", "PLTC2", files[0]});
    EXPECT_NE(
        late.err.find("TYRloop window: " + number + " not running or no message queue exists\n"),
        std::string::npos)
        << late.err;
    EXPECT_EQ(late.code, 0);
}

TEST_F(LoopWindow, NumberIsForOneWindowAndCommandsDrawIntoIt)
{
    NEED_SCREEN(screen);
    const std::vector<std::string> files = make_samples(dir.file("obs"), "12", 2);
    const auto command = [&](const std::string &file) {
        return TYR_BINARY_DIR "/bin/profiler -df /nonexistent -fp '" TYR_SOURCE_DIR
                              "/data' -me warn -le 3000m -va wbrb '" +
               file + "'";
    };
    WindowUser user(screen, words({command(files[0]), "exit 3", command(files[1])}),
                    dir.file("log"), "tyrloop");
    ASSERT_TRUE(user.sees_window(title())) << log();
    EXPECT_TRUE(is_told("Command ended with code 3: exit 3\n"));
    EXPECT_TRUE(comes_true([&] { return user.title().find("[1]") != std::string::npos; }))
        << "two frames:\n"
        << log();
    const RunResult second = run_program("tyrloop", words(), there());
    EXPECT_EQ(second.code, 4);
    EXPECT_NE(second.err.find("is in use by process"), std::string::npos) << second.err;
    EXPECT_TRUE(has_queue()) << "the first one's is left alone";
    user.resize(400, 300);
    user.look();
    EXPECT_EQ(draw_map(files[0]).code, 0) << "the window's new pixmap has been made known";
    const Picture resized = user.look();
    EXPECT_EQ(resized.width, 400);
    EXPECT_GT(resized.differences(Picture{400, 300, std::vector<unsigned>(400 * 300)}), 1000);
    user.press_key("q", true);
    EXPECT_EQ(user.wait_for_exit(), 0);
}
