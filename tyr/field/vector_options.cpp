#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/field/number_list_private.h"
#include "tyr/field/vector_private.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/levels.h"

using namespace tyr;

namespace tyr {

VectorState &vectors()
{
    static VectorState state;
    return state;
}

namespace {

constexpr size_t kWordLength = 8; ///< of "strm_sc" and "wv_skip" with the character behind
constexpr const char *kPairSeparators = ":,x/ ";
constexpr float kMostSpacing = 1000.0F;

void set_skip(const char *text)
{
    const std::vector<float> n = number_list(text, kPairSeparators);
    if (!n.empty()) {
        vectors().skip_x = std::max(whole(n[0]), 1);
        vectors().skip_y = std::max(whole(n.size() > 1 ? n[1] : n[0]), 1);
    }
}

void set_spacing(float spacing)
{
    vectors().spacing = spacing > 0.0F ? std::min(spacing, kMostSpacing) : 1.0F;
}

void apply_option(const std::string &word)
{
    VectorState &s = vectors();
    const auto is = [&word](const char *known) { return STR_casecmp(word.c_str(), known) == 0; };
    if (is("vect")) {
        s.type = kVectArrows;
    } else if (is("stream") || is("strm")) {
        s.type = kVectStreamlines;
    } else if (is("barb")) {
        s.type = kVectBarbs;
    } else if (is("vbar")) {
        s.legend = true;
    } else if (is("nolr")) {
        PRM_set_draw(kDrawTextLr, 0);
    } else if (STR_has_prefix(word, "sk=")) {
        set_skip(word.c_str() + 3);
    } else if (word.size() > 3) {
        const std::vector<float> n = number_list(word.c_str() + 3, ",");
        if (n.empty()) {
            return;
        }
        const auto key = [&word](const char *known) { return STR_has_prefix(word, known); };
        if (key("sc=")) {
            VECT_set_scale(n[0]);
        } else if (key("ss=")) {
            set_spacing(n[0]);
        } else if (key("in=")) {
            VECT_set_interval(n[0]);
        } else if (key("cb=")) {
            s.base = n[0];
        } else if (key("mn=")) {
            s.lowest = n[0];
        } else if (key("mx=")) {
            s.highest = n[0];
        }
    }
}

void apply_param(const std::string &word)
{
    VectorState &s = vectors();
    const auto is = [&word](const char *known) { return STR_casecmp(word.c_str(), known) == 0; };
    const char *behind = word.c_str() + std::min(word.size(), kWordLength);
    if (is("vect") || is("vbar")) {
        s.legend = true;
    } else if (is("uvgrid") || is("uvew")) {
        s.grid_relative = is("uvgrid");
    } else if (is("bar") || is("nobar")) {
        PLT_set_bar_mode(is("bar") ? 1 : -1);
    } else if (STR_has_prefix(word, "strm_sc")) {
        const std::vector<float> n = number_list(behind, ",");
        set_spacing(n.empty() ? 1.0F : n[0]);
    } else if (STR_has_prefix(word, "wv_skip")) {
        set_skip(behind);
    }
}

} // namespace

void read_vector_words()
{
    VectorState &s = vectors();
    const int type = s.type;
    s.type = kMissingInt;
    std::string pending;
    for (const std::string &word : STR_fields(s.options, ':')) {
        const bool is_number = !word.empty() && word.find_first_not_of("0123456789") == word.npos;
        if (is_number && STR_has_prefix(pending, "sk=")) { // "sk=2:3" came apart
            apply_option(pending + "," + word);
        } else {
            apply_option(word);
        }
        pending = word;
    }
    if (s.type == kMissingInt) {
        s.type = s.kind == kVectArrows || s.kind == kVectStreamlines ? s.kind : type;
    }
    for (const std::string &word : RES_list("plot_param")) {
        apply_param(word);
    }
}

void read_vector_base()
{
    VectorState &s = vectors();
    for (const std::string &word : RES_list("con_base")) {
        const bool is_limit = !word.empty() && (word[0] == '>' || word[0] == '<');
        const float value = std::strtof(word.c_str() + (is_limit ? 1 : 0), nullptr);
        if (word.empty() || !std::isfinite(value)) {
            continue;
        }
        (word[0] == '>' ? s.lowest : word[0] == '<' ? s.highest : s.base) = value;
    }
}

} // namespace tyr

void VECT_reset()
{
    VectorState &s = vectors();
    s.interval = s.base = s.lowest = s.highest = kMissing;
    s.type = s.locked ? s.type : kMissingInt;
}

void VECT_set_kind(int kind, const char *options)
{
    vectors().kind = kind;
    vectors().options = options != nullptr ? options : "";
}

void VECT_set_type(int type)
{
    vectors().type = type;
    vectors().locked = true;
}

int VECT_get_type()
{
    return vectors().type;
}

void VECT_set_arrays(float *x, float *y)
{
    vectors().x = y != nullptr ? x : nullptr;
    vectors().y = x != nullptr ? y : nullptr;
}

void VECT_set_scale(float scale)
{
    vectors().scale = std::isfinite(scale) && scale > 0.0F ? std::min(scale, 1000.0F) : 1.0F;
}

void VECT_set_interval(float interval)
{
    vectors().interval = interval > 0.0F && std::isfinite(interval) ? interval : kMissing;
}

float VECT_get_interval()
{
    return vectors().interval;
}

void VECT_set_base(float base)
{
    vectors().base = base;
}

void VECT_set_max(float speed)
{
    vectors().max = speed;
}

float VECT_get_size()
{
    return vectors().size;
}

void VECT_set_legend(int flag)
{
    vectors().legend = flag != 0;
}

int VECT_get_legend()
{
    return vectors().legend ? 1 : 0;
}
