#include "tyr/var/data_file.h"

#include <array>

#include "tyr/base/res.h"
#include "tyr/base/str.h"

namespace {

constexpr int kLineLength = 1000;

} // namespace

std::string VAR_data_path(const char *name)
{
    const char *folder = RES_get("file_path");
    if (folder != nullptr && STR_casecmp(folder, "none") == 0) {
        folder = nullptr;
    }
    std::array<char, kFileNameRoom> path{};
    return FILE_join(folder, name, path.data());
}

FilePtr VAR_open_data(const char *name)
{
    return FilePtr(FILE_open(VAR_data_path(name).c_str(), "r"));
}

bool VAR_next_line(FILE *stream, std::string *line)
{
    std::array<char, kLineLength + 1> buffer{};
    if (STR_read_cut_line(stream, buffer.data(), kLineLength) < 0) {
        return false;
    }
    STR_clean_line(buffer.data());
    *line = buffer.data();
    return true;
}
