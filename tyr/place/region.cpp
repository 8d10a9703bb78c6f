#include "tyr/place/region.h"

#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/ask.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"

using namespace tyr;

namespace {

constexpr unsigned kFileTrace = 0x80000000U;
constexpr int kLineLength = 500;
constexpr int kAbbreviation = 5;
constexpr int kDescription = 20;
constexpr int kStartPriority = 3;
constexpr int kGridWidth = 25;
constexpr int kGridHeight = 17;
constexpr float kGridSpacing = 1.2F; ///< 100 km

struct BuiltinRegion {
    const char *word;
    const char *description;
    float clat, clon, dx;
};

constexpr BuiltinRegion kBuiltin[] = {
    {"us", "Contiguous US",   39.0F, -97.0F,  2.3F},
    {"ne", "New England",     42.0F, -76.0F,  0.9F},
    {"at", "Atlantic",        37.0F, -82.0F,  0.9F},
    {"se", "Southeastern",    31.0F, -88.0F,  1.1F},
    {"mw", "Midwestern",      43.0F, -93.0F,  1.1F},
    {"sp", "Southern Plains", 32.5F, -100.0F, 1.2F},
    {"nw", "Northwestern",    44.0F, -112.0F, 1.0F},
    {"sw", "Southwestern",    37.0F, -112.0F, 1.0F}
};

struct Region {
    std::string word;
    std::string description;
};

/// A region's line: fields that aren't there stay empty.
struct RegionLine {
    std::array<char, kLineLength + 1> word = {};
    std::array<char, kLineLength + 1> description = {};
    std::array<char, kLineLength + 1> domain = {};
    int show = 0;
    int fields = 0;
    bool is_single = false; ///< one word and nothing behind it
};

struct State {
    std::array<Region, kMaxRegions> regions;
    std::array<MenuRow, kMaxRegions + 1> rows = {};
    int count = 0; ///< regions with row 0; 0 until the table is made
    bool was_read = false;
    int priority = kStartPriority;
};

State state;

void start_table()
{
    state.count = 0;
    state.regions[static_cast<size_t>(state.count++)] = {"back", "Return to previous menu"};
}

void add_row(const char *word, const std::string &description)
{
    state.regions[static_cast<size_t>(state.count++)] = {word, description};
}

void finish_table()
{
    state.rows = {};
    for (int i = 0; i < state.count; ++i) {
        const Region &region = state.regions[static_cast<size_t>(i)];
        state.rows[static_cast<size_t>(i)] = {region.description.c_str(), region.word.c_str(), i,
                                              nullptr};
    }
}

void make_builtin_table()
{
    start_table();
    for (const BuiltinRegion &region : kBuiltin) {
        add_row(region.word, region.description);
    }
    add_row(kVariableRegion, "Variable");
    finish_table();
}

FilePtr open_regions(const char *file)
{
    std::array<char, kFileNameRoom> path = {};
    FILE_join(RES_get("file_path"), file, path.data());
    FilePtr stream;
    if (FILE_is_dir(path.data()) == 0) {
        stream.reset(FILE_open(path.data(), "r"));
    }
    if (!stream) {
        MSG_out(kFileTrace, "Unable to open region file: %s\n", path.data());
    }
    return stream;
}

/// The next line that is no comment; false at the end.
bool next_line(FILE *stream, RegionLine *out)
{
    std::array<char, kLineLength + 1> line = {};
    while (STR_read_cut_line(stream, line.data(), kLineLength) >= 0) {
        if (line[0] == '#') {
            continue;
        }
        *out = RegionLine();
        std::array<char, 2> more = {};
        out->fields = std::sscanf(line.data(), "%500s %500s %9d %500s", out->word.data(),
                                  out->description.data(), &out->show, out->domain.data());
        out->is_single = std::sscanf(line.data(), "%*s %1s", more.data()) < 1;
        return true;
    }
    return false;
}

int priority_of(float height)
{
    constexpr float kHeights[] = {50.0F, 25.0F, 12.5F, 6.25F, 3.0F};
    int priority = 1;
    for (const float limit : kHeights) {
        if (height > limit) {
            break;
        }
        ++priority;
    }
    return priority;
}

} // namespace

int DOM_read_regions(const char *file)
{
    const FilePtr stream = open_regions(file);
    if (!stream) {
        return 0;
    }
    start_table();
    RegionLine line;
    while (state.count < kMaxRegions && next_line(stream.get(), &line)) {
        if (line.fields >= 3 && line.show != 0) {
            line.word[kAbbreviation] = '\0';
            line.description[kDescription] = '\0';
            STR_replace_char(line.description.data(), '_', ' ');
            add_row(line.word.data(), line.description.data());
        }
    }
    finish_table();
    state.was_read = true;
    return 1;
}

const MenuRow *DOM_region_table()
{
    if (state.count == 0) {
        make_builtin_table();
    }
    return state.rows.data();
}

bool DOM_has_regions()
{
    return state.was_read;
}

int DOM_region_lookup(const char *file, const char *word, char *out)
{
    const FilePtr stream = open_regions(file);
    if (!stream) {
        return 0;
    }
    RegionLine line;
    while (next_line(stream.get(), &line) && line.fields >= 1) {
        if (line.is_single) {
            STR_copy(out, kDomainTextRoom, line.word.data());
            return 1;
        }
        if (line.fields == 4 && (!word || STR_casecmp(line.word.data(), word) == 0)) {
            STR_copy(out, kDomainTextRoom, line.domain.data());
            return 1;
        }
    }
    return 0;
}

int DOM_builtin_region(const char *word, DomainRec *out)
{
    float clat = kMissing;
    float clon = kMissing;
    float spacing = kGridSpacing;
    if (STR_casecmp(word, kVariableRegion) == 0) {
        clat = ASK_real("Enter the central latitude: ");
        clon = ASK_real("Enter the central longitude: ");
    } else {
        const BuiltinRegion *found = nullptr;
        for (const BuiltinRegion &region : kBuiltin) {
            found = STR_casecmp(word, region.word) == 0 ? &region : found;
        }
        if (!found) {
            return 0;
        }
        clat = found->clat;
        clon = found->clon;
        spacing = found->dx;
    }
    DOM_init(out);
    out->proj = kProjPolar;
    out->clat = clat;
    out->clon = clon;
    out->plon = clon;
    out->nx = kGridWidth;
    out->ny = kGridHeight;
    out->dx = spacing;
    out->dy = spacing;
    DOM_set_priority(static_cast<float>(kGridHeight - 1) * spacing);
    return 1;
}

void DOM_warn_region(const char *word)
{
    std::vector<std::string> names;
    RegionLine line;
    const FilePtr stream = open_regions(kRegionFile);
    while (stream && next_line(stream.get(), &line) && line.fields >= 1) {
        names.emplace_back(line.word.data());
    }
    for (const BuiltinRegion &region : kBuiltin) {
        names.emplace_back(region.word);
    }
    warn_unknown("region", word, std::vector<std::string_view>(names.begin(), names.end()));
}

void DOM_set_priority(float height)
{
    state.priority = priority_of(height);
    const char *text = RES_get("stat_prior");
    if (!text || !*text) {
        return;
    }
    const bool is_shift = text[0] == '+' || text[0] == '-';
    const char digit = text[is_shift ? 1 : 0];
    if (!is_digit(digit)) {
        return;
    }
    const int value = digit - '0';
    if (!is_shift) {
        state.priority = value;
    } else {
        state.priority += text[0] == '-' ? -value : value;
    }
}

int DOM_get_priority()
{
    return state.priority;
}
