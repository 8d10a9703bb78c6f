#include <algorithm>
#include <iterator>

#include "tyr/gks/attribute_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

namespace tyr {

namespace {

int set_fill_black(int flag)
{
    gset_fill_black(flag);
    return 0;
}

constexpr Attribute kAttributes[] = {
    {kObjWsViewport,   "WS_VP",   SetRect{gset_ws_viewport}   },
    {kObjWsWindow,     "WS_WIN",  SetRect{gset_ws_window}     },
    {kObjViewport,     "VP",      SetRect{gset_viewport}      },
    {kObjWindow,       "WIN",     SetRect{gset_window}        },
    {kObjSelectTran,   "TR",      SetInt{gsel_norm_tran}      },
    {kObjLineColour,   "PL_CLR",  SetInt{gset_line_colr_ind}  },
    {kObjLineType,     "PL_TYPE", SetInt{gset_linetype}       },
    {kObjLineWidth,    "PL_LW",   SetReal{gset_linewidth}     },
    {kObjMarkerColour, "PM_CLR",  SetInt{gset_marker_colr_ind}},
    {kObjMarkerType,   "PM_TYPE", SetInt{gset_marker_type}    },
    {kObjMarkerWidth,  "PM_WDTH", SetReal{gset_marker_width}  },
    {kObjMarkerSize,   "PM_SIZE", SetReal{gset_marker_size}   },
    {kObjFillColour,   "FA_CLR",  SetInt{gset_fill_colr_ind}  },
    {kObjFillInterior, "FA_INT",  SetInt{gset_fill_int_style} },
    {kObjFillStyle,    "FA_ST",   SetInt{gset_fill_style_ind} },
    {kObjFillBlack,    nullptr,   SetInt{set_fill_black}      },
    {kObjTextColour,   "TE_CLR",  SetInt{gset_text_colr_ind}  },
    {kObjTextWidth,    "TE_WDTH", SetReal{gset_text_width}    },
    {kObjCharHeight,   "TE_HGHT", SetReal{gset_char_ht}       },
    {kObjExpansion,    "TE_EXP",  SetReal{gset_expan}         },
    {kObjTextSpacing,  "TE_SPC",  SetReal{gset_text_spacing}  },
    {kObjCharSpace,    "TE_CSPC", SetReal{gset_char_space}    },
    {kObjTextAlign,    "TE_ALGN", SetIntPair{gset_text_align} },
    {kObjCharUp,       "TE_UP",   SetVector{gset_char_up}     },
    {kObjFont,         "TE_FNT",  SetIntPair{gset_fontprec}   },
};

template <class Is> const Attribute *find(Is is)
{
    const auto *row = std::find_if(std::begin(kAttributes), std::end(kAttributes), is);
    return row != std::end(kAttributes) ? row : nullptr;
}

/// Writes a call on a device that keeps calls. False on one that draws.
template <class... Value> bool is_kept(ObjectKind kind, Value... value)
{
    if (!device_traits().keeps_calls) {
        return false;
    }
    const Attribute *row = attribute_of(kind);
    if (const char *word = row != nullptr ? row->word : nullptr) {
        if constexpr (sizeof...(value) == 2) {
            device_keep_rect(word, value...);
        } else {
            device_keep(word, value...);
        }
    }
    return true;
}

} // namespace

const Attribute *attribute_of(int kind)
{
    return find([kind](const Attribute &row) { return row.kind == kind; });
}

const Attribute *attribute_of(std::string_view word)
{
    return find([word](const Attribute &row) { return row.word != nullptr && row.word == word; });
}

void pass_on(ObjectKind kind, int value)
{
    if (!is_kept(kind, value)) {
        record(kind, value);
        device_attribute(kind);
    }
}

void pass_on(ObjectKind kind, float value)
{
    if (!is_kept(kind, value)) {
        record(kind, 1, 1, &value);
        device_attribute(kind);
    }
}

void pass_on(ObjectKind kind, const int pair[2])
{
    if (!is_kept(kind, pair)) {
        record(kind, pair);
        device_attribute(kind);
    }
}

void pass_on(ObjectKind kind, const float vector[2])
{
    if (!is_kept(kind, vector)) {
        record(kind, 1, 2, vector);
        device_attribute(kind);
    }
}

void pass_on(ObjectKind kind, int number, const float rect[4])
{
    if (!is_kept(kind, number, rect)) {
        record(kind, number, 4, rect);
        device_attribute(kind);
    }
}

} // namespace tyr
