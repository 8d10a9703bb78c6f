#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/sys.h"
#include "tyr/gks/state_private.h"
#include "tyr/paper/paper_private.h"
#include "tyr/x11/frame_client_private.h"
#include "tyr/x11/frame_reply_private.h"
#include "tyr/x11/published_window.h"
#include "tyr/x11/window_id_private.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_connect.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/x11_window.h"

using namespace tyr;

namespace {

constexpr int kWishNewFrame = 2;
constexpr int kWishKill = 9;
constexpr long kMessageType = 62; ///< of a client message between plotting programs
constexpr float kWait = 0.2F;     ///< s between two looks at the window's name
constexpr std::chrono::seconds kLongestAnswer{30}; ///< then the other side counts as gone
constexpr size_t kFirstDeviceWord = 2;             ///< behind display and window id
constexpr size_t kIdRoom = 256;

/// The text of the window id: the last device word ("id" or "display,id"), else the environment.
/// Null when no place holds one.
const char *id_word(const std::vector<std::string> &words)
{
    if (words.size() > 1) {
        return words[1].c_str();
    }
    if (!words.empty() && !words[0].empty()) {
        return words[0].c_str();
    }
    const char *text = std::getenv("tyrwindow");
    return text != nullptr ? text : std::getenv("WINDOW");
}

/// First word of the file that holds the text; false with a message when it can't be read.
bool read_id_file(const std::string &name, std::string *text)
{
    std::array<char, kFileNameRoom> path{};
    FILE_join(RES_get("file_path"), name.c_str(), path.data());
    if (const std::string folder = gwindow_folder(false);
        FILE_exists(path.data()) != 1 && !folder.empty()) {
        FILE_join(folder.c_str(), name.c_str(), path.data());
    }
    const FilePtr file(FILE_open(path.data(), "r"));
    std::array<char, kIdRoom> word{};
    if (!file || std::fscanf(file.get(), "%255s", word.data()) != 1) {
        MSG_out(kMsgWarn, "gopen_ws: unable to open window id file\n");
        return false;
    }
    *text = word.data();
    return true;
}

std::optional<WindowId> find_window(const std::vector<std::string> &words)
{
    const char *word = id_word(words);
    if (word == nullptr) {
        MSG_out(kMsgWarn, "gopen_ws: window parameters not specified\n");
        return std::nullopt;
    }
    std::string text = word;
    if (const std::string file = window_id_file(text); !file.empty()) {
        if (!read_id_file(file, &text)) {
            return std::nullopt;
        }
    }
    const std::optional<WindowId> id = parse_window_id(text);
    if (!id) {
        MSG_out(kMsgWarn, "gopen_ws: window id not specified\n");
    }
    return id;
}

void send_wish(int wish)
{
    const X11State &x = x11();
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.display = x.display;
    event.xclient.window = x.window;
    event.xclient.message_type = static_cast<Atom>(kMessageType);
    event.xclient.format = 8;
    event.xclient.data.b[0] = static_cast<char>(wish);
    XSendEvent(x.display, x.window, 1, 0, &event);
    XSync(x.display, 0);
}

/// Whether the window's name has a plus behind the title: a frame is being made.
bool has_plus()
{
    std::array<char, kTitleRoom> suffix{};
    return ginq_window_name(suffix.data()) == 0 && suffix[0] == '+';
}

/// Asks for a new frame and waits until the other side has made it. An owner that answers by a
/// property is waited for as long as it may take; of another one the name has no plus behind the
/// title then. False, told, when there is none to draw on.
bool ask_for_frame()
{
    const X11State &x = x11();
    XSelectInput(x.display, x.window, PropertyChangeMask);
    const FrameReply before = read_frame_reply(x.display, x.window);
    frame_client_begin(x.display, x.window);
    send_wish(kWishNewFrame);
    const auto deadline = std::chrono::steady_clock::now() + kLongestAnswer;
    while (std::chrono::steady_clock::now() < deadline && !x.error_seen) {
        wait_on_connection(x.display, kWait);
        XEvent event;
        while (XCheckWindowEvent(x.display, x.window, PropertyChangeMask, &event) != 0) {
        }
        const FrameReply reply = read_frame_reply(x.display, x.window);
        if (reply.serial != before.serial && !reply.is_made) {
            MSG_out(kMsgWarn, "gopen_ws: window has no room for another frame\n");
            return false;
        }
        if (reply.serial != before.serial || (before.serial == 0 && !has_plus())) {
            return true;
        }
    }
    MSG_out(kMsgWarn, "gopen_ws: window doesn't answer\n");
    return false;
}

/// The title is the window's name without what stands in brackets behind it.
void take_title()
{
    const X11State &x = x11();
    char *name = nullptr;
    if (XFetchName(x.display, x.window, &name) == 0 || name == nullptr) {
        return;
    }
    std::string title = name;
    XFree(name);
    title = title.substr(0, title.find(" ["));
    if (title.ends_with(" +")) { // a frame is being made
        title.resize(title.size() - 2);
    }
    kernel().ws.title = title.substr(0, kTitleRoom - 1);
}

} // namespace

int gx_open_window(const std::vector<std::string> &words)
{
    X11State &x = x11();
    if (!gx_connect(words.size() > 1 ? words[0] : "")) {
        return -1;
    }
    gset_device(kDeviceExtern);
    gset_events(0);
    gset_recording(0);
    const std::optional<WindowId> id = find_window(words);
    if (!id) {
        return -1;
    }
    WorkstationState &ws = kernel().ws;
    if (words.size() > kFirstDeviceWord && is_word(words[kFirstDeviceWord], "new")) {
        ws.wish = kWishNewFrame;
    }
    ws.width = ws.first_width = id->width;
    ws.height = ws.first_height = id->height;
    ws.x_offset = ws.y_offset = 0;
    x.pixmap = x.target = id->pixmap;
    x.window = id->window != 0 ? id->window : id->pixmap;
    x.private_map = id->colour_map;
    x.error_seen = false;
    x.common = XCreateGC(x.display, x.pixmap, 0, nullptr);
    XSync(x.display, 0);
    if (x.error_seen) { // no such pixmap: told by the handler
        x.pixmap = x.target = 0;
        x.window = 0;
        MSG_out(kMsgWarn, "gopen_ws: unable to open window\n");
        return -1;
    }
    if (id->window != 0) {
        take_title();
    }
    gx_choose_pixels();
    if (ws.wish == kWishNewFrame && !ask_for_frame()) {
        x.pixmap = x.target = 0;
        x.window = 0;
        return -1;
    }
    gcolor_init();
    if (const char *geometry = RES_get("geometry"); geometry != nullptr) {
        apply_geometry(geometry, {true, 1.0, 0.0, true});
    }
    return 0;
}

void gx_release_extern()
{
    X11State &x = x11();
    if (kernel().ws.wish == kWishNewFrame && x.window != 0) {
        send_wish(kMessageFinished);
    }
    frame_client_end(x.display);
    if (kernel().ws.wish == kWishKill && x.window != 0) {
        send_wish(kWishKill);
    }
    x.window = 0;
    x.pixmap = x.target = 0;
    x.private_map = 0;
}
