#pragma once

#include <string>
#include <vector>

#include "tyr/base/date.h"

enum PlotMode {
    kLevelMap = 71, ///< all stations of one file at a level, on a map
    kSection = 73,  ///< one station: a column a file, height up
};

/// What the command line settled, once, before the first plot.
struct DriverSetup {
    PlotMode mode = kSection;
    float height_step = 500.0F;        ///< m between symbols up a column
    std::vector<std::string> stations; ///< the first is drawn
    DateRec date = {};                 ///< of the file chosen
    int columns = 0;                   ///< of a section of every time in its files; else 0
    std::string file;                  ///< of the map, where one was given by its name
};
