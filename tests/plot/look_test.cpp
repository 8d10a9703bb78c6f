#include <array>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tyr/base/str.h"
#include "tyr/start/deffile.h"

// The colours of the installation's looks, read from its own files: contrast by the Web Content
// Accessibility Guidelines 2.1 (relative luminance), lightness by CIELAB (D65), deuteranopia by
// Machado, Oliveira and Fernandes, "A physiologically-based model for simulation of color vision
// deficiency" (IEEE TVCG 15, 2009), severity 1.0, on linear sRGB.

namespace {

using Rgb = std::array<double, 3>; ///< linear
using Look = std::map<std::string, std::string>;

constexpr double kLeastContrast = 3.0;
constexpr double kEvenness = 0.1;
constexpr double kLeastDistance = 3.5; ///< of CIELAB: seen side by side

const char *const kLooks[] = {"modern", "print", "dark", "colour-blind"};

double linear(int byte)
{
    const double c = byte / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

Rgb read_colour(const std::string &word)
{
    const std::string text = word == "black" ? "#000000" : word == "white" ? "#FFFFFF" : word;
    EXPECT_EQ(text.size(), 7U) << word;
    EXPECT_EQ(text[0], '#') << word;
    Rgb rgb = {};
    for (size_t i = 0; i < 3; ++i) {
        rgb[i] = linear(std::stoi(text.substr(1 + 2 * i, 2), nullptr, 16));
    }
    return rgb;
}

double luminance(const Rgb &c)
{
    return 0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2];
}

double contrast(const Rgb &a, const Rgb &b)
{
    const double high = std::max(luminance(a), luminance(b));
    const double low = std::min(luminance(a), luminance(b));
    return (high + 0.05) / (low + 0.05);
}

std::array<double, 3> lab(const Rgb &c)
{
    const auto f = [](double t) {
        return t > 216.0 / 24389.0 ? std::cbrt(t) : (t * 24389.0 / 27.0 + 16.0) / 116.0;
    };
    const double x = f((0.4124 * c[0] + 0.3576 * c[1] + 0.1805 * c[2]) / 0.95047);
    const double y = f(luminance(c));
    const double z = f((0.0193 * c[0] + 0.1192 * c[1] + 0.9505 * c[2]) / 1.08883);
    return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

double distance(const Rgb &a, const Rgb &b)
{
    const std::array<double, 3> p = lab(a);
    const std::array<double, 3> q = lab(b);
    return std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
}

Rgb as_deuteranope(const Rgb &c)
{
    constexpr double m[3][3] = {{0.367322, 0.860646, -0.227968},
                                {0.280085, 0.672501, 0.047413},
                                {-0.011820, 0.042940, 0.968881}};
    Rgb out = {};
    for (size_t i = 0; i < 3; ++i) {
        out[i] = std::clamp(m[i][0] * c[0] + m[i][1] * c[1] + m[i][2] * c[2], 0.0, 1.0);
    }
    return out;
}

Look read_look(const std::string &word)
{
    DEF_clear();
    DEF_define(word.c_str());
    Look look;
    char name[kDefNameRoom];
    char value[kDefValueRoom];
    EXPECT_EQ(DEF_open(TYR_SOURCE_DIR "/data/tyr.cfg"), 0);
    while (DEF_get(name, value) == 1) {
        look[std::string(name).substr(std::string(name).find_last_of("*.") + 1)] = value;
    }
    DEF_clear();
    return look;
}

std::vector<Rgb> colours_of(const std::string &list)
{
    std::vector<Rgb> colours;
    for (const std::string &word : STR_fields(list, ',')) {
        colours.push_back(read_colour(word));
    }
    return colours;
}

std::vector<Rgb> read_table(const std::string &file)
{
    std::ifstream in(TYR_SOURCE_DIR "/data/" + file);
    std::vector<Rgb> colours;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string name;
        std::string colour;
        if (line[0] != '#' && words >> name >> colour) {
            colours.push_back(read_colour(colour));
        }
    }
    return colours;
}

void expect_even(const std::vector<Rgb> &ramp)
{
    ASSERT_GE(ramp.size(), 5U);
    const double whole = lab(ramp.back())[0] - lab(ramp.front())[0];
    const double mean = whole / static_cast<double>(ramp.size() - 1);
    for (size_t i = 1; i < ramp.size(); ++i) {
        const double step = lab(ramp[i])[0] - lab(ramp[i - 1])[0];
        EXPECT_NEAR(step / mean, 1.0, kEvenness) << "step " << i;
    }
}

void expect_apart(const std::vector<Rgb> &ramp)
{
    for (size_t i = 0; i < ramp.size(); ++i) {
        for (size_t k = 0; k < i; ++k) {
            EXPECT_GE(distance(ramp[i], ramp[k]), kLeastDistance) << i << " and " << k;
            EXPECT_GE(distance(as_deuteranope(ramp[i]), as_deuteranope(ramp[k])), kLeastDistance)
                << i << " and " << k << ", red and green alike";
        }
    }
}

} // namespace

TEST(Look, LinesAndTextsStandOutFromTheirBackground)
{
    for (const char *word : kLooks) {
        Look look = read_look(word);
        const bool is_light = look["look_param"].find("inv") != std::string::npos;
        const bool has_background = look.count("background") != 0;
        ASSERT_NE(is_light, has_background) << word;
        const Rgb paper = read_colour(has_background ? look["background"] : "white");
        size_t colours = 0;
        for (const auto &[name, value] : look) {
            if (name.rfind("color_", 0) != 0 || name == "color_cmap") {
                continue; // outlines over a fill have that for their background
            }
            SCOPED_TRACE(std::string(word) + " " + name);
            EXPECT_GE(contrast(read_colour(value.substr(0, value.find(':'))), paper),
                      kLeastContrast);
            ++colours;
        }
        EXPECT_GE(colours, 8U) << word;
        for (const Rgb &colour : colours_of(look["speed_colors"])) {
            EXPECT_GE(contrast(colour, paper), kLeastContrast) << word << " speed_colors";
        }
    }
}

TEST(Look, RampsAreEvenAndStayApart)
{
    for (const char *word : {"modern", "dark", "colour-blind"}) {
        SCOPED_TRACE(word);
        const std::vector<Rgb> ramp = colours_of(read_look(word)["speed_colors"]);
        expect_even(ramp);
        expect_apart(ramp);
    }
    {
        SCOPED_TRACE("even.clr");
        const std::vector<Rgb> ramp = read_table("even.clr");
        expect_even(ramp);
        expect_apart(ramp);
    }
    SCOPED_TRACE("diverge.clr");
    const std::vector<Rgb> ramp = read_table("diverge.clr");
    const auto middle = ramp.begin() + static_cast<std::ptrdiff_t>(ramp.size() / 2);
    expect_even({ramp.begin(), middle + 1});
    expect_even({middle, ramp.end()});
    expect_apart(ramp);
}

TEST(Look, AWordChoosesAndWithoutOneItIsModern)
{
    EXPECT_EQ(read_look("nothing of the sort"), read_look("modern"));
    for (const char *word : {"print", "dark", "colour-blind"}) {
        EXPECT_NE(read_look(word), read_look("modern")) << word;
    }
    const Look plain = {{"file_path", "/usr/local/tyr/etc"}};
    EXPECT_EQ(read_look("classic"), plain) << "sets nothing but where the data are";
}
