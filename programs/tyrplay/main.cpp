// Plays metafiles on any device, several on one page.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "programs/tyrplay/ground.h"
#include "tyr/base/ask.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/paper/metafile_reader.h"
#include "tyr/plot/area.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/plot_session.h"
#include "tyr/start/option_codes.h"
#include "tyr/start/options.h"
#include "tyr/x11/frames.h"

using namespace tyr;

namespace {

constexpr int kKeyed[] = {kOptHelp,       kOptBatch,
                          kOptMessage,    kOptFilePath,
                          kOptImagePath,  kOptFontList,
                          kOptColorTable, kOptPlotParam,
                          kOptDevice,     kOptTitle,
                          kOptIcon,       kOptBackground,
                          kOptGeometry,   0};
constexpr int kPositional[] = {kOptFiles, 0};

constexpr char kMark[] = "TYRMETA";   ///< the first line of a text metafile
constexpr int kMaxColumns = 100;      ///< of pictures on a page
constexpr float kGap = 0.01F;         ///< between pictures, as a fraction of the page
constexpr unsigned char kCgmMark = 0; ///< first byte of the binary form

/// How the pictures stand on the page.
struct Layout {
    int columns = 0; ///< 0: as many as make the panels about as wide as high
    bool is_over = false;
    bool keeps_colours = false; ///< black and white never change places
};

struct State {
    std::vector<std::string> files;
    Layout layout;
    bool is_damaged = false;
};

State state;

/// What `plot_param` says of the page: `cols=N`, `over`, `keep`.
Layout read_layout()
{
    Layout layout;
    for (const std::string &word : RES_list("plot_param")) {
        if (STR_ncasecmp(word.c_str(), "cols=", 5) == 0) {
            layout.columns = std::clamp(std::atoi(word.c_str() + 5), 0, kMaxColumns);
        } else if (STR_casecmp(word.c_str(), "over") == 0) {
            layout.is_over = true;
        } else if (STR_casecmp(word.c_str(), "keep") == 0) {
            layout.keeps_colours = true;
        }
    }
    return layout;
}

/// Whether a file is there and a text metafile; what it is instead is told.
bool is_playable(const std::string &path)
{
    const FilePtr file(FILE_open(path.c_str(), "r"));
    std::array<char, sizeof kMark> start{};
    if (!file || FILE_exists(path.c_str()) != 1) {
        MSG_out(kMsgError, "tyrplay: %s: %s\n", path.c_str(),
                file ? "not a file" : std::strerror(errno));
        return false;
    }
    const size_t count = std::fread(start.data(), 1, start.size() - 1, file.get());
    if (std::strncmp(start.data(), kMark, start.size() - 1) == 0) {
        return true;
    }
    const bool is_binary = count > 1 && static_cast<unsigned char>(start[0]) == kCgmMark;
    MSG_out(kMsgError, "tyrplay: %s: %s\n", path.c_str(),
            count == 0 ? "is empty"
            : is_binary
                ? "a binary metafile, which can't be played (draw it with -de m,file, without cgm)"
                : "not a metafile: its first line isn't TYRMETA");
    return false;
}

/// The part of the page that picture number `i` of `count` takes; they go along rows from the top.
std::array<float, 4> panel_of(int i, int count)
{
    std::array<float, 4> page{};
    GPH_get_view_frac(page.data());
    if (state.layout.is_over) {
        return page;
    }
    const int wished = state.layout.columns > 0
                           ? state.layout.columns
                           : static_cast<int>(std::ceil(std::sqrt(static_cast<float>(count))));
    const int columns = std::min(wished, count);
    const int rows = (count + columns - 1) / columns;
    const float width = (page[1] - page[0]) / static_cast<float>(columns);
    const float height = (page[3] - page[2]) / static_cast<float>(rows);
    const float gap_x = columns > 1 ? kGap * width : 0.0F;
    const float gap_y = rows > 1 ? kGap * height : 0.0F;
    const float x = page[0] + width * static_cast<float>(i % columns);
    const int row = i / columns;
    const float y = page[3] - height * static_cast<float>(row + 1);
    return {x + gap_x, x + width - gap_x, y + gap_y, y + height - gap_y};
}

/// Whether a picture was drawn for the other kind of ground than the page has. A metafile keeps it.
bool is_for_other_ground(const std::string &path)
{
    const Ground other = PLT_is_light() != 0 ? Ground::kDark : Ground::kLight;
    return !state.layout.keeps_colours && gis_metafile() == 0 && ground_of(path) == other;
}

void play_all()
{
    const int count = static_cast<int>(state.files.size());
    for (int i = 0; i < count; i++) {
        const std::string &file = state.files[static_cast<size_t>(i)];
        MSG_out(kMsgMess, "Playing: %s\n", file.c_str());
        gmessage(1, ("Metafile: " + file).c_str());
        const std::array<float, 4> panel = panel_of(i, count);
        const int swap = is_for_other_ground(file) ? 1 : 0;
        if (gread_metafile_panel(file.c_str(), panel.data(), swap) != 0) {
            state.is_damaged = true;
        }
    }
    gupdate_ws();
}

/// A window of a new size gets the pictures in that size.
void on_event(int, const char *event, float, float)
{
    if (std::strcmp(event, "size") == 0 && PLT_restart(0.0F) == 0) {
        play_all();
    }
}

std::vector<std::string> asked_files()
{
    if (PRM_is_batch() != 0) {
        MSG_out(kMsgError, "tyrplay: No metafile named\n");
        SYS_exit(kExitNoFile);
    }
    std::array<char, kFileNameRoom> answer{};
    ASK_text("Enter the metafiles: ", answer.data(), kFileNameRoom);
    return STR_fields(answer.data(), ',');
}

/// The files that can be played.
std::vector<std::string> playable_files()
{
    std::vector<std::string> files = RES_list("filename");
    if (files.empty()) {
        files = asked_files();
    }
    const size_t named = files.size();
    std::erase_if(files, [](const std::string &path) { return !is_playable(path); });
    state.is_damaged = files.size() < named;
    return files;
}

void print_usage()
{
    MSG_out(kMsgPrint, "tyrplay: This program plays metafiles on any device\n");
    OPT_usage("tyrplay", kKeyed, kPositional);
    MSG_out(kMsgPrint, "Plot parameters: cols=N pictures side by side, over: on each other,\n"
                       "   keep: black and white as in the file on any ground\n");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        MSG_out(kMsgPrint, "tyrplay %s\n", SYS_version());
        return kExitNormal;
    }
    OPT_init(argc, argv, kKeyed, kPositional);
    if (PRM_is_help() != 0) {
        print_usage();
        SYS_exit(kExitNormal);
    }
    MSG_banner("METAFILE PLAYER");
    state.files = playable_files();
    if (state.files.empty()) {
        SYS_exit(kExitNoFile);
    }
    state.layout = read_layout();
    if (PLT_begin(0.0F) == 0) {
        PLT_set_callback(on_event);
        play_all();
        PLT_dump(kCurrentFrame);
        PLT_end();
    }
    SYS_exit(PLT_dump_failed() ? kExitNoDump : state.is_damaged ? kExitNoFile : kExitNormal);
}
