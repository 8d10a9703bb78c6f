#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <thread>

#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/temp_dir.h"
#include "tyr/start/channel.h"
#include "tyr/start/channel_server.h"

namespace {

template <class Condition> bool comes_true(const Condition &condition)
{
    for (int i = 0; i < 200; i++) {
        if (condition()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    return false;
}

struct ChannelServerTest : testing::Test {
    int number = 200000 + getpid() % 100000;
    pid_t server = CHAN_start_server({number, ""});
    int queue = CHAN_connect(number);
    int id = CHAN_hello(queue);

    ~ChannelServerTest() override { CHAN_end_server(server); }

    /// What the window answers: the lines, with "|" between them, and the code behind.
    std::string ask(const std::string &text) const
    {
        CHAN_send(queue, id, "%s", text.c_str());
        std::string answer;
        char line[kChannelText];
        int code = kChannelLine;
        while ((code = CHAN_receive(queue, id, line)) == kChannelLine) {
            answer += std::string(line) + "|";
        }
        return answer + std::to_string(code);
    }
};

/// As the client of a program that dies before it reads its answers.
[[noreturn]] void ask_and_die(int queue)
{
    const int id = CHAN_hello(queue);
    for (int i = 0; i < 200; i++) {
        CHAN_send(queue, id, "query res device");
    }
    kill(getpid(), SIGKILL);
    _exit(0);
}

} // namespace

TEST_F(ChannelServerTest, KeepsWhatItIsTold)
{
    ASSERT_GT(server, 0);
    ASSERT_GE(id, 3);
    CHAN_fix_value(number, "device", "w,,+1:2:3x4:5,new");
    CHAN_set_value(number, "title", "Two words");
    const std::string most(90, 'x');
    const struct {
        std::string text, answer;
    } exchanges[] = {
        {"query res level", "1"},
        {"set res level 3000m", "1"},
        {"query res level", "3000m\n|1"},
        {"query res title", "Two words\n|1"},
        {"set res title A B  C", "1"},
        {"query res title", "A B  C\n|1"},
        {"set res device p,x.ps", "1"},
        {"query res device", "w,,+1:2:3x4:5,new\n|1"},
        {"set res level ", "1"},
        {"query res level", "1"},
        {"set res label " + most, "1"},
        {"query res label", most + "\n|1"},
        {"set res label " + most + most, "1"}, // it comes cut
        {"query res label", "1"},
        {"what?", "1"},
        {"set", "1"},
        {"", "1"},
        {"quit", "1"},
    };
    for (const auto &exchange : exchanges) {
        SCOPED_TRACE(exchange.text);
        EXPECT_EQ(ask(exchange.text), exchange.answer);
    }
}

TEST_F(ChannelServerTest, ClientThatDiesLeavesRoomForTheNext)
{
    ask("quit");
    const pid_t client = fork();
    if (client == 0) {
        ask_and_die(queue);
    }
    waitpid(client, nullptr, 0);
    id = CHAN_hello(queue);
    for (int i = 0; i < 60; i++) { // all questions go first
        CHAN_send(queue, id, "query res level");
    }
    char line[kChannelText];
    for (int i = 0; i < 60; i++) {
        ASSERT_EQ(CHAN_receive(queue, id, line), 1) << i;
    }
    EXPECT_EQ(ask("quit"), "1");
    msqid_ds about = {};
    EXPECT_TRUE(comes_true([&] {
        return msgctl(queue, IPC_STAT, &about) == 0 && about.msg_qnum == 0;
    })) << about.msg_qnum
        << " messages that nobody reads";
}

TEST(ChannelServer, EndsWithItsProcess)
{
    const TempDir dir;
    const std::string file = dir.write("tyrloop.7", "+1:2:3x4:5\n");
    const int number = 300000 + getpid() % 100000;
    const pid_t parent = fork();
    if (parent == 0) {
        CHAN_start_server({number, file});
        pause();
        _exit(0);
    }
    ASSERT_TRUE(comes_true([&] { return msgget(number, 0) >= 0; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    EXPECT_TRUE(
        comes_true([&] { return msgget(number, 0) < 0 && !std::filesystem::exists(file); }));
}

TEST(ChannelServer, NumbersCountFromOne)
{
    EXPECT_EQ(CHAN_start_server({0, ""}), -1);
}
