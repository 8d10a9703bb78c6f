#include <array>
#include <cstdlib>
#include <optional>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/start/channel.h"
#include "tyr/start/loop_window_private.h"

using namespace tyr;

namespace {

constexpr int kMostLines = 1000; ///< of a reply; a window that says more is out of order

/// The window that is connected.
struct Window {
    int queue;
    int id;
};

struct State {
    std::optional<Window> window;
};

State state;

/// What a reply said: the last line that is a value, and the code that ended it.
struct Reply {
    std::optional<std::string> value;
    int code = 0;
};

Reply read_reply(const Window &window)
{
    Reply reply;
    std::array<char, kChannelText> text = {};
    for (int i = 0; i < kMostLines; i++) {
        reply.code = CHAN_receive(window.queue, window.id, text.data());
        if (reply.code != kChannelLine) {
            return reply;
        }
        std::string line = text.data();
        if (!line.empty() && line[0] != '!' && line[0] != '\n') {
            line.pop_back(); // the newline
            reply.value = line;
        }
    }
    return reply;
}

/// Asks for every option at once, then reads what the window has. Returns how many values it was
/// told in turn.
int exchange_values(const Window &window, std::span<const OptionRec> options)
{
    for (const OptionRec &option : options) {
        CHAN_send(window.queue, window.id, "query res %s", option.name);
    }
    int told = 0;
    int code = 0;
    for (size_t i = 0; i < options.size(); i++) {
        const OptionRec &option = options[i];
        const Reply reply = read_reply(window);
        code = reply.code;
        if (reply.value) {
            RES_set(static_cast<int>(i), option.name, reply.value->c_str(), option.type);
        } else if (const char *value = RES_get(option.name)) {
            CHAN_send(window.queue, window.id, "set res %s %s", option.name, value);
            told++;
        }
        if (code == -1) {
            break; // the channel is gone
        }
    }
    if (code == kChannelGone) {
        MSG_out(kMsgWarn, "TYRloop not running!\n");
    }
    return code == -1 ? 0 : told;
}

} // namespace

void tyr::loop_exchange(const std::string &number, std::span<const OptionRec> options)
{
    loop_quit();
    Window window{CHAN_connect(std::atoi(number.c_str())), 0};
    if (window.queue == -1) {
        MSG_out(kMsgWarn, "TYRloop window: %s not running or no message queue exists\n",
                number.c_str());
        return;
    }
    window.id = CHAN_hello(window.queue);
    if (window.id == -1) {
        MSG_out(kMsgWarn, "TYRloop window: %s unable to connect\n", number.c_str());
        CHAN_close();
        return;
    }
    for (int told = exchange_values(window, options); told > 0; told--) {
        read_reply(window);
    }
    state.window = window;
}

void tyr::loop_tell(const char *name, const char *value)
{
    if (state.window) {
        CHAN_send(state.window->queue, state.window->id, "set res %s %s", name,
                  value != nullptr ? value : "");
        read_reply(*state.window);
    }
}

void tyr::loop_quit()
{
    if (state.window) {
        CHAN_send(state.window->queue, state.window->id, "quit");
        read_reply(*state.window);
        CHAN_close();
        state.window.reset();
    }
}
