#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "programs/tyrgrid/convert.h"
#include "programs/tyrgrid/inventory.h"
#include "programs/tyrgrid/picture.h"
#include "tyr/base/ask.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/start/option_codes.h"
#include "tyr/start/options.h"
#include "tyr/var/level.h"
#include "tyr/var/time_range.h"
#include "tyr/var/var_file.h"

using namespace tyr;

namespace {

constexpr int kKeyed[] = {
    kOptHelp,        kOptBatch,      kOptMessage,     kOptFilePath,   kOptGridPath,
    kOptImagePath,   kOptCityFile,   kOptMapFile,     kOptGridNum,    kOptVariable,
    kOptLevel,       kOptTime,       kOptTable,       kOptOutFile,    kOptOutput,
    kOptFileParam,   kOptGridDomain, kOptPlotDomain,  kOptRegion,     kOptPlotType,
    kOptPlotScale,   kOptPlotFormat, kOptPlotParam,   kOptDraw,       kOptLabel,
    kOptConInterval, kOptConBase,    kOptFontList,    kOptColorTable, kOptColorText,
    kOptColorMap,    kOptColorGrid,  kOptColorLine,   kOptColorCmap,  kOptColorCont,
    kOptColorFill,   kOptColorLabel, kOptColorClabel, kOptDevice,     kOptTitle,
    kOptIcon,        kOptBackground, kOptGeometry,    kOptInputLong,  0};
constexpr int kPositional[] = {kOptFiles, 0};

void print_usage()
{
    std::array<char, kProgramNameRoom> program = {};
    RES_program_name(program.data());
    MSG_out(kMsgPrint,
            "%s: lists, draws and converts grid files and GRIB. A file alone is listed; -va or -gn "
            "draws, -of writes, -ta lists what was worked out\n",
            program.data());
    OPT_usage(program.data(), kKeyed, kPositional);
}

/// Level and time that variables without their own take: those of the command line, and the time
/// of the first grid.
void put_defaults(GridShelf *shelf)
{
    int kind = kMissingInt;
    int value = kMissingInt;
    if (const char *level = RES_get("level")) {
        warn_unless_level(level);
        VAR_level(level, &kind, &value);
        PRM_set(kPrmLevelKind, kind);
        PRM_set(kPrmLevelValue, value);
    }
    int time = shelf->grids().front().head.time;
    if (const char *text = RES_get("time")) {
        VAR_time(text, &time);
    } else {
        shelf->let_default_time_vary();
    }
    PRM_set(kPrmTime, time);
}

std::vector<std::string> file_names()
{
    std::vector<std::string> names = RES_list("filename");
    if (names.empty() && PRM_is_batch() == 0) {
        std::array<char, kFileNameRoom> answer = {};
        ASK_text("Enter the grid filename: ", answer.data(), static_cast<int>(answer.size()));
        if (answer[0] != '\0') {
            names.emplace_back(answer.data());
        }
    }
    return names;
}

/// Opens what can be opened. @return success: some grid was found
bool open_files(GridShelf *shelf)
{
    const std::vector<std::string> names = file_names();
    if (names.empty()) {
        MSG_out(kMsgError, "No grid file was named\n");
    }
    for (const std::string &name : names) {
        std::array<char, kFileNameRoom> path = {};
        FILE_join(RES_get("grid_path"), name.c_str(), path.data());
        const bool is_grib = STR_casecmp(RES_get("input"), "grib") == 0;
        if (shelf->add(path.data(), is_grib ? kGridGrib : kGridUnknown) == 0) {
            MSG_out(kMsgWarn, "%s: no grid in it\n", path.data());
        }
    }
    return !shelf->grids().empty();
}

int list_or_write(GridShelf *shelf)
{
    GridChoice choice(shelf);
    if (!choice.gather()) {
        return kExitNothing;
    }
    if (RES_get("out_file") != nullptr) {
        return write_grids(&choice) ? kExitNormal : kExitNoDump;
    }
    return list_grids(&choice) > 0 ? kExitNormal : kExitNothing;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::printf("tyrgrid %s\n", SYS_version());
        return kExitNormal;
    }
    OPT_init(argc, argv, kKeyed, kPositional);
    if (PRM_is_help() != 0) {
        print_usage();
        return kExitNormal;
    }
    GridShelf shelf;
    if (!open_files(&shelf)) {
        return kExitNoFile;
    }
    put_defaults(&shelf);
    VAR_open_file(nullptr);
    const bool is_named = RES_get("variable") != nullptr || RES_get("grid_num") != nullptr;
    const bool is_picture =
        is_named && RES_get("out_file") == nullptr && RES_get("table") == nullptr;
    return is_picture ? draw_grids(&shelf) : list_or_write(&shelf);
}
