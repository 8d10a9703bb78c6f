#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <map>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/program.h"
#include "support/temp_dir.h"
#include "tyr/base/res.h"
#include "tyr/start/channel.h"

namespace {

struct Message {
    long type = 0;
    std::array<char, kChannelRoom> text = {};
};

/// A loop window that holds some resources: answers on a queue of its own until "quit".
class LoopWindow {
  public:
    explicit LoopWindow(std::map<std::string, std::string> values = {})
        : number_(100000 + getpid()), queue_(msgget(number_, IPC_CREAT | 0600)),
          values_(std::move(values))
    {
    }
    ~LoopWindow()
    {
        msgctl(queue_, IPC_RMID, nullptr);
        if (thread_.joinable()) {
            thread_.join();
        }
    }
    LoopWindow(const LoopWindow &) = delete;
    LoopWindow &operator=(const LoopWindow &) = delete;

    bool is_there() const { return queue_ >= 0; }
    int number() const { return number_; }
    int queue() const { return queue_; }
    const std::vector<std::string> &heard() const { return heard_; }
    void serve()
    {
        thread_ = std::thread([this] { answer(); });
    }
    void wait() { thread_.join(); }

    void send(long type, int code, const std::string &text) const
    {
        Message message;
        message.type = type;
        message.text[0] = static_cast<char>('0' + code);
        std::strncpy(message.text.data() + 1, text.c_str(), message.text.size() - 2);
        msgsnd(queue_, &message, message.text.size(), 0);
    }

  private:
    void answer()
    {
        Message message;
        while (msgrcv(queue_, &message, message.text.size(), 1, MSG_NOERROR) > 0) {
            const int client = message.text[0] - '0';
            const std::string text = message.text.data() + 1;
            heard_.push_back(text);
            if (client == kChannelConnect) {
                send(2, kChannelClient, "3");
                continue;
            }
            const auto value = values_.find(text.substr(text.rfind(' ') + 1));
            if (text.rfind("query res ", 0) == 0 && value != values_.end()) {
                send(client, kChannelLine, "! a remark\n");
                send(client, kChannelLine, value->second + "\n");
            }
            send(client, 1, "");
            if (text == "quit") {
                return;
            }
        }
    }

    int number_;
    int queue_;
    std::map<std::string, std::string> values_;
    std::vector<std::string> heard_;
    std::thread thread_;
};

#define NEED_QUEUE(window)                                                                         \
    if (!(window).is_there())                                                                      \
    GTEST_SKIP() << "message queues aren't permitted here: " << std::strerror(errno)

bool was_heard(const LoopWindow &window, const std::string &text)
{
    const auto &all = window.heard();
    return std::find(all.begin(), all.end(), text) != all.end();
}

/// Runs the program on a source list.
RunResult run_with(const std::string &sources, const std::vector<std::string> &words)
{
    std::vector<std::string> all = {profiler_path(),        "-df", sources, "-fp",
                                    TYR_SOURCE_DIR "/data", "-me", "mess"};
    all.insert(all.end(), words.begin(), words.end());
    return run(all);
}

} // namespace

TEST(Channel, WindowsValuesCountAndItHearsOfTheOthers)
{
    const TempDir folder;
    const std::vector<std::string> files = make_samples(folder.file("obs"), "12", 1);
    const std::string cfg = folder.write("file.res", "*identifier: WRONG\n*title: From_the_file\n");
    LoopWindow window({{"identifier", "PLTC2"}, {"variable", "wspd"}});
    NEED_QUEUE(window);
    window.serve();
    const std::string plot = folder.file("plot.ps");
    const RunResult result = run_with(cfg + ":#" + std::to_string(window.number()),
                                      {"-va", "wbrb", "-de", "p," + plot, files.back()});
    EXPECT_EQ(result.code, 0) << result.err;
    window.wait();
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("Searching file for PLTC2"), std::string::npos) << result.out;
    EXPECT_NE(read_file(plot).find("Wind barbs"), std::string::npos) << "the command line wins";
    EXPECT_TRUE(was_heard(window, "set res title From_the_file")) << "which the window hadn't got";
    EXPECT_TRUE(was_heard(window, "set res variable wbrb")) << "as the command line has it";
    EXPECT_FALSE(was_heard(window, "set res identifier WRONG"));
    EXPECT_EQ(window.heard().front(), std::to_string(getuid()));
    EXPECT_EQ(window.heard().back(), "quit");
}

TEST(Channel, WindowsThatArentThereAreTold)
{
    const RunResult result = run_with("#99", {"-h"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "TYRloop window: 99 not running or no message queue exists\n");
    EXPECT_EQ(CHAN_connect(0), -1);
    EXPECT_EQ(CHAN_connect(-5), -1);
}

TEST(Channel, SilenceEndsTheProcess)
{
    const LoopWindow window;
    NEED_QUEUE(window);
    RES_put("parameter", "to=1");
    CHAN_options();
    EXPECT_EXIT(CHAN_hello(CHAN_connect(window.number())), ::testing::ExitedWithCode(7),
                "Queue not responding!!\n");
}

TEST(Channel, DamagedMessagesAreBounded)
{
    const LoopWindow window;
    NEED_QUEUE(window);
    const int queue = CHAN_connect(window.number());
    std::array<char, kChannelText> text = {};
    Message full;
    full.type = 5;
    full.text.fill('x'); // no end
    msgsnd(window.queue(), &full, full.text.size(), 0);
    EXPECT_EQ(CHAN_receive(queue, 5, text.data()), 'x' - '0');
    EXPECT_EQ(std::strlen(text.data()), kChannelRoom - 2U);
    msgsnd(window.queue(), &full, 0, 0);
    EXPECT_EQ(CHAN_receive(queue, 5, text.data()), -1) << "no code";
    EXPECT_STREQ(text.data(), "");
    window.send(2, kChannelClient, "1"); // ids begin at 3
    window.send(5, 0, "left over");
    CHAN_drain(queue, 5);
    EXPECT_EQ(CHAN_send(queue, 4, "%s", std::string(1000, 'y').c_str()), 0);
    Message got;
    EXPECT_EQ(msgrcv(window.queue(), &got, got.text.size(), 0, IPC_NOWAIT), kChannelRoom);
    EXPECT_EQ(got.type, 2);
    EXPECT_EQ(msgrcv(window.queue(), &got, got.text.size(), 0, IPC_NOWAIT), kChannelRoom);
    EXPECT_EQ(got.text[0], '4');
    EXPECT_EQ(std::strlen(got.text.data()), kChannelRoom - 1U);
    msgctl(window.queue(), IPC_RMID, nullptr);
    EXPECT_EQ(CHAN_receive(queue, 5, text.data()), -1);
    EXPECT_EQ(CHAN_send(queue, 4, "lost"), -1);
    EXPECT_EQ(CHAN_connect(window.number()), -1);
}

TEST(Channel, SocketsCarryTheSame)
{
    RES_put("parameter", "qtype=sock,to=2");
    CHAN_options();
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr *>(&address), size), 0);
    ASSERT_EQ(listen(listener, 1), 0);
    getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size);
    std::string heard;
    std::thread server([&] {
        const int client = accept(listener, nullptr, nullptr);
        std::array<char, 300> bytes = {};
        const ssize_t count = recv(client, bytes.data(), bytes.size(), 0);
        heard.assign(bytes.data(), static_cast<size_t>(std::max<ssize_t>(count, 0)));
        const std::string replies("\x03"
                                  "2"
                                  "17"
                                  "\x06"
                                  "0line\n"
                                  "\x01"
                                  "1"
                                  "\x09"
                                  "0cut",
                                  18);
        send(client, replies.data(), replies.size(), 0);
        close(client);
    });
    const int queue = CHAN_connect(ntohs(address.sin_port));
    EXPECT_EQ(queue, 1);
    EXPECT_EQ(CHAN_hello(queue), 17);
    server.join();
    const std::string uid = std::to_string(getuid());
    EXPECT_EQ(heard, static_cast<char>(uid.size() + 1) + ("/" + uid));
    std::array<char, kChannelText> text = {};
    EXPECT_EQ(CHAN_receive(queue, 17, text.data()), 0);
    EXPECT_STREQ(text.data(), "line\n");
    EXPECT_EQ(CHAN_receive(queue, 17, text.data()), 1);
    EXPECT_EQ(CHAN_receive(queue, 17, text.data()), -1) << "cut";
    EXPECT_EQ(CHAN_receive(queue, 17, text.data()), -1) << "closed";
    CHAN_close();
    close(listener);
    EXPECT_EQ(CHAN_connect(ntohs(address.sin_port)), -1);
}
