#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "programs/tyrraw/analyze.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/raw_math/raw_math.h"
#include "tyr/start/option_codes.h"
#include "tyr/start/options.h"

using namespace tyr;

namespace {

constexpr int kKeyed[] = {kOptHelp,
                          kOptBatch,
                          kOptMessage,
                          kOptFilePath,
                          kOptRawPath,
                          kOptGridPath,
                          kOptCityFile,
                          kOptCurrent,
                          kOptIdentifier,
                          kOptParameter,
                          kOptPlotFormat,
                          kOptObjectParam,
                          kOptGridDomain,
                          kOptPlotDomain,
                          kOptRegion,
                          kOptOutput,
                          kOptFileParam,
                          kOptPlotParam,
                          0};
constexpr int kPositional[] = {kOptFiles, 0};

void print_usage()
{
    std::array<char, kProgramNameRoom> program = {};
    RES_program_name(program.data());
    MSG_out(kMsgPrint,
            "%s: works with raw data files of station values\n"
            "  sum|max|min|copy|merge file file ... = out [text [date]]\n"
            "  file|#number add|sub|mul|div|mod|ge|le file|#number = out [text [date]]\n"
            "  ext file-column = out\n"
            "  series file-column:label ... = out [text [date]]\n"
            "  analyze file-column = grid\n",
            program.data());
    OPT_usage(program.data(), kKeyed, kPositional);
}

int run(std::vector<std::string> words)
{
    if (STR_casecmp(words[0].c_str(), "analyze") == 0) {
        return analyze(words);
    }
    std::vector<char *> pointers;
    pointers.reserve(words.size());
    for (std::string &word : words) {
        pointers.push_back(word.data());
    }
    const int is_done = RAW_math_command(static_cast<int>(pointers.size()), pointers.data());
    return is_done == 1 ? kExitNormal : kExitNothing;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::printf("tyrraw %s\n", SYS_version());
        return kExitNormal;
    }
    OPT_init(argc, argv, kKeyed, kPositional);
    const std::vector<std::string> words = RES_list("filename");
    if (PRM_is_help() != 0) {
        print_usage();
        return kExitNormal;
    }
    if (words.empty()) {
        MSG_out(kMsgError, "No command was given; -h tells of them\n");
        return kExitNothing;
    }
    return run(words);
}
