// The picture device: the same picture as PostScript, in each of its forms.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/temp_dir.h"

namespace {

constexpr int kDpi = 144;     ///< the margins are whole pixels
constexpr int kFineDpi = 288; ///< the thinnest lines are a pixel wide: below, readers differ
constexpr int kLevels = 64;

/// Grey levels of a picture, by rows; empty where it can't be read.
struct Grey {
    size_t width = 0, height = 0;
    std::string levels;

    int at(size_t x, size_t y) const { return static_cast<unsigned char>(levels[y * width + x]); }
};

Grey read_grey(const std::string &path)
{
    Grey grey;
    const RunResult size = run({"identify", "-format", "%w %h", path});
    const RunResult pixels = run({"convert", path, "-background", "white", "-flatten",
                                  "-colorspace", "Gray", "-depth", "8", "gray:-"});
    if (std::sscanf(size.out.c_str(), "%zu %zu", &grey.width, &grey.height) == 2) {
        grey.levels = pixels.out;
    }
    return grey.levels.size() == grey.width * grey.height ? grey : Grey{};
}

/// Percent of pixels that no pixel within one step of the other picture comes near to.
double differing(const Grey &a, const Grey &b)
{
    if (a.levels.empty() || a.width != b.width || a.height != b.height) {
        return 100.0;
    }
    size_t bad = 0;
    for (size_t y = 0; y < a.height; ++y) {
        for (size_t x = 0; x < a.width; ++x) {
            int low = 255;
            int high = 0;
            for (size_t v = y - (y > 0); v <= std::min(y + 1, b.height - 1); ++v) {
                for (size_t u = x - (x > 0); u <= std::min(x + 1, b.width - 1); ++u) {
                    low = std::min(low, b.at(u, v));
                    high = std::max(high, b.at(u, v));
                }
            }
            bad += a.at(x, y) < low - kLevels || a.at(x, y) > high + kLevels ? 1U : 0U;
        }
    }
    return 100.0 * static_cast<double>(bad) / static_cast<double>(a.width * a.height);
}

struct PlotCase {
    const char *name;
    std::vector<std::string> words; ///< of profiler; none: the page of every primitive
    const char *device = "";        ///< further words
    bool is_vector = false;         ///< SVG and PDF are looked at, too
};

class Pictures : public testing::Test {
  protected:
    void SetUp() override
    {
        for (const char *program : {"gs", "convert", "identify", "rsvg-convert", "pdftoppm"}) {
            if (!have_program(program)) {
                GTEST_SKIP() << program << " isn't installed";
            }
        }
    }

    void draw(const PlotCase &plot, const std::string &device)
    {
        std::vector<std::string> words = {TYR_BINARY_DIR "/bin/test_page", device,
                                          TYR_SOURCE_DIR "/data"};
        if (!plot.words.empty()) {
            words = {profiler_path(), "-df",  "/nonexistent", "-fp", TYR_SOURCE_DIR "/data",
                     "-me",           "warn", "-de",          device};
            words.insert(words.end(), plot.words.begin(), plot.words.end());
            words.insert(words.end(), samples_.begin(), samples_.end());
        }
        const RunResult result = run(words, {.folder = folder_.path()});
        EXPECT_EQ(result.code, 0) << result.err;
    }

    /// A picture file as other programs have it.
    Grey rendered(const std::string &name, int resolution)
    {
        const std::string in = folder_.file(name);
        const std::string out = folder_.file(name + ".png");
        const std::string dpi = std::to_string(resolution);
        if (name.ends_with(".ps")) {
            run({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=png16m", "-dTextAlphaBits=4",
                 "-dGraphicsAlphaBits=4", "-r" + dpi, "-dDEVICEWIDTHPOINTS=792",
                 "-dDEVICEHEIGHTPOINTS=612", "-dFIXEDMEDIA", "-sOutputFile=" + out, in});
        } else if (name.ends_with(".svg")) {
            run({"rsvg-convert", "-d", dpi, "-p", dpi, in, "-o", out});
        } else if (name.ends_with(".pdf")) {
            run({"pdftoppm", "-thinlinemode", "solid", "-r", dpi, "-png", "-singlefile", in,
                 folder_.file(name)});
        } else {
            return read_grey(in);
        }
        return read_grey(out);
    }

    void expect_same(const char *name, int dpi)
    {
        SCOPED_TRACE(name);
        const Grey expected = rendered("a.ps", dpi);
        const Grey seen = rendered(name, dpi);
        EXPECT_LT(differing(expected, seen), 0.1);
        EXPECT_LT(differing(seen, expected), 0.1);
    }

    TempDir samples_folder_;
    TempDir folder_;
    std::vector<std::string> samples_ = make_samples(samples_folder_.path());
};

TEST_F(Pictures, AreThoseOfPostScript)
{
    const std::vector<std::string> section = {"-id", "PLTC2", "-va", "wbrb"};
    const auto map = [](const char *domain) {
        return std::vector<std::string>{"-le", "5000", "-va", "wbrb", "-pd", domain};
    };
    const PlotCase plots[] = {
        {"every primitive", {}, "", true},
        {"every primitive, grey", {}, ",gray"},
        {"every primitive, half size and wide lines", {}, ",scale0.5,lwidth3"},
        {"section", section, "", true},
        {"section, grey", section, ",gray"},
        {"section of numbers", {"-id", "PLTC2", "-va", "wspd"}},
        {"polar stereographic", map("ps,40,-100,25,17")},
        {"Lambert", map("lc,-97,40,-100,31,21,1.5,1.5"), "", true},
        {"Mercator", map("merc,40,-100,31,21,1.5,1.5")},
        {"latitude and longitude", map("ll,40,-100,31,21,2,2")},
        {"orthographic", map("ortho,40,-100,61,41,2,2")},
        {"Mollweide", map("moll,40,-100,61,41,2,2")},
    };
    for (const PlotCase &plot : plots) {
        SCOPED_TRACE(plot.name);
        const std::string words = plot.device;
        const bool is_grey = words.starts_with(",gray");
        draw(plot, "p,a.ps,port" + (is_grey ? words : ",color" + words));
        draw(plot, "i,a.png,dpi=" + std::to_string(kDpi) + words);
        expect_same("a.png", kDpi);
        if (plot.is_vector) {
            for (const char *name : {"a.svg", "a.pdf"}) {
                draw(plot, std::string("i,") + name + words);
                expect_same(name, kFineDpi);
            }
        }
    }
}

TEST_F(Pictures, TextCanBeFound)
{
    const PlotCase plot = {"", {"-id", "PLTC2", "-va", "wbrb", "-ti", "A < B & C"}};
    draw(plot, "i,a.pdf");
    draw(plot, "i,a.svg");
    const std::string svg = read_file(folder_.file("a.svg"));
    if (have_program("pdftotext")) {
        const std::string text = run({"pdftotext", folder_.file("a.pdf"), "-"}).out;
        EXPECT_NE(text.find("ID: PLTC2 - Wind barbs (knt)"), std::string::npos) << text;
        EXPECT_NE(text.find("16000"), std::string::npos) << text;
    }
    EXPECT_NE(svg.find(">ID: PLTC2 - Wind barbs (knt)</text>"), std::string::npos);
    EXPECT_EQ(run({"xmllint", "--noout", folder_.file("a.svg")}).code, 0);
}

TEST_F(Pictures, TakeTheirWords)
{
    struct WordCase {
        const char *device;
        const char *file;
        const char *size;
    };
    const WordCase cases[] = {
        {"i,a.png", "a.png", "1210 935"},
        {"I,A.PNG,dpi=72", "A.PNG", "792 612"},
        {"i,a.png,dpi=100,sz=6x4", "a.png", "600 400"},
        {"i,a.png,dpi=100,sz=6x4,port", "a.png", "400 600"},
        {"i,a.png,dpi=100,a4", "a.png", "1169 826"},
        {"i,f%03d.png,dpi=72", "f001.png", "792 612"},
        {"i,a.png,dpi=72,nonsense", "a.png", "792 612"},
    };
    const PlotCase plot = {"", {"-id", "PLTC2", "-va", "wbrb"}};
    for (const WordCase &c : cases) {
        SCOPED_TRACE(c.device);
        draw(plot, c.device);
        EXPECT_EQ(run({"identify", "-format", "%w %h", folder_.file(c.file)}).out, c.size);
    }
    draw(plot, "i,clear.png,bg=none");
    EXPECT_NE(run({"identify", "-format", "%A", folder_.file("clear.png")}).out.find("True"),
              std::string::npos);
    draw(plot, "i,red.png,bg=#FF0000");
    EXPECT_EQ(
        run({"convert", folder_.file("red.png"), "-crop", "1x1+2+2", "-depth", "8", "rgb:-"}).out,
        std::string("\xFF\0\0", 3));
}

TEST_F(Pictures, TellWhatTheyCantDo)
{
    struct BadCase {
        const char *device;
        int code;
        const char *told;
    };
    const BadCase cases[] = {
        {"i,a.gif", 4, "no ending .png, .svg or .pdf: a.gif"},
        {"i,a.png,dpi=2400,sz=100x100", 4, "more than 30000 pixels"},
        {"i,/proc/none/a.png", 4, "unable to write: /proc/none/a.png: No such file"},
        {"i,a.png,dpi=0", 0, "dpi=0: no word of a picture"},
    };
    for (const BadCase &c : cases) {
        SCOPED_TRACE(c.device);
        std::vector<std::string> words = {
            profiler_path(), "-df",  "/nonexistent", "-fp",    TYR_SOURCE_DIR "/data",
            "-me",           "warn", "-de",          c.device, "-id",
            "PLTC2",         "-va",  "wbrb"};
        words.insert(words.end(), samples_.begin(), samples_.end());
        const RunResult result = run(words, {.folder = folder_.path()});
        EXPECT_EQ(result.code, c.code);
        EXPECT_NE(result.err.find(c.told), std::string::npos) << result.err;
    }
}

TEST_F(Pictures, ADumpWithoutADisplayIsDrawn)
{
    std::vector<std::string> words = {
        profiler_path(), "-df", "/nonexistent", "-fp", TYR_SOURCE_DIR "/data", "-id",
        "PLTC2",         "-va", "wbrb",         "-pp", "png=dump.png"};
    words.insert(words.end(), samples_.begin(), samples_.end());
    const RunResult result = run(words, {.folder = folder_.path()});
    EXPECT_EQ(result.code, 0) << result.err;
    draw({"", {"-id", "PLTC2", "-va", "wbrb"}}, "i,direct.png");
    EXPECT_EQ(read_file(folder_.file("dump.png")), read_file(folder_.file("direct.png")));
}

} // namespace
