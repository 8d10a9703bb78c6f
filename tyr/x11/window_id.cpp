#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "tyr/base/str.h"
#include "tyr/x11/window_id_private.h"

using namespace tyr;

namespace {

constexpr int kMaxSide = 32767; // of a drawable

} // namespace

std::optional<WindowId> tyr::parse_window_id(const std::string &text)
{
    WindowId id;
    unsigned long ignored = 0;
    if (text.starts_with('+')) {
        std::sscanf(text.c_str() + 1, "%20lu:%20lu:%9dx%9d:%20lu", &id.window, &id.pixmap,
                    &id.width, &id.height, &id.colour_map);
    } else if (text.starts_with("0x") || text.starts_with("0X")) {
        std::sscanf(text.c_str() + 2, "%16lx:%9dx%9d:%20lu", &id.pixmap, &id.width, &id.height,
                    &ignored);
    } else {
        std::sscanf(text.c_str(), "%20lu:%9dx%9d:%20lu", &id.pixmap, &id.width, &id.height,
                    &ignored);
    }
    if (id.pixmap == 0 || id.width < 1 || id.height < 1 || id.width > kMaxSide ||
        id.height > kMaxSide) {
        return std::nullopt;
    }
    return id;
}

std::string tyr::window_id_file(const std::string &word)
{
    if (word.empty() || is_digit(word[0]) || word[0] == '+') {
        return {};
    }
    if (word[0] != 'w' && word[0] != 'W') {
        return word;
    }
    if (word.size() == 1) {
        return "tyrloop.win";
    }
    if (!is_digit(word[1])) {
        return word;
    }
    return "tyrloop." + std::to_string(std::atoi(word.c_str() + 1));
}
