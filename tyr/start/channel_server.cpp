#include "tyr/start/channel_server.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <ctime>
#include <deque>
#include <map>

#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/prctl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/start/channel.h"

using namespace tyr;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kQueueMode = 0600;
constexpr long kToServer = 1; ///< types of messages
constexpr long kToNewcomer = 2;
constexpr int kFirstClient = 3;
constexpr int kLastClient = 70; ///< its code is still a printable character
constexpr int kNoClient = 0;    ///< the loop window itself, which wants no answer
constexpr int kEnd = 1;         ///< code that ends a reply
constexpr size_t kLongestText = kChannelRoom - 2;
constexpr std::chrono::seconds kLongestSilence{25}; ///< a client itself waits for 20
constexpr std::chrono::seconds kShortSilence{3};    ///< then its process is looked for
constexpr int kTick = 2;                            ///< s between looks for clients that are gone
constexpr timespec kShortPause = {0, 5'000'000};

struct Message {
    long type = 0;
    std::array<char, kChannelRoom> text = {};
};

struct Client {
    Clock::time_point heard;
    std::deque<Message> replies; ///< not in the queue yet
    pid_t process = 0;           ///< who sent last when it asked for its number

    bool has_died() const { return process > 0 && kill(process, 0) != 0 && errno == ESRCH; }
};

// for the signal handler
int the_queue = -1;
char the_file[4096] = "";

void tidy_up(int)
{
    msgctl(the_queue, IPC_RMID, nullptr);
    if (the_file[0] != '\0') {
        unlink(the_file);
    }
    _exit(0);
}

void wake_up(int) {}

class Server {
  public:
    explicit Server(int queue) : queue_(queue) {}

    [[noreturn]] void run()
    {
        for (;;) {
            take_all();
            forget_the_gone();
            send_replies();
            const bool has_replies =
                std::any_of(clients_.begin(), clients_.end(),
                            [](const auto &client) { return !client.second.replies.empty(); });
            if (has_replies) {
                nanosleep(&kShortPause, nullptr); // until the readers have made room
            } else {
                take(0);
            }
        }
    }

  private:
    void take_all()
    {
        while (take(IPC_NOWAIT)) {
        }
    }

    bool take(int flag)
    {
        Message message;
        const ssize_t length =
            msgrcv(queue_, &message, message.text.size(), kToServer, flag | MSG_NOERROR);
        if (length < 0 && errno != ENOMSG && errno != EINTR) {
            tidy_up(0); // the queue is gone
        }
        if (length < 1) {
            return false;
        }
        message.text.back() = '\0';
        const int code = static_cast<unsigned char>(message.text[0]) - '0';
        const std::string text = message.text.data() + 1;
        if (code == kChannelConnect) {
            welcome();
        } else if (code == kNoClient || clients_.count(code) != 0) {
            answer(code, text);
        }
        return true;
    }

    void welcome()
    {
        msqid_ds about = {};
        msgctl(queue_, IPC_STAT, &about); // a newcomer waits for its number and sends nothing more
        const int id = next_;
        next_ = next_ == kLastClient ? kFirstClient : next_ + 1;
        drain(id);
        clients_[id] = Client{Clock::now(), {}, about.msg_lspid};
        queue_reply(id, kToNewcomer, kChannelClient, std::to_string(id));
    }

    void answer(int id, const std::string &text)
    {
        const std::vector<std::string> words = STR_fields(text, ' ');
        const auto word = [&](size_t i) { return i < words.size() ? words[i] : std::string(); };
        if (word(0) == "query" && word(1) == "res") {
            const auto found = values_.find(word(2));
            if (found != values_.end()) {
                queue_reply(id, id, kChannelLine, found->second + "\n");
            }
        } else if ((word(0) == "set" || word(0) == "fix") && word(1) == "res") {
            const size_t head = word(0).size() + 5 + word(2).size() + 1;
            set(word(2), text.size() > head ? text.substr(head) : "", word(0) == "fix",
                text.size() >= kLongestText);
        }
        if (id == kNoClient) {
            return;
        }
        queue_reply(id, id, kEnd, "");
        clients_[id].heard = Clock::now();
        if (word(0) == "quit") {
            leaving_[id] = true;
        }
    }

    /// A value that came cut is none.
    void set(const std::string &name, const std::string &value, bool is_fixed, bool is_cut)
    {
        if (fixed_[name] && !is_fixed) {
            return;
        }
        fixed_[name] = is_fixed;
        if (value.empty() || is_cut || value.size() + 1 > kLongestText) {
            values_.erase(name);
        } else {
            values_[name] = value;
        }
    }

    void queue_reply(int id, long type, int code, const std::string &text)
    {
        if (id == kNoClient) {
            return;
        }
        Message message;
        message.type = type;
        message.text[0] = static_cast<char>('0' + code);
        STR_copy(message.text.data() + 1, message.text.size() - 1, text);
        clients_[id].replies.push_back(message);
    }

    /// Replies take half of the queue at most: a client that still asks never waits for itself.
    bool has_room() const
    {
        msqid_ds about = {};
        return msgctl(queue_, IPC_STAT, &about) == 0 &&
               about.__msg_cbytes + kChannelRoom <= about.msg_qbytes / 2;
    }

    void send_replies()
    {
        for (auto &[id, client] : clients_) {
            while (!client.replies.empty() && has_room() &&
                   msgsnd(queue_, &client.replies.front(), kChannelRoom, IPC_NOWAIT) == 0) {
                client.replies.pop_front();
            }
        }
        std::erase_if(leaving_, [&](const auto &one) {
            const bool is_done = clients_[one.first].replies.empty();
            if (is_done) {
                clients_.erase(one.first);
            }
            return is_done;
        });
    }

    /// Takes what nobody reads out of the queue.
    void drain(long type) const
    {
        Message message;
        while (msgrcv(queue_, &message, message.text.size(), type, IPC_NOWAIT | MSG_NOERROR) >= 0) {
        }
    }

    void forget_the_gone()
    {
        std::erase_if(clients_, [&](const auto &client) {
            const auto silence = Clock::now() - client.second.heard;
            if (silence < kShortSilence ||
                (silence < kLongestSilence && !client.second.has_died())) {
                return false;
            }
            MSG_out(kMsgWarn, "A program that asked for its resources has gone: client %d\n",
                    client.first);
            drain(client.first);
            leaving_.erase(client.first);
            return true;
        });
    }

    int queue_;
    int next_ = kFirstClient;
    std::map<int, Client> clients_;
    std::map<int, bool> leaving_;
    std::map<std::string, std::string> values_;
    std::map<std::string, bool> fixed_;
};

int make_queue(int window)
{
    const int old = window > 0 ? msgget(window, 0) : -1;
    if (old >= 0) {
        msgctl(old, IPC_RMID, nullptr);
    }
    return window > 0 ? msgget(window, IPC_CREAT | IPC_EXCL | kQueueMode) : -1;
}

void handle(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler; // without SA_RESTART
    sigaction(signal, &action, nullptr);
}

[[noreturn]] void serve(int queue, const std::string &file, pid_t parent)
{
    the_queue = queue;
    STR_copy(the_file, sizeof the_file, file);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        handle(signal, tidy_up);
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) {
        tidy_up(0);
    }
    handle(SIGALRM, wake_up);
    const itimerval ticks = {
        {kTick, 0},
        {kTick, 0}
    };
    setitimer(ITIMER_REAL, &ticks, nullptr);
    Server(queue).run();
}

int tell(int window, const char *command, const std::string &name, const std::string &value)
{
    const int queue = CHAN_connect(window);
    return queue < 0
               ? -1
               : CHAN_send(queue, kNoClient, "%s res %s %s", command, name.c_str(), value.c_str());
}

} // namespace

pid_t CHAN_start_server(const ChannelServer &server)
{
    const int queue = make_queue(server.window);
    if (queue < 0) {
        MSG_out(kMsgError, "Can't make the message queue of window %d: %s\n", server.window,
                server.window > 0 ? std::strerror(errno) : "numbers count from 1");
        return -1;
    }
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
        serve(queue, server.id_file, parent);
    }
    if (process < 0) {
        msgctl(queue, IPC_RMID, nullptr);
        MSG_out(kMsgError, "Can't start the server of window %d: %s\n", server.window,
                std::strerror(errno));
    }
    return process;
}

void CHAN_end_server(pid_t process)
{
    if (process > 0) {
        kill(process, SIGTERM);
        waitpid(process, nullptr, 0);
    }
}

int CHAN_set_value(int window, const std::string &name, const std::string &value)
{
    return tell(window, "set", name, value);
}

int CHAN_fix_value(int window, const std::string &name, const std::string &value)
{
    return tell(window, "fix", name, value);
}
