// Each exit code of the man page's table is what the program gives.

#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>

#include <sys/ipc.h>
#include <sys/msg.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/screen.h"
#include "support/temp_dir.h"

namespace {

/// The codes of the table under a heading: rows "| `7` | A loop window ... |".
std::set<int> codes_of_table(const std::string &page)
{
    std::set<int> codes;
    std::istringstream in(page.substr(page.find("# EXIT STATUS")));
    for (std::string line; std::getline(in, line) && line != "# FILES";) {
        if (line.rfind("| `", 0) == 0) {
            codes.insert(std::atoi(line.c_str() + 3));
        }
    }
    return codes;
}

/// A message queue that nobody reads.
class DeafQueue {
  public:
    DeafQueue() : id_(msgget(key(), IPC_CREAT | 0600)) {}
    ~DeafQueue()
    {
        if (is_there()) {
            msgctl(id_, IPC_RMID, nullptr);
        }
    }
    DeafQueue(const DeafQueue &) = delete;
    DeafQueue &operator=(const DeafQueue &) = delete;

    bool is_there() const { return id_ >= 0; }
    static int key() { return 20000 + static_cast<int>(getpid() % 10000); }

  private:
    int id_;
};

struct ExitCodes : testing::Test {
    TempDir dir;
    std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    std::set<int> seen;

    void expect(int code, const RunResult &result)
    {
        EXPECT_EQ(result.code, code) << result.out << result.err;
        seen.insert(code);
    }
    /// A section of the sample station, with more words.
    std::vector<std::string> section(const std::vector<std::string> &more) const
    {
        std::vector<std::string> words = {"-va", "wbrb", "-id", "PLTC2"};
        words.insert(words.end(), more.begin(), more.end());
        words.push_back(files[0]);
        return words;
    }
    std::string device(const std::string &name) const { return "p," + dir.file(name); }
    void ask_a_deaf_window();
    void let_no_process_start();
};

void ExitCodes::ask_a_deaf_window()
{
    const DeafQueue queue;
    if (!queue.is_there()) {
        seen.insert(7); // no message queues here
        return;
    }
    std::string command = profiler_path() + " -df '#" + std::to_string(DeafQueue::key()) + "'";
    for (const std::string &word : section({"-de", device("q.ps")})) {
        command += " '" + word + "'";
    }
    // it waits 20 seconds for its alarm, which rings earlier here
    command += " & p=$!; sleep 0.5; kill -ALRM $p; wait $p";
    const RunResult result = run({"bash", "-c", command});
    EXPECT_NE(result.err.find("Queue not responding!!"), std::string::npos) << result.err;
    expect(7, result);
}

/// A batch run of a user who may have no further process.
void ExitCodes::let_no_process_start()
{
    if (geteuid() != 0 || !have_program("setpriv")) {
        seen.insert(1); // only the superuser can be another one
        return;
    }
    namespace fs = std::filesystem;
    fs::permissions(dir.path(), fs::perms::all);
    fs::permissions(dir.file("data"), fs::perms::all);
    std::string command = "ulimit -u 0; exec " + profiler_path() + " -ba -df /nonexistent -fp " +
                          TYR_SOURCE_DIR "/data";
    for (const std::string &word : section({"-de", device("b.ps")})) {
        command += " '" + word + "'";
    }
    // bash rather than sh: not every sh has the limit of processes
    expect(1, run({"setpriv", "--reuid=65534", "--clear-groups", "bash", "-c", command}));
}

TEST_F(ExitCodes, AreThoseOfTheTable)
{
    const struct {
        int code;
        std::vector<std::string> words;
    } cases[] = {
        {0, section({"-de", device("a.ps")})},
        {0, {"-h"}},
        {4, section({"-de", "p,/proc/no/x.ps"})},
        {10, {"-ba", "-dp", dir.file("none"), "-id", "X"}},
        {11, {"-va", "wbrb", "-id", "XXXX", "-de", device("b.ps"), files[0]}},
        {13, section({})},
        {31, {"-ba", files[0]}},
        {43, section({"-le", "3000", "-re", "nowhere", "-de", device("c.ps")})},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.code);
        expect(c.code, run_profiler(c.words));
    }
    if (const VirtualScreen screen; screen.is_there()) {
        expect(12, run_profiler(section({"-de", "d", "-pp", "png=/proc/no/x.png"}),
                                {.env = {"DISPLAY=" + screen.name()}}));
    } else {
        seen.insert(12); // no window, no picture of it
    }
    ask_a_deaf_window();
    let_no_process_start();
    EXPECT_EQ(seen, codes_of_table(read_file(TYR_SOURCE_DIR "/docs/manual/profiler.1.md")));
}

} // namespace
