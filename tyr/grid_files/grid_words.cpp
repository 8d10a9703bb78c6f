#include <cstdlib>
#include <cstring>

#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grib/grib.h"
#include "tyr/grid_files/grid_words_private.h"

namespace tyr {

namespace {

constexpr const char *kNoIndex = "nohdr";
constexpr const char *kMaxBad = "max_bad";
constexpr const char *kFormat = "grdfmt";
constexpr int kUsualMaxBad = 5;

/// What stands behind a word, with or without a sign of equality.
const char *text_behind(const std::string &word, const char *prefix)
{
    const char *text = word.c_str() + std::strlen(prefix);
    return *text == '=' ? text + 1 : text;
}

} // namespace

std::string grid_read_words()
{
    std::string number_format;
    for (const std::string &word : RES_list("plot_param")) {
        if (word == kNoIndex) {
            GRIB_set_index(0);
        } else if (STR_has_prefix(word.c_str(), kMaxBad)) {
            const int number = std::atoi(text_behind(word, kMaxBad));
            GRIB_set_max_bad(number < 1 ? kUsualMaxBad : number);
        } else if (STR_has_prefix(word.c_str(), kFormat)) {
            number_format = text_behind(word, kFormat);
        }
    }
    return number_format;
}

} // namespace tyr
