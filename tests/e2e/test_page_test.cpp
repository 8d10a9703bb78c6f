#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "support/ps_reader.h"
#include "support/run.h"
#include "support/temp_dir.h"

// The test page against a reference, by structure: every stroke that isn't of a text, and for each
// text its box. A change of the picture shows as the lines that moved; when it is meant, write the
// reference anew with TYR_UPDATE_GOLDEN=1.

namespace {

std::string box_of(const PsPage &page, int text)
{
    std::array<double, 4> box = {1e9, 1e9, -1e9, -1e9};
    size_t points = 0;
    for (const PsStroke &s : strokes_of(page, text)) {
        for (const PsPoint &p : s.points) {
            box = {std::min(box[0], p[0]), std::min(box[1], p[1]), std::max(box[2], p[0]),
                   std::max(box[3], p[1])};
            ++points;
        }
    }
    std::array<char, 120> line;
    std::snprintf(line.data(), line.size(), " points %zu box %.1f,%.1f %.1f,%.1f", points, box[0],
                  box[1], box[2], box[3]);
    return line.data();
}

std::vector<std::string> structure(const PsPage &page)
{
    std::vector<std::string> lines = describe(strokes_of(page, -1));
    for (size_t i = 0; i < page.texts.size(); ++i) {
        lines.push_back("text \"" + page.texts[i].text + "\"" + box_of(page, static_cast<int>(i)));
    }
    return lines;
}

void compare_with_golden(const std::string &name, const std::vector<std::string> &lines)
{
    const std::string path = std::string(TYR_SOURCE_DIR "/tests/e2e/golden/") + name;
    if (std::getenv("TYR_UPDATE_GOLDEN")) {
        std::ofstream out(path);
        for (const std::string &line : lines) {
            out << line << '\n';
        }
        return;
    }
    std::ifstream in(path);
    std::string wanted;
    size_t n = 0;
    for (; std::getline(in, wanted); ++n) {
        ASSERT_LT(n, lines.size()) << "missing: " << wanted;
        ASSERT_EQ(lines[n], wanted) << "line " << n + 1;
    }
    EXPECT_EQ(n, lines.size()) << "more than the reference has";
}

TEST(TestPage, IsAsItWas)
{
    struct Case {
        const char *golden;
        const char *words;
    };
    const Case cases[] = {{"test_page_color.txt", ",color"},
                          {"test_page_grey_portrait.txt", ",port"}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.golden);
        const TempDir dir;
        const RunResult result = run({TYR_BINARY_DIR "/bin/test_page",
                                      "p," + dir.file("t.ps") + c.words, TYR_SOURCE_DIR "/data"});
        ASSERT_EQ(result.code, 0) << result.err;
        const PsPage page = read_ps(read_file(dir.file("t.ps")));
        ASSERT_EQ(page.error, "");
        compare_with_golden(c.golden, structure(page));
    }
}

} // namespace
