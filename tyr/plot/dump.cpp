#include "tyr/plot/dump.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/search.h"
#include "tyr/plot/window_tyrimg.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/window_image_private.h"

using namespace tyr;

namespace {

struct State {
    int kind = kDumpNone;
    std::string name;
    bool has_failed = false;
};

State state;

std::string frame_key(int frame)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%2.2d", frame);
    return text.data();
}

/// Path of a file whose key "i" is that text.
std::string path_of(const std::string &key)
{
    DateRec date{};
    FILE_get_date(&date);
    FILE_save();
    std::string convention = state.name;
    FILE_set_name(convention.data());
    FILE_set_key('i', key.c_str());
    FILE_set_key('p', ginq_app_name());
    std::array<char, kFileNameRoom> name{};
    std::array<char, kFileNameRoom> path{};
    FILE_compose(&date, name.data());
    FILE_restore();
    FILE_join(RES_get("image_path"), name.data(), path.data());
    return path.data();
}

void write(const std::string &path)
{
    const ImageFormat &format = image_format(state.kind);
    errno = 0;
    const int result = state.kind == kDumpImage ? IMG_write_window(path.c_str())
                                                : write_window_image(format, path.c_str());
    if (result == 1) {
        MSG_out(kMsgMess, "Wrote %s file: %s\n", format.dump_name, path.c_str());
    } else {
        const int why = errno;
        state.has_failed = true;
        MSG_out(kMsgWarn, "PLT_dump: Unable to write %s file: %s\n", format.dump_name,
                path.c_str());
        if (why != 0) {
            MSG_out(kMsgWarn, "%s: %s\n", path.c_str(), std::strerror(why));
        }
    }
}

} // namespace

void PLT_set_dump(int kind, const char *name)
{
    state.kind = kind;
    state.name = name != nullptr ? name : "";
    if (state.name.empty()) {
        state.name = image_format(kind).default_file;
    }
}

bool PLT_dump_failed()
{
    return state.has_failed;
}

int PLT_get_dump()
{
    return state.kind;
}

std::string PLT_dump_path()
{
    return state.kind == kDumpNone ? "" : path_of("win");
}

int PLT_dump(int frame)
{
    if (state.kind == kDumpNone) {
        return -1;
    }
    const int frames = ginq_frames();
    if (frames == 0) {
        write(path_of("win"));
    } else if (frame == kAllFrames && frames > 1) {
        for (int i = 0; i < frames; i++) {
            gselect_frame(i);
            write(path_of(frame_key(i)));
        }
    } else {
        const std::string path = path_of(frame_key(ginq_cur_frame()));
        gselect_frame(frame);
        write(path);
    }
    return 0;
}
