#pragma once

#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "tyr/base/missing.h"

/// The places of tests/data/projection_places.txt, which tells where they come from.

inline constexpr float kHidden = 1e9F; ///< x and y of a place that isn't shown

struct PlaceOnMap {
    float lat, lon, x, y;
};

struct ProjectionCase {
    std::string name;
    int proj;
    float plat, plon, parm1, parm2;
    int ellipsoid;
    std::vector<PlaceOnMap> places;
};

/// A number of the file; `none` for a dash.
inline float place_number(std::istream &line, float none)
{
    std::string word;
    line >> word;
    return word == "-" ? none : std::stof(word);
}

inline std::vector<ProjectionCase> read_projection_cases()
{
    std::ifstream file(TYR_SOURCE_DIR "/tests/data/projection_places.txt");
    std::vector<ProjectionCase> cases;
    for (std::string text; std::getline(file, text);) {
        std::istringstream line(text);
        if (text.starts_with("case ")) {
            ProjectionCase c = {};
            line.ignore(std::numeric_limits<std::streamsize>::max(), ' ');
            line >> c.proj >> c.plat >> c.plon;
            c.parm1 = place_number(line, kMissing);
            c.parm2 = place_number(line, kMissing);
            line >> c.ellipsoid >> std::ws;
            std::getline(line, c.name);
            cases.push_back(c);
        } else if (!text.empty() && text[0] != '#') {
            PlaceOnMap place = {};
            line >> place.lat >> place.lon;
            place.x = place_number(line, kHidden);
            place.y = place_number(line, kHidden);
            cases.at(cases.size() - 1).places.push_back(place);
        }
    }
    return cases;
}

inline const std::vector<ProjectionCase> &projection_cases()
{
    static const std::vector<ProjectionCase> cases = read_projection_cases();
    return cases;
}
