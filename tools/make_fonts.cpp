// Makes the stroke fonts of data/ and their list from the Hershey fonts as Debian's package
// hershey-fonts-data has them (/usr/share/hershey-fonts/*.jhf).
//
//   make_fonts [folder of the .jhf files [folder to write to]]
//
// A .jhf line is a glyph: number (5 characters), count of pairs (3), then the pairs, each two
// letters that stand for x and y by their distance from 'R', y downward. The first pair holds the
// left and right bound, the pair " R" lifts the pen. Glyphs are in the order of the codes from 32.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "tyr/gks/font_private.h"

using namespace tyr;

namespace {

struct Source {
    const char *id;   ///< in the font list
    const char *file; ///< name of the .jhf file, without its ending
    const char *what;
};

constexpr Source kSources[] = {
    {"modern",   "futural",   "plain, single stroke"     },
    {"simplex",  "rowmans",   "roman, single stroke"     },
    {"bold",     "futuram",   "plain, double stroke"     },
    {"duplex",   "rowmand",   "roman, double stroke"     },
    {"triplex",  "rowmant",   "roman, triple stroke"     },
    {"roman",    "timesr",    "roman with serifs"        },
    {"italic",   "timesi",    "italic with serifs"       },
    {"script",   "scriptc",   "handwriting"              },
    {"greek",    "greekc",    "Greek on Latin letters"   },
    {"cyrillic", "cyrilc_1",  "Cyrillic on Latin letters"},
    {"gothic",   "gothiceng", "English black letter"     },
};

constexpr int kHersheyBase = 9;     // y of the base line, downward
constexpr int kHersheyDescent = 16; // y of the lowest descender of most fonts
constexpr int kUnit = 5;            // font units in one Hershey unit: capitals are 21 high
constexpr int kMaxX = 125;          // greatest x that a move can hold: 253 - 128
constexpr int kMaxY = 253;
constexpr int kFirstCode = 32;
constexpr int kDelete = 127; // a block in some fonts; here the degree sign in all
constexpr size_t kNumGlyphs = 96;
constexpr const char *kDegreeFont = "rowmans";
constexpr int kDegree = 176; // where other character sets have it

struct Point {
    int x, y;
    bool moves;
};
using Glyph = std::vector<Point>;

Glyph parse_glyph(const std::string &pairs)
{
    Glyph glyph;
    bool moves = true;
    for (size_t i = 2; i + 1 < pairs.size(); i += 2) {
        if (pairs[i] == ' ' && pairs[i + 1] == 'R') {
            moves = true;
            continue;
        }
        glyph.push_back({pairs[i] - 'R', pairs[i + 1] - 'R', moves});
        moves = false;
    }
    return glyph;
}

std::vector<Glyph> read_glyphs(const std::string &path)
{
    std::ifstream file(path);
    std::vector<Glyph> glyphs;
    std::string line;
    while (std::getline(file, line)) {
        if (line.size() < 8) {
            continue;
        }
        const size_t length = 2 * std::strtoul(line.substr(5, 3).c_str(), nullptr, 10);
        std::string pairs = line.substr(8);
        while (pairs.size() < length && std::getline(file, line)) {
            pairs += line;
        }
        glyphs.push_back(parse_glyph(pairs.substr(0, length)));
    }
    return glyphs;
}

/// Onto the grid: ink from x = 0 on, the base line at 35. What is too wide is made narrower, and
/// descenders deeper than the grid are flattened onto it.
Glyph to_grid(const Glyph &glyph, int lowest)
{
    int left = 0;
    int right = 0;
    if (!glyph.empty()) {
        const auto less = [](const Point &a, const Point &b) { return a.x < b.x; };
        left = std::min_element(glyph.begin(), glyph.end(), less)->x;
        right = std::max_element(glyph.begin(), glyph.end(), less)->x;
    }
    const int span = (right - left) * kUnit;
    const int depth = std::max(lowest, kHersheyDescent) - kHersheyBase;
    Glyph out;
    for (const Point &p : glyph) {
        int x = (p.x - left) * kUnit;
        x = span > kMaxX ? x * kMaxX / span : x;
        const int below = p.y - kHersheyBase;
        const int y = below > 0 ? kFontBase - below * kFontBase / depth : kFontBase - below * kUnit;
        out.push_back({x, std::min(y, kMaxY), p.moves});
    }
    return out;
}

std::string label_of(int code)
{
    return code == kDelete ? "degree" : std::string(1, static_cast<char>(code));
}

/// Writes one font, one character a line, each with its label behind its end.
bool write_font(const std::string &path, std::vector<Glyph> glyphs, const Glyph &degree)
{
    std::array<int, 256> offset;
    offset.fill(-1);
    glyphs.resize(kDelete - kFirstCode);
    glyphs.push_back(degree);
    int lowest = 0;
    for (const Glyph &glyph : glyphs) {
        for (const Point &p : glyph) {
            lowest = std::max(lowest, p.y);
        }
    }
    std::ofstream file(path);
    file << "0 start";
    int place = 1;
    std::string end;
    for (size_t i = 0; i < glyphs.size(); i++) {
        const int code = kFirstCode + static_cast<int>(i);
        const Glyph glyph = to_grid(glyphs[i], lowest);
        if (glyph.empty()) {
            continue;
        }
        file << end << "\n";
        offset[code] = place;
        for (const Point &p : glyph) {
            file << (p.moves ? p.x + kPenUp : p.x) << " " << p.y << " ";
        }
        place += 2 * static_cast<int>(glyph.size()) + 1;
        end = "255 " + label_of(code);
    }
    file << "254\n";
    offset[kDegree] = offset[kDelete];
    for (size_t code = 0; code < offset.size(); code++) {
        file << offset[code] << (code % 16 == 15 ? "\n" : " ");
    }
    return static_cast<bool>(file.flush());
}

} // namespace

int main(int argc, char **argv)
{
    const std::string from = argc > 1 ? argv[1] : "/usr/share/hershey-fonts";
    const std::string to = argc > 2 ? argv[2] : "data";
    const std::vector<Glyph> roman = read_glyphs(from + "/" + kDegreeFont + ".jhf");
    if (roman.size() < kNumGlyphs) {
        std::fprintf(stderr, "make_fonts: can't read %s.jhf in %s\n", kDegreeFont, from.c_str());
        return 1;
    }
    std::ofstream list(to + "/tyr.fnl");
    for (const Source &source : kSources) {
        const std::vector<Glyph> glyphs = read_glyphs(from + "/" + source.file + ".jhf");
        const std::string name = std::string(source.id) + ".fnt";
        if (glyphs.size() < kNumGlyphs || !write_font(to + "/" + name, glyphs, roman.back())) {
            std::fprintf(stderr, "make_fonts: can't make %s from %s.jhf\n", name.c_str(),
                         source.file);
            return 1;
        }
        list << source.id << " " << name << "\n";
        std::printf("%-14s %s.jhf, %s\n", name.c_str(), source.file, source.what);
    }
    return list.flush() ? 0 : 1;
}
