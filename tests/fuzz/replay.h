#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/temp_dir.h"

/// A fuzz target: bytes in, 0 out.
using FuzzTarget = int (*)(const uint8_t *data, size_t size);

/// The seeds and findings of tests/fuzz/corpus/<name>, in the order of their names.
inline std::vector<std::string> fuzz_corpus(const std::string &name)
{
    std::vector<std::string> paths;
    const std::string folder = std::string(TYR_SOURCE_DIR) + "/tests/fuzz/corpus/" + name;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> seeds;
    for (const std::string &path : paths)
        seeds.push_back(read_file(path));
    return seeds;
}

/// One deterministic damage: some bytes changed, taken out, doubled or put in from another place.
inline std::string fuzz_damage(std::string text, std::mt19937 &random)
{
    const auto below = [&random](size_t n) { return n == 0 ? 0 : random() % n; };
    for (size_t changes = 1 + below(4); changes > 0; --changes) {
        const size_t place = below(text.size());
        const size_t length = below(1 + text.size() - place);
        switch (below(5)) {
        case 0:
            if (!text.empty())
                text[place] = static_cast<char>(random());
            break;
        case 1:
            text.erase(place, length);
            break;
        case 2:
            text.insert(place, text.substr(place, length));
            break;
        case 3:
            text.insert(place, 1, "()[]{}<>,:\\-+%0123456789"[below(24)]);
            break;
        default:
            text.insert(below(text.size()), text.substr(place, length));
            break;
        }
    }
    return text;
}

/// Runs a target over each seed and so many damages of it. Returns the number of runs.
inline int fuzz_replay(FuzzTarget target, const std::string &name, int damages)
{
    std::mt19937 random(20261122U);
    const auto run = [target](const std::string &text) {
        target(reinterpret_cast<const uint8_t *>(text.data()), text.size());
    };
    int runs = 0;
    for (const std::string &seed : fuzz_corpus(name)) {
        run(seed);
        std::string damaged = seed;
        for (int i = 0; i < damages; ++i) {
            damaged = fuzz_damage(i % 8 == 0 ? seed : damaged, random); // damages pile up
            run(damaged.substr(0, 3 * seed.size() + 100));
        }
        runs += 1 + damages;
    }
    return runs;
}
