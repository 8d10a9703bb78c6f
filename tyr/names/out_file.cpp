#include "tyr/names/out_file.h"

#include <array>
#include <cctype>
#include <cstring>
#include <string>

#include "tyr/base/ask.h"
#include "tyr/base/file.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"

namespace {

constexpr int kMagicLength = 10;

struct Magic {
    const char *word;
    FileKind kind;
};

constexpr Magic kMagics[] = {
    {"TYRSFC",  kFileSurface },
    {"TYRUPA",  kFileUpperAir},
    {"TYRRAW",  kFileRaw     },
    {"TYRGRID", kFileGrid    },
    {"TYRMETA", kFileMeta    },
    {"TYRIMG",  kFileImage   }
};

/// Kinds of question.
enum Question { kAskOverwrite = 1, kAskAppend = 2 };

int ask_user(const char *name, int kind)
{
    const char *choices = kind == kAskAppend ? "Y,N,Use,Over,App" : "Y,N,Use,Over";
    std::array<char, kAskWordRoom> answer;
    ASK_text(STR_print("%s: exists overwrite (%s): ", name, choices).c_str(), answer.data(),
             kAskWordRoom);
    switch (std::toupper(static_cast<unsigned char>(answer[0]))) {
    case 'Y':
    case 'O':
        return kOutFresh;
    case 'A':
        return kind == kAskAppend ? kOutAppend : kOutUse;
    default:
        return kOutUse;
    }
}

FilePtr open_or_cut(const char *name)
{
    FilePtr file(FILE_open(name, "r"));
    const char *dash = std::strchr(name, '-');
    if (!file && dash) {
        const std::string cut(name, dash);
        if (!FILE_is_std(cut.c_str())) {
            file.reset(FILE_open(cut.c_str(), "r"));
        }
    }
    return file;
}

} // namespace

int FILE_check_out(const char *name, int kind)
{
    if (FILE_is_std(name) || !FILE_exists(name)) {
        return kOutFresh;
    }
    if (PRM_get(kPrmFileParam) >= 1) {
        return static_cast<int>(PRM_get(kPrmFileParam));
    }
    if (PRM_is_batch()) {
        return kOutUse;
    }
    if (kind != kAskOverwrite && kind != kAskAppend) {
        return kOutNone;
    }
    return ask_user(name, kind);
}

int FILE_type(const char *name)
{
    if (FILE_is_std(name)) {
        return -1;
    }
    const FilePtr file = open_or_cut(name);
    if (!file) {
        return -1;
    }
    std::array<char, kMagicLength + 1> start{};
    const size_t length = std::fread(start.data(), 1, kMagicLength, file.get());
    for (const Magic &magic : kMagics) {
        const size_t n = std::strlen(magic.word);
        if (length >= n && std::memcmp(start.data(), magic.word, n) == 0) {
            return magic.kind;
        }
    }
    return -1;
}
