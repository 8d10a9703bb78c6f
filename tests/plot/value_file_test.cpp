#include <algorithm>

#include "support/kernel_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/value_file.h"
#include "tyr/plot/view.h"

namespace {

constexpr const char *kHeader = "TYRRAW\n12Z 06 MAR 99\n!%1.0f\n";

/// What is plotted of a file on a domain of 0 to 10 in both directions.
struct Plotted {
    int result = -1;
    PsPage page;
    float low = 0.0F, high = 0.0F;
    std::vector<std::string> texts() const
    {
        std::vector<std::string> list;
        for (const PsText &t : page.texts) {
            list.push_back(t.text);
        }
        return list;
    }
};

DomainRec domain_of(int proj)
{
    DomainRec domain;
    DOM_init(&domain);
    domain.proj = proj;
    domain.clat = domain.clon = 0.0F;
    domain.dx = domain.dy = 10.0F;
    domain.nx = domain.ny = 10;
    if (proj == kProjLatLon) {
        domain.clat = domain.clon = 5.0F;
        domain.dx = domain.dy = 1.0F;
        domain.nx = domain.ny = 11;
    }
    return domain;
}

struct ValueFileTest : ::testing::Test {
    TempDir folder;
    ValueFileTest()
    {
        for (const char *name : {"plot_format", "plot_param", "con_base", "con_interval",
                                 "plot_scale", "color_data", "color_fill"}) {
            RES_put(name, nullptr);
        }
    }
    Plotted plot(const std::string &text, const std::string &suffix = "", int proj = kProjLatLon)
    {
        RES_put("raw_path", folder.path().c_str());
        folder.write("raw", text);
        KernelPlot kernel(kDevicePostScript, "color");
        CLR_read_table("");
        const DomainRec domain = domain_of(proj);
        PLT_set_domain(&domain);
        Plotted plotted;
        plotted.result = PLT_plot_file(("raw" + suffix).c_str(), 0);
        PLT_file_range(&plotted.low, &plotted.high);
        plotted.page = kernel.page();
        EXPECT_EQ(plotted.page.error, "");
        return plotted;
    }
};

using Texts = std::vector<std::string>;

} // namespace

TEST_F(ValueFileTest, RecordsAreDrawnInTheFormatsAsked)
{
    const std::string text = std::string(kHeader) +
                             "id lat lon t td::%1.1f wx $\nA 2 3 12.4 8.25 light_rain\n"
                             "B 4 5 -3.6 - -\nC - - 7 7 x\nD 6 7 1.5:%3.2f 2\n";
    const struct {
        const char *name, *suffix, *plot_format, *plot_param;
        Texts texts;
    } cases[] = {
        {"first value", "-0", nullptr, nullptr, {"12", "-4", "1.50"}},
        {"format of the path", "-0:%1.1f", nullptr, nullptr, {"12.4", "-3.6", "1.5"}},
        {"format of the user", "-0", "%1.2f", nullptr, {"12.40", "-3.60", "1.50"}},
        {"format of the field", "-td", "%1.2f", nullptr, {"8.2", "2.0"}},
        {"format of a word", "-0", "tx=*", nullptr, {"*", "*", "*"}},
        {"all words", "", nullptr, nullptr, {"12", "8.2", "light rain", "-4", "1.50", "2.0"}},
        {"text", "-wx", nullptr, nullptr, {"light rain"}},
        {"every other", "-0", nullptr, "skip=2", {"12"}},
        {"every third", "-0", nullptr, "skip=3", {"12", "1.50"}},
        {"limits", "-0", "mn=0", nullptr, {"12", "1.50"}},
        {"id", "-id:data", nullptr, nullptr, {"A", "B", "D"}},
        {"unknown field", "-nothing", nullptr, nullptr, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        RES_put("plot_format", c.plot_format);
        RES_put("plot_param", c.plot_param);
        const Plotted plotted = plot(text, c.suffix);
        EXPECT_EQ(plotted.result, 0);
        EXPECT_EQ(plotted.texts(), c.texts);
    }
}

TEST_F(ValueFileTest, PlacesFollowThePlotSpace)
{
    // on a map x is counted from the central meridian, 5 degrees
    const struct {
        const char *name;
        int proj;
        const char *fields, *lines;
        std::vector<PsPoint> places;
    } cases[] = {
        {"map", kProjLatLon, "id lat lon t $", "A 2 3 5\nB 4 5 6\n", {{-2, 2}, {0, 4}}},
        {"plot coordinates", kProjXY, "id x y t $", "A 2 3 5\nB 4 5 6\n", {{2, 3}, {4, 5}}},
        {"section", kProjTimeHeight, "id t $", "A 5\nB -\nC 6\n", {{0, 5}, {2, 6}}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        RES_put("plot_format", "tx=o:cc");
        const Plotted plotted =
            plot(std::string(kHeader) + c.fields + "\n" + c.lines, "-0", c.proj);
        std::vector<PsPoint> places;
        for (const PsText &t : plotted.page.texts) {
            if (t.text == "o") {
                places.push_back({t.x, t.y});
            }
        }
        ASSERT_EQ(places.size(), c.places.size());
        for (size_t i = 0; i < places.size(); ++i) {
            EXPECT_NEAR(places[i][0], c.places[i][0], 0.02);
            EXPECT_NEAR(places[i][1], c.places[i][1], 0.02);
        }
    }
}

TEST_F(ValueFileTest, RangeIsThatOfTheValuesSeen)
{
    const std::string head = std::string(kHeader) + "id lat lon t $\n";
    const struct {
        const char *name, *lines;
        float low, high;
    } cases[] = {
        {"values", "A 1 2 5\nB 2 3 -4\nC 3 4 7\n", -4.0F, 7.0F},
        {"winds", "A 1 2 270,30\nB 2 3 180,10\n", 10.0F, 30.0F},
        {"no values", "A 1 2 -\nB 2 3 x\n", kMissing, kMissing},
        {"no place", "A - - 5\nB 2 3 6\n", 6.0F, 6.0F},
        {"empty table", "", kMissing, kMissing},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const Plotted plotted = plot(head + c.lines, "-0");
        EXPECT_EQ(plotted.low, c.low);
        EXPECT_EQ(plotted.high, c.high);
    }
}

TEST_F(ValueFileTest, MissingFileIsToldOnce)
{
    RES_put("raw_path", folder.path().c_str());
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(PLT_plot_file("none-3:%5.1f", 0), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "RAW_file_open: Unable to open file:" + folder.file("none") + "\n");
}

TEST_F(ValueFileTest, NonsenseIsDrawnOrLeftOut)
{
    const std::string x(10000, 'x');
    const struct {
        const char *name;
        std::string text, suffix;
    } cases[] = {
        {"empty", "", ""},
        {"long words", std::string(kHeader) + x + " lat lon " + x + "\nA 1 2 " + x, ""},
        {"directives", std::string(kHeader) + "id lat lon t::%s%n\nA 1 2 5:%s%n%9999d\n", ""},
        {"directives asked", std::string(kHeader) + "id lat lon t $\nA 1 2 5\n", "-0:%n%s%*f"},
        {"header format", "TYRRAW\nx\n!%s%n%p:fm=%s:sc=%s\nid lat lon t $\nA 1 2 5\n", "-0"},
        {"far away", std::string(kHeader) + "id lat lon t $\nA 1e30 1e38 5\n", "-0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        plot(c.text, c.suffix);
    }
    plot(std::string(kHeader) + "id lat lon t $\nA 1 2 5\n", ":" + x);
}
