#include "tools/make_cities/place_name.h"

#include <cctype>
#include <cstring>
#include <set>

namespace {

constexpr size_t kNameLength = 20;

/// Plain letters of U+00C0 to U+017F.
constexpr const char *kPlainLetters = "AAAAAAACEEEEIIIIDNOOOOOxOUUUUYTsaaaaaaaceeeeiiiidnooooo/"
                                      "ouuuuytyAaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGg"
                                      "GgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOoOoOoRrRrRrSs"
                                      "SsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZz"
                                      "s";

/// UTF-8 with the accents taken off letters of the Latin supplements.
std::string without_accents(const std::string &text)
{
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        const unsigned lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            out += text[i];
            continue;
        }
        if (lead >= 0xC3 && lead <= 0xC5 && i + 1 < text.size()) {
            const unsigned code = (lead & 0x1F) << 6 | (static_cast<unsigned>(text[i + 1]) & 0x3F);
            if (code - 0xC0 < std::strlen(kPlainLetters)) {
                out += kPlainLetters[code - 0xC0];
            }
        }
        while (i + 1 < text.size() && (text[i + 1] & 0xC0) == 0x80) {
            ++i;
        }
    }
    return out;
}

} // namespace

std::string trimmed(const std::string &text)
{
    const size_t first = text.find_first_not_of(" \t");
    const size_t last = text.find_last_not_of(" \t\r");
    return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

std::string upper(std::string text)
{
    for (char &c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

std::string make_name(std::string text)
{
    text = without_accents(text);
    text = text.substr(0, text.find(" ("));
    text = text.substr(0, text.find("_("));
    static const std::set<std::string> dropped = {
        "ARPT", "AIRPORT",  "INTERNATIONAL", "INTL",  "MUNICIPAL",
        "MUNI", "REGIONAL", "RGNL",          "FIELD", "AIRFIELD",
        "AP",   "AERO.",    "ARB",           "CO.",   "AERODROME"};
    std::string out;
    std::string word;
    for (const char c : text + " ") {
        if (c != ' ' && c != '_') {
            word += c;
            continue;
        }
        if (!word.empty() && (out.empty() || dropped.count(upper(word)) == 0) &&
            (out.empty() || out.size() + word.size() < kNameLength)) {
            out += (out.empty() ? "" : "_") + word;
        }
        word.clear();
    }
    bool begins = true;
    for (char &c : out) {
        const unsigned char u = static_cast<unsigned char>(c);
        c = static_cast<char>(begins ? std::toupper(u) : std::tolower(u));
        begins = c == '_' || c == '/' || c == '-' || c == '.';
    }
    return out.empty() ? "?" : out.substr(0, kNameLength);
}
