#include "tyr/geo/projection_words.h"

#include <array>

#include "tyr/base/str.h"
#include "tyr/geo/domain.h"

namespace {

constexpr int kUnknown = -1;

struct ProjectionWord {
    const char *word;
    int length; ///< characters compared; 0 the whole word
    int code;
};

constexpr std::array<ProjectionWord, 29> kProjectionWords = {
    {{"ll", 2, kProjLatLon},
     {"lat", 3, kProjLatLon},
     {"polar", 5, kProjPolar},
     {"ps", 2, kProjPolar},
     {"sat", 3, kProjSatellite},
     {"lamb", 4, kProjLambert},
     {"lc", 2, kProjLambert},
     {"la", 2, kProjLambertAzimuthal},
     {"gn", 2, kProjGnomonic},
     {"or", 2, kProjOrtho},
     {"mo", 2, kProjMollweide},
     {"me", 2, kProjMercator},
     {"pix", 3, kProjPixel},
     {"xy", 2, kProjXY},
     {"xlogy", 5, kProjXLogP},
     {"xlogp", 5, kProjXLogP},
     {"cat", 3, kProjTimeHeight},
     {"skewt", 5, kProjSkewT},
     {"ema", 3, kProjEmagram},
     {"teph", 4, kProjTephigram},
     {"rteph", 5, kProjRotatedTephigram},
     {"therm", 5, kProjSkewT},
     {"stuve", 5, kProjStuve},
     {"hodo", 4, kProjPolarPlot},
     {"vert", 4, kProjXLogP},
     {"xp", 0, kProjXP},
     {"zoom", 4, kProjZoom},
     {"size", 4, kProjSize},
     {"miss", 0, kProjNone}}
};

struct ProjectionName {
    int code;
    const char *name;
};

constexpr std::array<ProjectionName, 19> kProjectionNames = {
    {{kProjNone, "none"},
     {kProjPolar, "pstereo"},
     {kProjLatLon, "latlon"},
     {kProjMercator, "merc"},
     {kProjLambert, "lamb"},
     {kProjOrtho, "ortho"},
     {kProjGnomonic, "gnom"},
     {kProjMollweide, "moll"},
     {kProjLambertAzimuthal, "lambaz"},
     {kProjSatellite, "sat"},
     {kProjXY, "xy"},
     {kProjXZ, "xz"},
     {kProjXLogP, "xlogp"},
     {kProjPolarPlot, "polar"},
     {kProjTimeHeight, "cat"},
     {kProjSkewT, "skewt"},
     {kProjStuve, "stuve"},
     {kProjEmagram, "ema"},
     {kProjZoom, "zoom"}}
};
constexpr const char *kPixelName = "pixel";

} // namespace

int DOM_proj_code(const char *word)
{
    for (const ProjectionWord &p : kProjectionWords) {
        const int difference =
            p.length == 0 ? STR_casecmp(word, p.word) : STR_ncasecmp(word, p.word, p.length);
        if (difference == 0) {
            return p.code;
        }
    }
    return kUnknown;
}

const char *projection_name(int code)
{
    if (code == kProjPixel) {
        return kPixelName;
    }
    for (const ProjectionName &name : kProjectionNames) {
        if (name.code == code) {
            return name.name;
        }
    }
    return "";
}
