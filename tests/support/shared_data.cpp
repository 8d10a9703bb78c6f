#include "support/shared_data.h"

#include <cstdlib>
#include <filesystem>

std::string shared_data(const std::string &name)
{
    namespace fs = std::filesystem;
    const char *folder = std::getenv("TYR_SHARED_DATA");
    const fs::path path =
        (folder ? fs::path(folder) : fs::path(TYR_SOURCE_DIR) / "../shared/data") / name;
    std::error_code ignored;
    return fs::exists(path, ignored) ? path.lexically_normal().string() : std::string();
}
