#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "programs/profiler/bufr_library.h"
#include "programs/profiler/driver.h"
#include "programs/profiler/look.h"
#include "programs/profiler/section.h"
#include "programs/profiler/times.h"
#include "tyr/base/ask.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/map/map_grid.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/search.h"
#include "tyr/names/sequence.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/area.h"
#include "tyr/plot/grid_interval.h"
#include "tyr/start/option_codes.h"
#include "tyr/start/options.h"
#include "tyr/var/level.h"
#include "tyr/var/var_file.h"

using namespace tyr;

namespace {

constexpr unsigned kPrint = 15;
constexpr unsigned kError = 48;
constexpr int kDefaultHours = -12;
constexpr int kStationAnswer = 80;

constexpr int kKeyed[] = {kOptHelp,       kOptBatch,
                          kOptMessage,    kOptFilePath,
                          kOptDataPath,   kOptConPath,
                          kOptRawPath,    kOptGridPath,
                          kOptImagePath,  kOptWatchPath,
                          kOptTextPath,   kOptModelPath,
                          kOptSatPath,    kOptCityFile,
                          kOptMapFile,    kOptNameConv,
                          kOptInFile,     kOptOutFile,
                          kOptFileParam,  kOptCurrent,
                          kOptHour,       kOptNumHour,
                          kOptIdentifier, kOptPlotDomain,
                          kOptGridDomain, kOptRegion,
                          kOptStatPrior,  kOptVariable,
                          kOptLevel,      kOptPlotType,
                          kOptPlotScale,  kOptPlotFormat,
                          kOptPlotParam,  kOptDraw,
                          kOptLabel,      kOptConInterval,
                          kOptConBase,    kOptFontList,
                          kOptColorTable, kOptColorText,
                          kOptColorData,  kOptColorMap,
                          kOptColorGrid,  kOptColorLine,
                          kOptColorWind,  kOptColorCloud,
                          kOptColorWx,    kOptColorCmap,
                          kOptColorCont,  kOptColorFill,
                          kOptColorLabel, kOptColorClabel,
                          kOptDevice,     kOptTitle,
                          kOptIcon,       kOptBackground,
                          kOptGeometry,   0};
constexpr int kPositional[] = {kOptFiles, 0};

enum class HeightSetting { kHigh, kLower };

/// The domain of a section and the intervals of its grid.
struct SectionView {
    float bottom, span, height_step, grid_step;
};
constexpr SectionView kHighView = {-1000.0F, 18000.0F, 500.0F, 2000.0F};
constexpr SectionView kLowerView = {-400.0F, 8000.0F, 250.0F, 1000.0F};

void set_name_convention(std::string word)
{
    FILE_set_name(word.data());
}

/// The number behind a word that begins so; one that is none is told at warn.
std::optional<float> wish(const std::string &word, const char *start)
{
    if (!STR_has_prefix(word, start)) {
        return std::nullopt;
    }
    const char *text = word.c_str() + std::strlen(start);
    char *end = nullptr;
    const float value = std::strtof(text, &end);
    if (end == text || *end != '\0' || !std::isfinite(value)) {
        warn_unknown("plot_param", word, {});
        return std::nullopt;
    }
    return value;
}

/// What the user's words `top=`, `bottom=` and `step=` (m) make of a view of heights.
SectionView with_wishes(SectionView view)
{
    constexpr float kMostMetres = 30000.0F;
    constexpr float kLeastStep = 10.0F;
    constexpr float kGridLines = 9.0F; ///< about so many in a picture
    float top = view.bottom + view.span;
    float bottom = view.bottom;
    bool is_wished = false;
    for (const std::string &word : RES_list("plot_param")) {
        if (const auto metres = wish(word, "top=")) {
            top = std::clamp(*metres, -kMostMetres, kMostMetres);
            is_wished = true;
        } else if (const auto floor = wish(word, "bottom=")) {
            bottom = std::clamp(*floor, -kMostMetres, kMostMetres);
            is_wished = true;
        } else if (const auto step = wish(word, "step=")) {
            view.height_step = std::clamp(*step, kLeastStep, kMostMetres);
        }
    }
    if (!is_wished || !(top - bottom >= kLeastStep)) {
        if (is_wished) {
            MSG_out(kMsgWarn, "A section's top must lie above its bottom: %g and %g m\n",
                    static_cast<double>(top), static_cast<double>(bottom));
        }
        return view;
    }
    view.bottom = bottom;
    view.span = top - bottom;
    // 1, 2 or 5 times a power of ten
    const float wide = view.span / kGridLines;
    const float ten = std::pow(10.0F, std::floor(std::log10(wide)));
    view.grid_step = wide <= ten          ? ten
                     : wide <= 2.0F * ten ? 2.0F * ten
                     : wide <= 5.0F * ten ? 5.0F * ten
                                          : 10.0F * ten;
    return view;
}

HeightSetting height_setting()
{
    for (const std::string &word : RES_list("plot_param")) {
        if (STR_casecmp(word.c_str(), "lower") == 0) {
            return HeightSetting::kLower;
        }
    }
    return HeightSetting::kHigh;
}

/// Columns that the span of hours holds, beside the first. A span ahead counts like one back, and
/// files whose names tell no interval count as hourly.
int column_span()
{
    const bool is_known = FILE_get_raw_step() != kMissingInt && FILE_num_step() > 0;
    const int step = is_known ? FILE_num_step() : kSecondsPerHour;
    return std::abs(FILE_num_hours()) / step;
}

void setup_section(HeightSetting heights, DomainRec *domain, DriverSetup *setup)
{
    const SectionView view = with_wishes(heights == HeightSetting::kLower ? kLowerView : kHighView);
    FILE_set_default_hours(kDefaultHours);
    domain->proj = kProjTimeHeight;
    domain->clat = -1.0F;
    domain->clon = view.bottom;
    domain->dx = static_cast<float>(column_span() + 2);
    domain->dy = view.span;
    domain->nx = 25;
    domain->ny = 21;
    setup->mode = kSection;
    setup->height_step = view.height_step;
    PLT_set_margins(0.065F, 0.05F, 0.05F, 0.035F);
    look_at_margins();
    DOM_set_offset(0, 0, 1.0F, -view.grid_step);
}

/// The domain and the level that variables without one of their own take.
void setup_map(const char *level, DomainRec *domain, DriverSetup *setup)
{
    int kind = kMissingInt;
    int value = kMissingInt;
    warn_unless_level(level);
    VAR_level(level, &kind, &value);
    PRM_set(kPrmLevelKind, kind);
    PRM_set(kPrmLevelValue, value);
    constexpr int kPlotProgram = 4;
    DOM_from_resources(domain, kPlotProgram);
    if (!DOM_is_usable(domain)) {
        MSG_out(kError, "Invalid domain\n");
        SYS_exit(kExitDomain);
    }
    setup->mode = kLevelMap;
}

std::vector<std::string> ask_stations(const char *file)
{
    PRF_list_stations(file);
    if (PRM_is_batch() != 0) {
        MSG_out(kError, "No station specified!\n");
        SYS_exit(kExitNoStation);
    }
    std::array<char, kStationAnswer> answer = {};
    ASK_text("Enter the stations: ", answer.data(), kStationAnswer);
    return STR_fields(answer.data(), ',');
}

void print_usage()
{
    std::array<char, kProgramNameRoom> program = {};
    RES_program_name(program.data());
    MSG_out(kPrint, "%s: This program plots profiler data\n", program.data());
    OPT_usage(program.data(), kKeyed, kPositional);
}

void print_version()
{
    const std::string library = tyr::bufr_library_version();
    MSG_out(kPrint, "profiler %s\nBUFR: editions 2 and 3, own table; others %s%s\n", SYS_version(),
            library.empty() ? "refused (built without ecCodes)" : "by ", library.c_str());
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        print_version();
        return kExitNormal;
    }
    OPT_init(argc, argv, kKeyed, kPositional);
    if (PRM_is_help() != 0) {
        print_usage();
        SYS_exit(0);
    }
    MSG_banner("PROFILER DISPLAY PROGRAM");
    set_name_convention("prf_dat");
    for (const std::string &entry : RES_list("in_file")) {
        set_name_convention(entry);
    }
    const HeightSetting heights = height_setting();
    std::array<char, kFileNameRoom> file = {};
    FILE_get_name("Enter the profiler filename: ", file.data());
    DriverSetup setup;
    FILE_get_date(&setup.date);
    setup.file = FILE_exists(file.data()) != 0 ? file.data() : "";
    setup.stations = RES_list("identifier");
    DomainRec domain;
    DOM_init(&domain);
    if (const char *level = RES_get("level")) {
        setup_map(level, &domain, &setup);
        VAR_set_condition_texts(nullptr, level, nullptr); // what has a level of its own is offered
    } else {
        setup_section(heights, &domain, &setup);
    }
    if (setup.stations.empty() && setup.mode != kLevelMap) {
        setup.stations = ask_stations(file.data());
    }
    if (setup.mode == kSection && !setup.stations.empty() && wants_all_times()) {
        setup.columns = std::max(count_columns(setup.stations.front(), setup.date), 1);
        domain.dx = static_cast<float>(setup.columns + 1);
    }
    PRF_setup(setup);
    PRF_select_variable();
    PRF_plot(&domain);
    return 0;
}
