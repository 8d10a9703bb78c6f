#include "support/program.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>

#include "support/temp_dir.h"

RunResult run_profiler(const std::vector<std::string> &words, const RunOptions &options)
{
    return run_program("profiler", words, options);
}

RunResult run_program(const std::string &name, const std::vector<std::string> &words,
                      const RunOptions &options)
{
    std::vector<std::string> all = {TYR_BINARY_DIR "/bin/" + name, "-df", "/nonexistent", "-fp",
                                    TYR_SOURCE_DIR "/data"};
    all.insert(all.end(), words.begin(), words.end());
    return run(all, options);
}

std::vector<std::string> make_samples(const std::string &folder, const std::string &layout,
                                      int hours)
{
    run({TYR_BINARY_DIR "/bin/make_samples", folder, "--layout", layout, "--hours",
         std::to_string(hours)});
    std::vector<std::string> paths;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

bool wait_for_end(const std::string &path, const std::string &end)
{
    for (int tries = 0; tries < 200; ++tries) {
        const std::string text = read_file(path);
        if (text.size() >= end.size() &&
            text.compare(text.size() - end.size(), end.size(), end) == 0) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    return false;
}
