#include "support/window_user.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

#include "support/run.h"

struct WindowUser::Connection {
    Display *display;
};

namespace {

constexpr int kTries = 400;

void pause_shortly()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
}

bool has_title(Display *display, Window window, const std::string &title)
{
    char *name = nullptr;
    const bool is_named = XFetchName(display, window, &name) != 0 && name != nullptr;
    const bool is_found = is_named && std::string(name).rfind(title, 0) == 0;
    XFree(name);
    return is_found;
}

int pass_over(Display *, XErrorEvent *)
{
    return 0;
}

Window find_window(Display *display, const std::string &title)
{
    // a window of the list may be gone when it is asked for its name
    XSync(display, 0);
    const XErrorHandler before = XSetErrorHandler(pass_over);
    Window root = 0;
    Window parent = 0;
    Window *children = nullptr;
    unsigned count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
    Window found = 0;
    for (unsigned i = 0; i < count; i++) {
        found = has_title(display, children[i], title) ? children[i] : found;
    }
    XFree(children);
    XSync(display, 0);
    XSetErrorHandler(before);
    return found;
}

/// Whether a process waits for something: its state, behind its name in brackets, is S. One that
/// has an event to handle is runnable.
bool is_asleep(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    std::getline(file, line);
    const size_t behind = line.rfind(") ");
    return behind == std::string::npos || line[behind + 2] != 'R';
}

Picture grab(Display *display, Window window)
{
    XWindowAttributes attributes{};
    XGetWindowAttributes(display, window, &attributes);
    Picture picture;
    if (attributes.map_state != IsViewable) { // the server gives the picture of no other window
        return picture;
    }
    XImage *image = XGetImage(display, window, 0, 0, static_cast<unsigned>(attributes.width),
                              static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
    if (image == nullptr) {
        return picture;
    }
    picture.width = image->width;
    picture.height = image->height;
    for (int y = 0; y < image->height; y++) {
        for (int x = 0; x < image->width; x++) {
            picture.pixels.push_back(static_cast<unsigned>(XGetPixel(image, x, y)) & 0xFFFFFFU);
        }
    }
    XDestroyImage(image);
    return picture;
}

} // namespace

WindowUser::WindowUser(const VirtualScreen &screen, const std::vector<std::string> &words,
                       const std::string &log, const std::string &program)
    : server_(new Connection{XOpenDisplay(screen.name().c_str())}), screen_(screen.process())
{
    std::vector<std::string> all = {TYR_BINARY_DIR "/bin/" + program, "-df", "/nonexistent", "-fp",
                                    TYR_SOURCE_DIR "/data"};
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char *> arguments;
    for (std::string &word : all) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    program_ = fork();
    if (program_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
        dup2(out, STDOUT_FILENO);
        dup2(out, STDERR_FILENO);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
}

WindowUser::~WindowUser()
{
    if (program_ > 0) {
        kill(program_, SIGKILL);
        waitpid(program_, nullptr, 0);
    }
    XCloseDisplay(server_->display);
    delete server_;
}

bool WindowUser::sees_window(const std::string &title)
{
    for (int i = 0; i < kTries && window_ == 0; i++) {
        pause_shortly();
        window_ = find_window(server_->display, title);
    }
    return window_ != 0 && look().width > 0;
}

long WindowUser::peak_memory() const
{
    std::ifstream file("/proc/" + std::to_string(program_) + "/status");
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("VmHWM:", 0) == 0) {
            return std::stol(line.substr(6));
        }
    }
    return -1;
}

bool WindowUser::is_idle() const
{
    return is_asleep(program_) && is_asleep(screen_);
}

Picture WindowUser::look()
{
    // a picture that stands still while both sleep is finished
    Picture last = grab(server_->display, window_);
    for (int i = 0, still = 0; i < kTries && still < 4; i++) {
        pause_shortly();
        Picture next = grab(server_->display, window_);
        still = is_idle() && next.differences(last) == 0 ? still + 1 : 0;
        last = std::move(next);
    }
    return last;
}

void WindowUser::press_key(const char *name, bool alt)
{
    press_key_with(name, alt ? Mod1Mask : 0);
}

std::string WindowUser::title() const
{
    char *name = nullptr;
    XFetchName(server_->display, window_, &name);
    std::string text = name != nullptr ? name : "";
    XFree(name);
    return text;
}

void WindowUser::kill_program()
{
    kill(program_, SIGKILL);
    waitpid(program_, nullptr, 0);
    program_ = -1;
}

void WindowUser::destroy_window()
{
    XDestroyWindow(server_->display, window_);
    XSync(server_->display, 0);
}

void WindowUser::press_key_with(const char *name, unsigned modifiers)
{
    XKeyEvent key{};
    key.type = KeyPress;
    key.window = window_;
    key.root = DefaultRootWindow(server_->display);
    key.same_screen = 1;
    key.x = 100;
    key.y = 100;
    key.state = modifiers;
    key.keycode = XKeysymToKeycode(server_->display, XStringToKeysym(name));
    XEvent event{};
    event.xkey = key;
    XSendEvent(server_->display, window_, 1, KeyPressMask, &event);
    XSync(server_->display, 0);
}

void WindowUser::send_button(int type, int x, int y, unsigned state)
{
    XEvent event{};
    if (type == MotionNotify) {
        event.xmotion = {MotionNotify, 0, 1, server_->display, window_, 0, 0, 0, x, y, x, y,
                         state,        0, 1};
    } else {
        event.xbutton = {type, 0, 1,     server_->display, window_, 0, 0, 0, x, y,
                         x,    y, state, Button1,          1};
    }
    XSendEvent(server_->display, window_, 1, ButtonPressMask, &event);
    XSync(server_->display, 0);
}

void WindowUser::drag(int x0, int y0, int x1, int y1)
{
    send_button(ButtonPress, x0, y0, ShiftMask);
    send_button(MotionNotify, (x0 + x1) / 2, (y0 + y1) / 2, ShiftMask | Button1Mask);
    send_button(MotionNotify, x1, y1, ShiftMask | Button1Mask);
    send_button(ButtonRelease, x1, y1, Button1Mask);
}

void WindowUser::resize(int width, int height)
{
    XResizeWindow(server_->display, window_, static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XSync(server_->display, 0);
}

void WindowUser::send_message(char wish)
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window_;
    event.xclient.message_type = 62;
    event.xclient.format = 8;
    event.xclient.data.b[0] = wish;
    XSendEvent(server_->display, window_, 1, 0, &event);
    XSync(server_->display, 0);
}

int WindowUser::wait_for_exit()
{
    for (int i = 0; i < kTries; i++) {
        int status = 0;
        if (waitpid(program_, &status, WNOHANG) == program_) {
            program_ = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        pause_shortly();
    }
    return -1;
}
