#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "programs/tyrsound/listings.h"
#include "tyr/base/ask.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/field/sounding_page.h"
#include "tyr/start/option_codes.h"
#include "tyr/start/options.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/held_report.h"
#include "tyr/upper_air/raw_sounding.h"
#include "tyr/upper_air/report_out.h"
#include "tyr/upper_air/sounding_store.h"

using namespace tyr;

namespace {

constexpr int kKeyed[] = {kOptHelp,       kOptBatch,      kOptMessage,
                          kOptFilePath,   kOptDataPath,   kOptCityFile,
                          kOptCurrent,    kOptIdentifier, kOptVariable,
                          kOptTable,      kOptOutFile,    kOptOutput,
                          kOptFileParam,  kOptPlotType,   kOptPlotParam,
                          kOptDraw,       kOptFontList,   kOptColorTable,
                          kOptColorText,  kOptColorWind,  kOptColorHodo,
                          kOptDevice,     kOptTitle,      kOptIcon,
                          kOptBackground, kOptGeometry,   0};
constexpr int kPositional[] = {kOptFiles, 0};

struct PageWord {
    const char *word;
    SoundingPage kind;
};
constexpr PageWord kPages[] = {
    {"skewt",   SoundingPage::kSkewT    },
    {"tephi",   SoundingPage::kTephigram},
    {"upright", SoundingPage::kUpright  },
    {"hodo",    SoundingPage::kHodograph},
};

/// What is wanted of each sounding.
struct Wishes {
    std::vector<std::string> listings;
    std::vector<SoundingPage> pages;
    bool lists = false;

    bool any() const { return lists || !pages.empty(); }
};

void print_usage()
{
    std::array<char, kProgramNameRoom> program = {};
    RES_program_name(program.data());
    MSG_out(kMsgPrint,
            "%s: lists, draws and converts soundings. Files alone are listed, a line a report; -id "
            "or -va skewt|tephi|upright|hodo draws, -ta or -va "
            "levels|windlevels|indices|winds|storm prints, -of writes\n",
            program.data());
    OPT_usage(program.data(), kKeyed, kPositional);
}

/// @return success; a word that is nothing is told
bool read_wishes(bool is_named, Wishes *wishes)
{
    for (const std::string &word : RES_list("variable")) {
        const size_t before = wishes->pages.size();
        for (const PageWord &page : kPages) {
            if (STR_casecmp(word.c_str(), page.word) == 0) {
                wishes->pages.push_back(page.kind);
            }
        }
        if (is_listing(word)) {
            wishes->listings.push_back(word);
        } else if (wishes->pages.size() == before) {
            MSG_out(kMsgError, "%s: neither a picture nor a listing; -h tells them\n",
                    word.c_str());
            return false;
        }
    }
    if (wishes->pages.size() > 1) {
        MSG_out(kMsgError, "More than one picture was asked for\n");
        return false;
    }
    wishes->lists = !wishes->listings.empty() || RES_get("table") != nullptr;
    if (!wishes->any() && is_named) {
        wishes->pages.push_back(SoundingPage::kSkewT);
    }
    return true;
}

/// Lists and draws the sounding in force. @return exit code
int show(const Wishes &wishes)
{
    if (wishes.lists) {
        print_listings(wishes.listings);
    }
    return wishes.pages.empty() ? kExitNormal : draw_sounding_page(wishes.pages.front());
}

std::vector<std::string> file_names()
{
    std::vector<std::string> names = RES_list("filename");
    if (names.empty() && PRM_is_batch() == 0) {
        std::array<char, kFileNameRoom> answer = {};
        ASK_text("Enter the upper-air filename: ", answer.data(), static_cast<int>(answer.size()));
        if (answer[0] != '\0') {
            names.emplace_back(answer.data());
        }
    }
    return names;
}

/// The one sounding of a raw sounding file: drawn where a device is told, else listed.
int show_raw(const std::string &path)
{
    THERM_read_raw(path.c_str());
    if (THERM_store().num_temps == 0) {
        MSG_out(kMsgError, "%s: no level in it\n", path.c_str());
        return kExitNothing;
    }
    THERM_compute();
    if (const char *out = RES_get("out_file")) {
        return write_sounding(out, RES_get("output"));
    }
    Wishes wishes;
    if (!read_wishes(RES_get("device") != nullptr, &wishes)) {
        return kExitNothing;
    }
    wishes.lists = wishes.lists || !wishes.any();
    return show(wishes);
}

/// Lists all soundings that were chosen, and draws the first: a plot has one picture.
int show_reports(const std::vector<HeldReport> &chosen, Wishes wishes)
{
    bool is_shown = false;
    for (const HeldReport &held : chosen) {
        if (is_shown && !wishes.lists) {
            MSG_out(kMsgMess, "One picture a run: -id chooses another sounding\n");
            break;
        }
        if (!analyse(held)) {
            continue;
        }
        const int code = show(wishes);
        if (code != kExitNormal) {
            return code;
        }
        is_shown = true;
        wishes.pages.clear();
    }
    if (!is_shown) {
        MSG_out(kMsgError, "No sounding to show\n");
        return kExitNothing;
    }
    return kExitNormal;
}

int run(const std::vector<HeldReport> &held)
{
    std::vector<std::string> names = RES_list("identifier");
    const bool is_list = names.size() == 1 && STR_casecmp(names[0].c_str(), "list") == 0;
    if (is_list) {
        names.clear();
    }
    const std::vector<HeldReport> chosen = chosen_reports(held, names);
    if (chosen.empty()) {
        return kExitNoStation;
    }
    if (const char *out = RES_get("out_file")) {
        return write_reports(out, RES_get("output"), chosen);
    }
    Wishes wishes;
    if (!read_wishes(!names.empty(), &wishes)) {
        return kExitNothing;
    }
    if (is_list || !wishes.any()) {
        list_stations(chosen);
        return kExitNormal;
    }
    return show_reports(chosen, wishes);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::printf("tyrsound %s\n", SYS_version());
        return kExitNormal;
    }
    OPT_init(argc, argv, kKeyed, kPositional);
    if (PRM_is_help() != 0) {
        print_usage();
        return kExitNormal;
    }
    MSG_set_paging(0);
    if (const char *out = RES_get("out_file"); out != nullptr && FILE_is_std(out) != 0) {
        MSG_set_mask(-1, kMsgMess); // the reports stand there alone
    }
    std::vector<HeldReport> held;
    const std::vector<std::string> names = file_names();
    if (names.empty()) {
        MSG_out(kMsgError, "No upper-air file was named\n");
    }
    for (const std::string &name : names) {
        std::array<char, kFileNameRoom> path = {};
        FILE_join(RES_get("data_path"), name.c_str(), path.data());
        if (names.size() == 1 && is_raw_sounding(path.data())) {
            return show_raw(path.data());
        }
        hold_reports(path.data(), &held);
    }
    return held.empty() ? kExitNoFile : run(held);
}
