#include "tyr/start/installed_data.h"

#include <filesystem>
#include <system_error>

#include <sys/auxv.h>

namespace {

constexpr const char *kFolders[] = {"etc", "share/tyr"};
constexpr char kMark[] = "tyr.fnl"; ///< a file that the data always have

} // namespace

std::string tyr::installed_data_folder()
{
    std::error_code error;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) { // a root without /proc: the name that the program was started by
        const char *name = reinterpret_cast<const char *>(getauxval(AT_EXECFN));
        program = std::filesystem::canonical(name != nullptr ? name : "", error);
        if (error) {
            return {};
        }
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
