#include "programs/tyrraw/analyze.h"

#include <array>
#include <cstdlib>

#include "tyr/analysis/observations.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/grid/grid.h"
#include "tyr/grid_files/grid_out.h"
#include "tyr/place/domain_text.h"
#include "tyr/raw/raw.h"

namespace tyr {

namespace {

constexpr size_t kWords = 4;
constexpr int kDefaultRegion = 4;

bool find_domain(DomainRec *domain)
{
    DOM_init(domain);
    if (const char *text = RES_get("grid_domain")) {
        DOM_decode(text, domain);
    } else {
        DOM_from_resources(domain, kDefaultRegion);
    }
    if (DOM_is_usable(domain)) {
        return true;
    }
    MSG_out(kMsgError, "Invalid domain\n");
    return false;
}

/// Takes a file's word apart. @return the path; empty where there is no such file, told
std::string path_of(const std::string &word, int *column)
{
    std::array<char, kFileNameRoom> name = {};
    STR_copy(name.data(), name.size(), word);
    char *format = nullptr;
    const int handle = RAW_file_open(name.data(), column, &format, kRawRead);
    if (handle == -1) {
        return "";
    }
    RAW_close(handle);
    *column = *column == kRawAllWords ? static_cast<int>(kRawFirstValue) : *column;
    std::array<char, kFileNameRoom> path = {};
    FILE_join(RES_get("raw_path"), name.data(), path.data());
    return path.data();
}

} // namespace

int analyze(const std::vector<std::string> &words)
{
    if (words.size() != kWords || words[2] != "=") {
        MSG_out(kMsgError, "analyze: file-column = grid\n");
        return kExitNothing;
    }
    const std::string &out = words[3];
    const int kind = GRD_output_kind(out.c_str());
    if (kind == kGridUnknown) {
        MSG_out(kMsgError, "%s: not a kind of grid file that can be written\n", RES_get("output"));
        return kExitNoDump;
    }
    DomainRec domain;
    if (!find_domain(&domain)) {
        return kExitDomain;
    }
    int column = 0;
    const std::string path = path_of(words[1], &column);
    if (path.empty()) {
        return kExitNoFile;
    }
    GridRec grid;
    const int stations = OBJ_analyze_raw(path.c_str(), column, &domain, &grid);
    if (stations < 1) {
        return kExitNothing;
    }
    MSG_out(kMsgMess, "%s: %d stations\n", path.c_str(), stations);
    const int is_saved = GRD_save_file(out.c_str(), &grid, nullptr, kind);
    GRD_free(&grid);
    return is_saved == 1 ? kExitNormal : kExitNoDump;
}

} // namespace tyr
