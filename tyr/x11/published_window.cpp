#include "tyr/x11/published_window.h"

#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

#include "tyr/gks/state_private.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr mode_t kOwnOnly = S_IRWXU;

/// Whether a folder is there, belongs to this user and can be written by nobody else.
bool is_own_folder(const std::string &path)
{
    struct stat about = {};
    return lstat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode) && about.st_uid == getuid() &&
           (about.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace

std::string gwindow_id()
{
    const X11State &x = x11();
    if (!gis_display() || x.window == 0 || x.pixmap == 0) {
        return {};
    }
    // with frames the last of them is what others draw into
    const unsigned long pixmap =
        ginq_frames() > 0 ? ginq_frame_pixmap(kLastFrame) : static_cast<unsigned long>(x.pixmap);
    const WorkstationState &ws = kernel().ws;
    return "+" + std::to_string(x.window) + ":" + std::to_string(pixmap) + ":" +
           std::to_string(ws.first_width) + "x" + std::to_string(ws.first_height) + ":" +
           std::to_string(x.private_map != 0 ? x.private_map : x.default_map);
}

std::string ginq_display_name()
{
    return x11().display != nullptr ? DisplayString(x11().display) : "";
}

std::string gwindow_folder(bool make)
{
    const char *runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && is_own_folder(runtime)) {
        return runtime;
    }
    std::string path = "/tmp/tyr-" + std::to_string(getuid());
    if (make) {
        mkdir(path.c_str(), kOwnOnly);
    }
    return is_own_folder(path) ? path : std::string();
}
