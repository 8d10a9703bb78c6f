#include "tyr/var/label.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/level.h"
#include "tyr/var/time_range.h"

namespace {

struct LevelText {
    int kind;
    const char *text;
};
constexpr LevelText kLevelTexts[] = {
    {kLevelCloudBase,  "Cloud base"           },
    {kLevelCloudTop,   "Cloud top"            },
    {kLevelFreezing,   "Frz level"            },
    {kLevelLcl,        "LCL"                  },
    {kLevelMaxWind,    "Max wind"             },
    {kLevelTropopause, "Tropopause"           },
    {kLevelTop,        "Top"                  },
    {kLevelSea,        "Sea level"            },
    {kLevelWhole,      "Whole atms"           },
    {204,              "Top frz level"        },
    {206,              "Grid cld bot lvl"     },
    {207,              "Grid cld top lvl"     },
    {209,              "Bound lyr cld bot"    },
    {210,              "Bound lyr cld top"    },
    {211,              "Bound lyr cld lyr"    },
    {212,              "Low cld bot lvl"      },
    {213,              "Low cld top lvl"      },
    {214,              "Low cld lyr"          },
    {215,              "Cld ceiling"          },
    {222,              "Mid cld bot lvl"      },
    {223,              "Mid cld top lvl"      },
    {224,              "Mid cld lyr"          },
    {232,              "High cld bot lvl"     },
    {233,              "High cld top lvl"     },
    {234,              "High cld lyr"         },
    {242,              "Conv cld bot lvl"     },
    {243,              "Conv cld top lvl"     },
    {244,              "Conv cld lyr"         },
    {245,              "Wet bulb zero lvl"    },
    {246,              "Max eq pot temp lvl"  },
    {247,              "Equilibrium lvl"      },
    {248,              "Shal Conv cld bot lvl"},
    {249,              "Shal Conv cld top lvl"},
    {251,              "Deep Conv cld bot lvl"},
    {252,              "Deep Conv cld top lvl"},
    {253,              "Supercool liq wat bot"},
    {254,              "Supercool liq wat top"},
    {kLevelNone,       ""                     },
    {kLevelDash,       ""                     },
};

struct RangeText {
    int code;
    const char *text;
};
constexpr RangeText kRangeTexts[] = {
    {kRangePlain,            "rng " },
    {kRangeAverage,          "avg " },
    {kRangeAccumulation,     "acc " },
    {kRangeDifference,       "dif " },
    {kRangeMaximum,          "max " },
    {kRangeMinimum,          "min " },
    {kRangeInitialAverage,   "iavg "},
    {kRangeUninitialAverage, "uavg "},
    {kRangeVariance,         "var " }
};

// A printf text; for this file's own formats only.
__attribute__((format(printf, 1, 2))) std::string print(const char *format, ...)
{
    std::array<char, kDatatypeSize> text{};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    return text.data();
}

std::string time_text(int time)
{
    constexpr int kFirstDayCode = 800;
    constexpr int kFirstMonthCode = 900;
    const int code = time / kRangeUnit;
    const int first = time % kRangeUnit / 1000;
    const int second = time % 1000;
    if (code <= 1) {
        return {};
    }
    const int n = code > 9 ? second : std::abs(second - first);
    const char *unit = second >= kFirstMonthCode ? "month"
                       : second >= kFirstDayCode ? "day"
                                                 : "hour";
    std::string text = print("%d %s ", n, unit);
    for (const RangeText &known : kRangeTexts) {
        if (known.code == code) {
            text += known.text;
        }
    }
    return text;
}

/// Layers of pressure; the values below 1001 are codes of old files.
std::string pressure_layer_text(int value)
{
    const int high = value / 1000 * 10;
    const int low = value % 1000 * 10;
    if (value < 1001) {
        if (value == 510) {
            return "1000-500 mb";
        }
        if (value == 508) {
            return "850-500 mb";
        }
        return value == 599 ? "SFC-500 mb" : "";
    }
    if (low == kFromSurface || low == kFromSurfaceIndex) {
        return print("sfc-%d mb", high);
    }
    if (low == kFromTropopause) {
        return print("trop-%d mb", high);
    }
    if (low > kFromSurfaceIndex) {
        return print("sfc[%d]-%d mb", low - kFromSurfaceIndex, high);
    }
    return print("%d-%d mb", low, high);
}

std::string height_layer_text(int low, int high)
{
    if (low * 100 == kAboveTropopause) {
        return print("trop+%d m", high * 100);
    }
    return print("%d-%dm", low * 100, high * 100);
}

std::string surface_text(int value)
{
    if (value <= 0) {
        return "Surface";
    }
    return print("Surface[%d]", value > 2000 ? value - 2000 : value);
}

std::string level_text(int kind, int value)
{
    const int high = value / 1000;
    const int low = value % 1000;
    switch (kind) {
    case kLevelSurface:
        return surface_text(value);
    case kLevelPressure:
        return print("%d mb", value);
    case kLevelPressureLayer:
        return pressure_layer_text(value);
    case kLevelHeight:
        return print("%d m", value);
    case kLevelHeightLayer:
        return height_layer_text(low, high);
    case kLevelHeightAg:
        return print("%d m AG", value);
    case kLevelHeightAgLayer:
        return print("%d-%d m AG", low * 100, high * 100);
    case kLevelSigma:
        return print("%3.2f sigma", value / 10000.0);
    case kLevelSigmaLayer:
        return print("%3.2f-%3.2f sigma", low / 100.0, high / 100.0);
    case kLevelHybrid:
        return print("%d lev", value);
    case kLevelDepth:
        return print("%d cm BG", value);
    case kLevelDepthLayer:
        return print("%d-%d cm BG", low, high);
    case kLevelTheta:
        return print("%d K", value);
    case kLevelThetaLayer:
        return print("%3.0f-%3.0f K", 1.0 * low, 1.0 * high);
    case kLevelPressureAg:
        return print("%d mb AG", value);
    case kLevelPressureAgLayer:
        return print("%d-%d mb AG", low, high);
    case kLevelVorticity:
        return print("%d*10^-6 Km2/kgs", value);
    case kLevelEta:
        return print("%3.2f Eta", value / 10000.0);
    case kLevelEtaLayer:
        return print("%3.2f-%3.2f Eta", low / 100.0, high / 100.0);
    default:
        break;
    }
    for (const LevelText &known : kLevelTexts) {
        if (known.kind == kind) {
            return known.text;
        }
    }
    if (kind > 0) {
        MSG_out(kMsgWarn, "VAR_make_datatype: no ltype: %d\n", kind);
    }
    return {};
}

} // namespace

char *VAR_make_datatype(int time, int level_kind, int level_value, char *out)
{
    STR_copy(out, kDatatypeSize, time_text(time) + level_text(level_kind, level_value));
    return out;
}

char *VAR_record_label(const VarRec *record, char *out)
{
    std::string label;
    if (VAR_label_mode() != kLabelMinimal) {
        std::array<char, kDatatypeSize> text{};
        label =
            VAR_make_datatype(record->time, record->level_kind, record->level_value, text.data());
        if (!label.empty()) {
            label += " ";
        }
    }
    std::array<char, kVarTextSize> name{};
    label += VAR_str(name.data(), record->var_number, record->units);
    if (record->format[0] != '\0' && VAR_label_mode() > kLabelNormal) {
        label.append(" - ").append(record->format);
    }
    STR_copy(out, kVarLabelSize, label);
    return out;
}

char *VAR_make_label(int i, char *out)
{
    *out = '\0';
    if (i < 0 || i >= VAR_count()) {
        return out;
    }
    return VAR_record_label(VAR_get(i), out);
}
