#include "tyr/var/type_words.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "tyr/base/str.h"

namespace {

struct Word {
    const char *text;
    int code;
};

constexpr Word kPlotWords[] = {
    {"data",   kTypeData       },
    {"value",  kTypeValue      },
    {"text",   kTypeText       },
    {"mark",   kTypeMark       },
    {"mk",     kTypeMark       },
    {"plot",   kTypePlot       },
    {"cont",   kTypeCont       },
    {"ln",     kTypeLine       },
    {"dln",    kTypeDashedLine },
    {"ndln",   kTypeNegDashed  },
    {"cf",     kTypeFill       },
    {"lcf",    kTypeFillAndLine},
    {"gvalue", kTypeGridValue  },
    {"wind",   kTypeWind       },
    {"vect",   kTypeVector     },
    {"barb",   kTypeBarb       },
    {"strm",   kTypeStream     },
    {"track",  kTypeStream     },
    {"cloud",  kTypeCloud      },
    {"wbarb",  kTypeWindBarb   },
    {"cbarb",  kTypeCloudBarb  },
    {"dbarb",  kTypeDotBarb    },
    {"vbarb",  kTypeVectorBarb },
    {"symb",   kTypeSymbol     },
    {"wx",     kTypeSymbol     },
    {"line",   kTypePointLine  },
};

constexpr Word kPlotNames[] = {
    {"data",   kTypeData       },
    {"value",  kTypeValue      },
    {"text",   kTypeText       },
    {"mark",   kTypeMark       },
    {"plot",   kTypePlot       },
    {"int",    kTypeInt        },
    {"map",    kTypeMap        },
    {"frame",  kTypeFrame      },
    {"panel",  kTypePanel      },
    {"cont",   kTypeCont       },
    {"lcont",  kTypeLine       },
    {"dln",    kTypeDashedLine },
    {"ndln",   kTypeNegDashed  },
    {"fcont",  kTypeFill       },
    {"bcont",  kTypeFillAndLine},
    {"gvalue", kTypeGridValue  },
    {"wind",   kTypeWind       },
    {"vect",   kTypeVector     },
    {"strm",   kTypeStream     },
    {"barb",   kTypeBarb       },
    {"grid",   kTypeGrid       },
    {"cloud",  kTypeCloud      },
    {"wbarb",  kTypeWindBarb   },
    {"cbarb",  kTypeCloudBarb  },
    {"dbarb",  kTypeDotBarb    },
    {"vbarb",  kTypeVectorBarb },
    {"symb",   kTypeSymbol     },
    {"line",   kTypePointLine  },
    {"const",  kTypeConst      },
};

constexpr Word kWindFunctions[] = {
    {"wind",   kTypeWind  },
    {"vect",   kTypeVector},
    {"stream", kTypeStream},
    {"strm",   kTypeStream}
};

constexpr std::string_view kGridFunctions[] = {
    "copy",   "max",    "min",    "add",   "sum",    "avg",     "interp", "sub",   "thick",
    "mul",    "mod",    "sqrt",   "pow",   "exp",    "log",     "log10",  "abs",   "div",
    "sin",    "cos",    "tan",    "asin",  "acos",   "atan",    "atan2",  "dx",    "dy",
    "dewp",   "rhum",   "wetblb", "show",  "wchill", "wchill2", "heat",   "theta", "thetae",
    "vtemp",  "thetav", "vapor",  "shum",  "mixrat", "wspd",    "spd",    "mag",   "wdir",
    "dir",    "dot",    "cross",  "ugeos", "vgeos",  "uq",      "vq",     "lapl",  "conv",
    "diverg", "def1",   "def2",   "vconv", "rvort",  "avort",   "adv",
};

std::string_view function_word(const char *name)
{
    const std::string_view text = name == nullptr ? "" : name;
    return text.substr(0, text.find('-'));
}

} // namespace

int VAR_plot_code(const char *word)
{
    for (const Word &known : kPlotWords) {
        if (STR_casecmp(word, known.text) == 0) {
            return known.code;
        }
    }
    return -1;
}

const char *VAR_plot_name(int code)
{
    for (const Word &known : kPlotNames) {
        if (known.code == code) {
            return known.text;
        }
    }
    return "----";
}

int GRD_func_type(const char *name)
{
    const std::string_view word = function_word(name);
    for (const Word &known : kWindFunctions) {
        if (word == known.text) {
            return known.code;
        }
    }
    const bool is_known =
        !word.empty() && std::find(std::begin(kGridFunctions), std::end(kGridFunctions), word) !=
                             std::end(kGridFunctions);
    return is_known ? kTypeGrid : 0;
}

int GRD_is_vector_func(const char *name)
{
    const std::string_view word = function_word(name);
    return word == "grad" || word == "vdiff" ? 1 : 0;
}
