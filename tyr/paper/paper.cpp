#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/state_private.h"
#include "tyr/paper/paper_private.h"

using namespace tyr;

namespace {

struct NamedPaper {
    const char *name;
    Paper size;
};

constexpr NamedPaper kPapers[] = {
    {"letter", {11.0F, 8.5F}   },
    {"legal",  {14.0F, 8.5F}   },
    {"11x17",  {17.0F, 11.0F}  },
    {"a4",     {11.69F, 8.26F} },
    {"a3",     {16.54F, 11.69F}},
    {"a2",     {23.39F, 16.54F}},
    {"a1",     {33.11F, 23.39F}},
    {"b4",     {14.33F, 10.12F}},
    {"b3",     {20.27F, 14.33F}},
    {"b2",     {28.66F, 20.27F}},
    {"b1",     {40.55F, 28.66F}},
    {"ansid",  {34.0F, 22.0F}  },
};

constexpr double kMaxPanels = 8.0;
constexpr double kMaxSurface = 1.0e6; // device units; a larger geometry is a slip of the pen

/// A view surface in device units.
struct Surface {
    double width, height, x, y;
};

/// whether the four numbers make a surface that can be drawn on
bool is_surface(const Surface &s)
{
    return s.width >= 2.0 && s.width <= kMaxSurface && s.height >= 2.0 && s.height <= kMaxSurface &&
           std::abs(s.x) <= kMaxSurface && std::abs(s.y) <= kMaxSurface;
}

Surface current_surface()
{
    const WorkstationState &ws = kernel().ws;
    return {static_cast<double>(ws.width), static_cast<double>(ws.height),
            static_cast<double>(ws.x_offset), static_cast<double>(ws.y_offset)};
}

/// A surface cut to what lies in another that begins at the origin.
Surface within(const Surface &s, const Surface &whole)
{
    const double x = std::clamp(s.x, 0.0, whole.width);
    const double y = std::clamp(s.y, 0.0, whole.height);
    return {std::min(s.width, whole.width - x), std::min(s.height, whole.height - y), x, y};
}

/// A part of a side. In single precision the rounding heals what a sixth or a seventh lacks, and
/// the edges of panels come out whole.
double part_of(double side, double fraction)
{
    return static_cast<float>(side) * static_cast<float>(fraction);
}

std::optional<Surface> panel(const char *text, bool y_down)
{
    double w = 1.0;
    double h = 1.0;
    double x = 0.0;
    double y = 0.0;
    if (std::sscanf(text, "%lfx%lf+%lf+%lf", &w, &h, &x, &y) < 1) {
        return std::nullopt;
    }
    if (w > 1.0) {
        w = std::clamp(w, 1.0, kMaxPanels);
        h = std::clamp(h, 1.0, kMaxPanels);
        x = x / w;
        y = y_down ? y / h : 1.0 - (1.0 + y) / h; // rows count from the top
        w = 1.0 / w;
        h = 1.0 / h;
    } else if (y_down) {
        y = 1.0 - y - h; // fractions count from the lower left corner
    }
    const Surface s = current_surface();
    return Surface{part_of(s.width, w), part_of(s.height, h), part_of(s.width, x),
                   part_of(s.height, y)};
}

std::optional<Surface> measured(const char *text, const GeometryForm &form)
{
    int w = 0;
    int h = 0;
    int x = 0;
    int y = 0;
    Surface s = current_surface();
    const auto size = [&](int n) { return static_cast<double>(n) * form.unit; };
    const auto offset = [&](int n) { return size(n) + form.offset_added; };
    const int count = form.plus_between ? std::sscanf(text, "%dx%d+%d+%d", &w, &h, &x, &y)
                                        : std::sscanf(text, "%dx%d%d%d", &w, &h, &x, &y);
    if (count == 4) {
        return Surface{size(w), size(h), offset(x), offset(y)};
    }
    if (count >= 2) {
        s.width = size(w);
        s.height = size(h);
        return s;
    }
    const int offsets =
        form.plus_between ? std::sscanf(text, "+%d+%d", &x, &y) : std::sscanf(text, "%d%d", &x, &y);
    if (offsets != 2) {
        return std::nullopt;
    }
    s.x = offset(x);
    s.y = offset(y);
    return s;
}

} // namespace

bool tyr::is_paper(const Paper &paper)
{
    return paper.width >= kMinPaper && paper.width <= kMaxPaper && paper.height >= kMinPaper &&
           paper.height <= kMaxPaper;
}

std::optional<Paper> tyr::paper_from_word(const std::string &word)
{
    if (STR_has_prefix(word, "sz=")) {
        Paper paper{0.0F, 0.0F};
        if (std::sscanf(word.c_str() + 3, "%fx%f", &paper.width, &paper.height) == 0) {
            return paper_from_word(word.substr(3)); // a name, as sz=a4
        }
        return is_paper(paper) ? std::optional(paper) : std::nullopt;
    }
    for (const NamedPaper &named : kPapers) {
        if (is_word(word, named.name)) {
            return named.size;
        }
    }
    return std::nullopt;
}

void tyr::apply_geometry(const std::string &geometry, const GeometryForm &form)
{
    if (geometry.empty()) {
        return;
    }
    const bool is_panel = geometry[0] == 'P' || geometry[0] == 'p';
    std::optional<Surface> surface =
        is_panel ? panel(geometry.c_str() + 1, form.y_down) : measured(geometry.c_str(), form);
    if (surface && form.y_down) {
        surface = within(*surface, current_surface());
    }
    if (!surface || !is_surface(*surface)) {
        gerror("gopen_ws", "invalid geometry: %s\n", geometry.c_str());
        return;
    }
    WorkstationState &ws = kernel().ws;
    ws.width = static_cast<int>(surface->width);
    ws.height = static_cast<int>(surface->height);
    ws.x_offset = static_cast<int>(surface->x);
    ws.y_offset = static_cast<int>(surface->y);
}

std::string tyr::geometry_text(const std::vector<const char *> &variables)
{
    if (const char *text = RES_get("geometry"); text != nullptr && text[0] != '\0') {
        return text;
    }
    for (const char *variable : variables) {
        if (const char *text = std::getenv(variable)) {
            return text;
        }
    }
    return {};
}

std::vector<std::string> tyr::environment_words(const char *variable)
{
    const char *text = std::getenv(variable);
    return STR_fields(text != nullptr ? text : "", ',');
}

bool tyr::is_word(const std::string &word, const char *other)
{
    return STR_casecmp(word.c_str(), other) == 0;
}

float tyr::word_number(const std::string &word, size_t place)
{
    const float value = place < word.size() ? std::strtof(word.c_str() + place, nullptr) : 0.0F;
    return std::isfinite(value) ? value : 0.0F;
}

std::string tyr::output_target(const std::vector<std::string> &words,
                               const std::vector<const char *> &variables, const char *fallback)
{
    if (!words.empty() && !words[0].empty()) {
        return words[0];
    }
    for (const char *variable : variables) {
        if (const char *text = std::getenv(variable)) {
            return text;
        }
    }
    return fallback;
}
