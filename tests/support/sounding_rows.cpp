#include "support/sounding_rows.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tyr/base/missing.h"

namespace {

constexpr size_t kWyomingWidth = 7;

float number(const std::string &text)
{
    char *end = nullptr;
    const float x = std::strtof(text.c_str(), &end);
    return end == text.c_str() || x <= kMissing ? kMissing : x;
}

std::array<float, 6> by_commas(const std::string &line)
{
    std::array<float, 6> x{};
    x.fill(kMissing);
    std::istringstream in(line);
    std::string word;
    for (float &value : x)
        if (std::getline(in, word, ','))
            value = number(word);
    return x;
}

std::array<float, 6> by_columns(const std::string &line)
{
    constexpr std::array<size_t, 6> kColumns = {0, 1, 2, 3, 6, 7};
    std::array<float, 6> x{};
    x.fill(kMissing);
    for (size_t i = 0; i < x.size(); ++i)
        if (line.size() >= (kColumns[i] + 1) * kWyomingWidth)
            x[i] = number(line.substr(kColumns[i] * kWyomingWidth, kWyomingWidth));
    return x;
}

} // namespace

std::vector<SoundLevel> read_sounding_rows(const std::string &path)
{
    std::vector<SoundLevel> levels;
    std::ifstream in(path);
    std::string line;
    bool ended = false;
    while (!ended && std::getline(in, line)) {
        const bool is_spc = std::count(line.begin(), line.end(), ',') == 5;
        const std::array<float, 6> x = is_spc ? by_commas(line) : by_columns(line);
        if (x[0] > 0.0F && x[1] > -500.0F)
            levels.push_back({x[0], x[1], x[2], x[3], x[4], x[5]});
        ended = line.rfind("%END%", 0) == 0 || line.rfind("</PRE>", 0) == 0;
    }
    return levels;
}
