#include "tyr/upper_air/parcel_choice.h"

#include <string>
#include <string_view>

#include "base/msg.h"
#include "base/res.h"
#include "base/str.h"
#include "var/number.h"

namespace {

struct State {
    ParcelChoice choice;
};
State state;

constexpr std::string_view kWord = "par";
constexpr size_t kValue = 4; // where the value of the word stands

float next_number(std::string_view *text)
{
    if (text->substr(0, 1) == ":") {
        text->remove_prefix(1);
    }
    return VAR_take_real(text).value_or(kMissing);
}

/// A parcel given by the surface's level or by its pressure.
void give_parcel(const SoundLevel *surface, float p, float t, float td)
{
    SoundLevel &parcel = state.choice.parcel;
    MET_clear_level(&parcel);
    if (surface != nullptr) {
        parcel = *surface;
    }
    if (!is_missing(p)) {
        MET_clear_level(&parcel);
        parcel.p = p;
    }
    parcel.t = is_missing(t) ? parcel.t : t;
    parcel.td = is_missing(td) ? parcel.td : td;
    state.choice.mode = kParcelGiven;
}

void read_choice(std::string_view text, const SoundLevel *surface)
{
    const std::string word(text.substr(0, text.find(':')));
    text.remove_prefix(word.size());
    const float first = next_number(&text);
    const float second = next_number(&text);
    if (STR_casecmp(word.c_str(), "maxt") == 0) {
        state.choice.mode = kParcelMaxTemp;
    } else if (STR_casecmp(word.c_str(), "layer") == 0) {
        state.choice.mode = kParcelLayer;
        state.choice.depth = first > 0 ? first : state.choice.depth;
    } else if (word.empty() || STR_casecmp(word.c_str(), "sfc") == 0) {
        if (is_missing(first) && is_missing(second)) {
            state.choice.mode = kParcelSurface;
        } else {
            give_parcel(surface, kMissing, first, second);
        }
    } else {
        std::string_view number = word;
        give_parcel(surface, VAR_take_real(&number).value_or(kMissing), first, second);
    }
}

} // namespace

ParcelChoice &THERM_parcel_choice()
{
    return state.choice;
}

void THERM_read_options(const SoundLevel *surface)
{
    const char *value = RES_get("plot_param");
    for (const std::string &word : STR_fields(value ? value : "", ',')) {
        if (STR_casecmp(word.c_str(), "page") == 0) {
            MSG_set_paging(1);
        } else if (STR_casecmp(word.c_str(), "nopage") == 0) {
            MSG_set_paging(0);
        } else if (STR_has_prefix(word, kWord) && word.size() >= kValue) {
            read_choice(std::string_view(word).substr(kValue), surface);
        }
    }
}
