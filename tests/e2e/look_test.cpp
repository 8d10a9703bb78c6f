// What an installation's looks draw: where texts stand, what a word changes.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/temp_dir.h"

namespace {

constexpr const char *kData = TYR_SOURCE_DIR "/data";

/// A text of an SVG and its box, points; y down.
struct Placed {
    std::string text;
    double left, right, top, bottom;
};

/// The texts that can be searched; half of a size stands for what glyphs have below their line.
std::vector<Placed> read_texts(const std::string &svg)
{
    std::vector<Placed> texts;
    for (size_t at = svg.find("<text "); at != std::string::npos; at = svg.find("<text ", at + 1)) {
        double x = 0.0;
        double y = 0.0;
        double size = 0.0;
        double length = 0.0;
        if (std::sscanf(svg.c_str() + at,
                        "<text transform=\"translate(%lf,%lf) rotate(%*f)\" font-size=\"%lf\" "
                        "textLength=\"%lf\"",
                        &x, &y, &size, &length) == 4) {
            const size_t begin = svg.find('>', at) + 1;
            texts.push_back({svg.substr(begin, svg.find('<', begin) - begin), x, x + length,
                             y - 0.6 * size, y});
        }
    }
    return texts;
}

bool overlap(const Placed &a, const Placed &b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

class Looks : public testing::Test {
  protected:
    /// A section in SVG by the resource files of a list.
    std::string draw(const std::string &sources, const std::vector<std::string> &words)
    {
        std::vector<std::string> all = {profiler_path(), "-df", sources,
                                        "-fp",           kData, "-id",
                                        "PLTC2",         "-de", "i," + dir_.file("a.svg")};
        all.insert(all.end(), words.begin(), words.end());
        all.insert(all.end(), files_.begin(), files_.end());
        const RunResult result = run(all);
        EXPECT_EQ(result.code, 0) << result.err;
        return read_file(dir_.file("a.svg"));
    }

    TempDir dir_;
    std::vector<std::string> files_ = make_samples(dir_.file("data"), "12");
};

TEST_F(Looks, NothingStandsOverTheHours)
{
    const std::vector<std::string> labels = {"", "ll:lower_left",
                                             "lc:lower_centre,lr:at_the_right"};
    for (const char *look : {"modern", "print", "dark", "colour-blind"}) {
        for (const std::string &label : labels) {
            for (const char *variable : {"wbrb", "wspdms"}) {
                SCOPED_TRACE(std::string(look) + " " + label + " " + variable);
                std::vector<std::string> words = {"-va", variable};
                if (!label.empty()) {
                    words.insert(words.end(), {"-la", label});
                }
                const std::vector<Placed> texts =
                    read_texts(draw(std::string("+") + look + ":" + kData, words));
                size_t hours = 0;
                for (const Placed &hour : texts) {
                    if (hour.text.size() != 2 ||
                        hour.text.find_first_not_of("0123456789") != std::string::npos) {
                        continue;
                    }
                    for (const Placed &other : texts) {
                        EXPECT_TRUE(&hour == &other || !overlap(hour, other))
                            << hour.text << " and " << other.text;
                    }
                    ++hours;
                }
                EXPECT_GE(hours, 13U);
                EXPECT_EQ(label.empty(),
                          texts.end() == std::find_if(texts.begin(), texts.end(), [](auto &t) {
                              return t.text.rfind("lower", 0) == 0;
                          }));
            }
        }
    }
}

TEST_F(Looks, TheStationIsNamedAndTheBarStandsForSpeedsAlone)
{
    const std::string list = std::string("+modern:") + kData;
    const std::string speeds = draw(list, {"-va", "wbrb"});
    EXPECT_NE(speeds.find(">Platteville 1524 m</text>"), std::string::npos);
    EXPECT_NE(speeds.find(">hours in UTC</text>"), std::string::npos);
    EXPECT_NE(speeds.find(">135</text>"), std::string::npos) << "the bar's last level";
    const std::string metric = draw(list, {"-va", "wspdms"});
    EXPECT_NE(metric.find(">67.5</text>"), std::string::npos) << "half the step of knots";
    EXPECT_EQ(draw(list, {"-va", "wdir"}).find(">135</text>"), std::string::npos);
    EXPECT_EQ(draw(list, {"-va", "wbrb", "-pp", "nobar"}).find(">135</text>"), std::string::npos);
}

TEST_F(Looks, ClassicIsWhatStandsWithoutAFile)
{
    EXPECT_EQ(draw(std::string("+classic:") + kData, {"-va", "wbrb"}),
              draw(dir_.file("absent"), {"-va", "wbrb"}));
}

TEST_F(Looks, AWordAloneReadsTheUsualFiles)
{
    dir_.write("here/tyr.cfg", "IF special\n*label: uc:a_word\nEND\n");
    for (const bool has_word : {false, true}) {
        std::vector<std::string> words = {
            profiler_path(),           "-fp",    kData, "-id", "PLTC2", "-va", "wbrb", "-de",
            "i," + dir_.file("w.svg"), files_[0]};
        if (has_word) {
            words.insert(words.end(), {"-df", "+special"});
        }
        const RunResult result = run(words, {.folder = dir_.file("here")});
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(read_file(dir_.file("w.svg")).find(">a word</text>") != std::string::npos,
                  has_word);
    }
}

TEST_F(Looks, SurfaceVariablesAreOfferedOnMapsAlone)
{
    for (const bool is_map : {false, true}) {
        std::vector<std::string> words = {profiler_path(), "-df", dir_.file("absent"),
                                          "-fp",           kData, "-me",
                                          "mess",          "-de", "i," + dir_.file("b.svg")};
        words.insert(words.end(), {is_map ? "-le" : "-id", is_map ? "3000m" : "PLTC2", files_[0]});
        const RunResult result = run(words, {.input = "wbrb\n"});
        EXPECT_EQ(result.out.find("Surface temperature") != std::string::npos, is_map);
        EXPECT_NE(result.out.find("Wind direction"), std::string::npos);
    }
}

} // namespace
