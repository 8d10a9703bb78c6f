#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/str.h"
#include "tyr/grib/grib.h"
#include "var/catalogue.h"
#include "var/data_file.h"

namespace {

constexpr const char *kFileName = "grib2_var.lup";
constexpr int kDisciplineWeight = 1000000;
constexpr int kCategoryWeight = 1000;

struct Parameter {
    int centre, discipline, category, number;
    std::string name, units;
};

/// The list, read at its first use from the folder in force, and anew where that has changed.
struct State {
    std::string path;
    std::vector<Parameter> list;
} state;

void load(const std::string &path)
{
    state.path = path;
    state.list.clear();
    const FilePtr file = VAR_open_data(kFileName);
    std::string line;
    while (file != nullptr && VAR_next_line(file.get(), &line)) {
        constexpr int kFields = 6;
        Parameter p;
        char name[20];
        char units[30];
        if (line.empty() || line[0] == '#' ||
            std::sscanf(line.c_str(), "%d %d %d %d %19s %29s", &p.centre, &p.discipline,
                        &p.category, &p.number, name, units) != kFields) {
            continue;
        }
        p.name = name;
        p.units = std::string_view(units) == "-" ? "" : units;
        state.list.push_back(p);
    }
}

const Parameter *find(int centre, int discipline, int category, int number)
{
    const std::string path = VAR_data_path(kFileName);
    if (path != state.path) {
        load(path);
    }
    for (const Parameter &p : state.list) {
        if (p.discipline == discipline && p.category == category && p.number == number &&
            (p.centre == 0 || p.centre == centre)) {
            return &p;
        }
    }
    return nullptr;
}

} // namespace

void GRIB_find_param(GridRec *out, int centre, int discipline, int category, int number)
{
    out->var = kDisciplineWeight * discipline + kCategoryWeight * category + number;
    out->units[0] = '\0';
    const Parameter *known = find(centre, discipline, category, number);
    if (known == nullptr) {
        return;
    }
    STR_copy(out->units, sizeof out->units, known->units);
    if (const CatalogueEntry *entry = VAR_find_abbr(known->name.c_str())) {
        out->var = entry->numbers[0];
    }
}
