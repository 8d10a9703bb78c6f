#include <array>
#include <cctype>
#include <string_view>

#include "tyr/base/file.h"
#include "tyr/grid_files/grid_file.h"

using namespace tyr;

namespace {

constexpr size_t kLookedAt = 200;
constexpr char kStartOfHeading = 1;

struct Magic {
    std::string_view word;
    GridKind kind;
};
constexpr Magic kMagics[] = {
    {"TYRGRID4",            kGridDescription},
    {"TYRGRID",             kGridText       },
    {"CDF",                 kGridNetcdf     },
    {"GRIB",                kGridGrib       },
    {"*",                   kGridGrib       },
    {{&kStartOfHeading, 1}, kGridGrib       },
    {"GRID",                kGridCoded      },
};

} // namespace

int GRD_file_type(const char *path)
{
    const FilePtr file(FILE_is_std(path) ? nullptr : FILE_open(path, "r"));
    std::array<char, kLookedAt> bytes{};
    const size_t length = file ? std::fread(bytes.data(), 1, bytes.size(), file.get()) : 0;
    const std::string_view start(bytes.data(), length);
    if (start.empty()) {
        return -1;
    }
    if (start[0] == ' ' || std::isdigit(static_cast<unsigned char>(start[0])) != 0) {
        return kGridOldText;
    }
    for (const Magic &magic : kMagics) {
        if (start.substr(0, magic.word.size()) == magic.word) {
            return magic.kind;
        }
    }
    return start.find("GRIB") != std::string_view::npos ? static_cast<int>(kGridGrib) : -1;
}
