#include "tyr/start/installed_data.h"

#include <filesystem>
#include <system_error>

namespace {

constexpr const char *kFolders[] = {"etc", "share/tyr"};
constexpr char kMark[] = "tyr.fnl"; ///< a file that the data always have

} // namespace

std::string tyr::installed_data_folder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return {};
    }
    const std::filesystem::path prefix = program.parent_path().parent_path();
    for (const char *folder : kFolders) {
        const std::filesystem::path path = prefix / folder;
        if (std::filesystem::exists(path / kMark, error)) {
            return path.string();
        }
    }
    return {};
}
