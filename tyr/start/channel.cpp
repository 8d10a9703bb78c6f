#include "tyr/start/channel.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"

namespace {

constexpr int kBase = 0; ///< number of the window 0
constexpr int kDefaultTimeout = 20;
constexpr long kToServer = 1; ///< types of messages
constexpr long kToNewcomer = 2;
constexpr int kFirstClient = 3;
constexpr int kQuickPolls = 3; ///< polls without a pause between
constexpr int kShortPauses = 200;
constexpr float kShortPause = 0.1F; ///< s
constexpr float kLongPause = 1.0F;
constexpr int kSocketHandle = 1;
constexpr int kMostPort = 65535;

struct State {
    bool by_socket = false;
    int timeout = kDefaultTimeout;
    int socket = -1;
};

State state;

volatile std::sig_atomic_t alarm_rang = 0;

void ring(int)
{
    alarm_rang = 1; // and the call that waits comes back with EINTR
}

/// Limits the time of what is called while it lives.
class Alarm {
  public:
    Alarm()
    {
        alarm_rang = 0;
        struct sigaction action = {};
        action.sa_handler = ring; // without SA_RESTART
        sigaction(SIGALRM, &action, &before_);
        alarm(static_cast<unsigned>(state.timeout));
    }
    Alarm(const Alarm &) = delete;
    Alarm &operator=(const Alarm &) = delete;
    ~Alarm()
    {
        alarm(0);
        sigaction(SIGALRM, &before_, nullptr);
    }

    /// Ends the process if the time is over.
    static void check()
    {
        if (alarm_rang != 0) {
            MSG_out(kMsgWarn, "Queue not responding!!\n");
            SYS_exit(kExitQueue);
        }
    }

  private:
    struct sigaction before_ = {};
};

struct Message {
    long type = 0;
    std::array<char, kChannelRoom> text = {};
};

int connect_queue(int window)
{
    if (window <= 0) {
        return -1; // the key 0 would make a queue of one's own
    }
    const int queue = msgget(kBase + window, 0);
    return queue >= 0 ? queue : errno == ENOENT ? -1 : 0;
}

int connect_socket(int window)
{
    CHAN_close();
    const int port = kBase + window;
    if (port <= 0 || port > kMostPort) {
        return -1;
    }
    state.socket = socket(AF_INET, SOCK_STREAM, 0);
    if (state.socket < 0) {
        return 0;
    }
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = inet_addr("127.0.0.1");
    const Alarm alarm;
    if (connect(state.socket, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) {
        Alarm::check();
        CHAN_close();
        return -1;
    }
    return kSocketHandle;
}

/// The code character: the code 0 is '0'.
char code_character(int code)
{
    return static_cast<char>('0' + code);
}

int send_to_queue(int queue, int code, const std::string &text)
{
    Message message;
    message.type = kToServer;
    message.text[0] = code_character(code);
    STR_copy(message.text.data() + 1, message.text.size() - 1, text);
    const Alarm alarm;
    int result = -1;
    do {
        result = msgsnd(queue, &message, message.text.size(), 0);
        Alarm::check();
    } while (result != 0 && errno == EINTR);
    MSG_out(kMsgDebugD, "PUT:%d:%s\n", code, message.text.data() + 1);
    return result;
}

int receive_from_queue(int queue, int id, char *text)
{
    Message message;
    const Alarm alarm;
    for (int polls = 1;; polls++) {
        const ssize_t length =
            msgrcv(queue, &message, message.text.size(), id, IPC_NOWAIT | MSG_NOERROR);
        const int error = length < 0 ? errno : 0;
        MSG_out(kMsgDebugD, "GET-MSG:%d %d %d %d\n", queue, id, static_cast<int>(length), error);
        if (length > 0) {
            message.text.back() = '\0';
            message.text[static_cast<size_t>(std::min<ssize_t>(length, kChannelRoom - 1))] = '\0';
            STR_copy(text, kChannelText, message.text.data() + 1);
            MSG_out(kMsgDebugD, "GET:%s\n", text);
            return message.text[0] - '0';
        }
        if (length == 0 || (error != ENOMSG && error != EINTR)) {
            return -1;
        }
        if (polls >= kQuickPolls) {
            SYS_sleep(polls <= kShortPauses ? kShortPause : kLongPause);
        }
        Alarm::check();
    }
}

int send_to_socket(int code, const std::string &text)
{
    const size_t length = std::min<size_t>(text.size(), kChannelText - 2);
    std::string bytes;
    bytes += static_cast<char>(length + 1);
    bytes += code_character(code);
    bytes += text.substr(0, length);
    const Alarm alarm;
    const ssize_t sent = send(state.socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    Alarm::check();
    MSG_out(kMsgDebugD, "Send: %d %d %d => %s\n", state.socket, code, static_cast<int>(sent),
            text.c_str());
    return sent == static_cast<ssize_t>(bytes.size()) ? 0 : -1;
}

/// Reads so many bytes; false when the connection ends before.
bool read_socket(char *bytes, size_t count)
{
    while (count > 0) {
        const ssize_t got = recv(state.socket, bytes, count, 0);
        Alarm::check();
        if (got == 0 || (got < 0 && errno != EINTR)) {
            return false;
        }
        bytes += std::max<ssize_t>(got, 0);
        count -= static_cast<size_t>(std::max<ssize_t>(got, 0));
    }
    return true;
}

int receive_from_socket(char *text)
{
    const Alarm alarm;
    unsigned char length = 0;
    std::array<char, kChannelText> bytes = {};
    if (!read_socket(reinterpret_cast<char *>(&length), 1) || length == 0 ||
        !read_socket(bytes.data(), length)) {
        return -1;
    }
    STR_copy(text, kChannelText, std::string(bytes.data() + 1, length - 1U));
    const int code = bytes[0] - '0';
    MSG_out(kMsgDebugD, "Received: %d %d %d => %s\n", state.socket, code, static_cast<int>(length),
            text);
    return code;
}

} // namespace

void CHAN_options()
{
    for (const std::string &word : RES_list("parameter")) {
        if (STR_casecmp(word.c_str(), "qtype=sock") == 0) {
            state.by_socket = true;
        } else if (STR_casecmp(word.c_str(), "qtype=mqueue") == 0) {
            state.by_socket = false;
        } else if (STR_has_prefix(word, "to") && word.size() > 3) {
            const int seconds = std::atoi(word.c_str() + 3);
            state.timeout = seconds > 0 ? seconds : kDefaultTimeout;
        }
    }
}

int CHAN_connect(int window)
{
    return state.by_socket ? connect_socket(window) : connect_queue(window);
}

int CHAN_hello(int queue)
{
    CHAN_drain(queue, kToNewcomer);
    CHAN_send(queue, kChannelConnect, "%d", static_cast<int>(getuid()));
    std::array<char, kChannelText> text = {};
    if (CHAN_receive(queue, kToNewcomer, text.data()) != kChannelClient) {
        return -1;
    }
    const int id = std::atoi(text.data());
    if (id < kFirstClient) {
        return -1;
    }
    CHAN_drain(queue, id);
    return id;
}

int CHAN_send(int queue, int code, const char *format, ...)
{
    std::array<char, kChannelText> text = {};
    std::va_list args;
    va_start(args, format);
    std::vsnprintf(text.data(), text.size(), format, args);
    va_end(args);
    return state.by_socket ? send_to_socket(code, text.data())
                           : send_to_queue(queue, code, text.data());
}

int CHAN_receive(int queue, int id, char *text)
{
    text[0] = '\0';
    return state.by_socket ? receive_from_socket(text) : receive_from_queue(queue, id, text);
}

void CHAN_drain(int queue, int type)
{
    Message message;
    while (!state.by_socket &&
           msgrcv(queue, &message, message.text.size(), type, IPC_NOWAIT | MSG_NOERROR) >= 0) {
    }
}

void CHAN_close()
{
    if (state.socket >= 0) {
        close(state.socket);
        state.socket = -1;
    }
}
