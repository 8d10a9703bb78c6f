#include "tyr/base/msg.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdarg>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tyr/base/date.h"
#include "tyr/base/file.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"

namespace {

constexpr unsigned kDefaultMask = 0x000FFFFFU;
constexpr int kDefaultPage = 22;

enum Terminal { kStamped = -1, kLogOnly = 0, kTerminal = 1, kReopen = 2 };
enum Paging { kNoPauses = 0, kPausesAllowed = 1, kCountLines = 2 };

struct State {
    unsigned mask = kDefaultMask;
    int terminal = kTerminal;
    int paging = kPausesAllowed;
    int page_length = kDefaultPage;
    int lines = 0;          ///< newlines shown since the last pause
    int explicit_count = 0; ///< requests of the user for a mask
    FilePtr log;
    std::string log_path; ///< of the form that reopens the log for each message
} state;

struct LevelWord {
    const char *word;
    unsigned mask;
};

constexpr LevelWord kLevels[] = {
    {"none",  0        },
    {"print", kMsgPrint},
    {"error", kMsgError},
    {"warn",  kMsgWarn },
    {"mess",  kMsgMess },
    {"out1",  kMsgOut1 },
    {"out2",  kMsgOut2 },
    {"out3",  kMsgOut3 },
    {"out4",  kMsgOut4 },
    {"debug", kMsgDebug}
};

/// The sinks by the prefix of their word.
struct Sink {
    const char *prefix;
    const char *mode; ///< null: the path is kept and opened for each message
    int terminal;
};

constexpr Sink kSinks[] = {
    {"@fi", "a",     kStamped },
    {"+fi", "a",     kTerminal},
    {"-fi", "w",     kTerminal},
    {"dfi", nullptr, kReopen  },
    {"fi",  "a",     kLogOnly }
};

unsigned with_all_below(unsigned mask)
{
    return mask == 0 ? 0 : ~0U >> std::countl_zero(mask);
}

void set_mask(char sign, unsigned mask)
{
    switch (sign) {
    case '+':
        state.mask |= mask;
        break;
    case '-':
        state.mask &= ~mask;
        break;
    default:
        state.mask = with_all_below(mask);
    }
}

/// A level word without its sign: the bits of its level, narrowed by a last letter a to d.
unsigned level_mask(std::string_view word)
{
    const auto level =
        std::find_if(std::begin(kLevels), std::end(kLevels),
                     [&](const LevelWord &l) { return STR_has_prefix(word, l.word); });
    if (level == std::end(kLevels)) {
        return 0;
    }
    switch (word.back()) {
    case 'a':
    case 'A':
        return level->mask & 0x11111111U;
    case 'b':
    case 'B':
        return level->mask & 0x22222222U;
    case 'c':
    case 'C':
        return level->mask & 0x44444444U;
    case 'd':
    case 'D':
        return level->mask & 0x88888888U;
    default:
        return level->mask;
    }
}

/// What stands behind a prefix and the one character that follows it.
std::string value_behind(const std::string &word, std::string_view prefix)
{
    return word.size() > prefix.size() + 1 ? word.substr(prefix.size() + 1) : std::string();
}

bool take_sink(const std::string &word)
{
    for (const Sink &sink : kSinks) {
        if (!STR_has_prefix(word, sink.prefix)) {
            continue;
        }
        const std::string path = value_behind(word, sink.prefix);
        state.terminal = sink.terminal;
        if (sink.mode) {
            state.log.reset(FILE_open(path.c_str(), sink.mode));
        } else {
            state.log.reset();
            state.log_path = path;
        }
        return true;
    }
    return false;
}

bool take_pager_word(const std::string &word)
{
    constexpr std::string_view kLine = "line";
    if (STR_casecmp(word.c_str(), "nopage") == 0) {
        state.paging = kNoPauses;
    } else if (STR_casecmp(word.c_str(), "page") == 0) {
        state.paging = kCountLines;
    } else if (STR_has_prefix(word, kLine)) {
        const int length = std::atoi(value_behind(word, kLine).c_str());
        state.page_length = length < 1 ? kDefaultPage : length;
    } else {
        return false;
    }
    return true;
}

__attribute__((format(printf, 1, 0))) void write_log(const char *format, va_list arguments)
{
    if (state.terminal == kReopen) {
        state.log.reset(FILE_open(state.log_path.c_str(), "a"));
    }
    if (state.log) {
        if (state.terminal == kStamped) {
            std::array<char, kDateTextRoom> stamp;
            TIME_stamp(stamp.data());
            std::fprintf(state.log.get(), "%s -- ", stamp.data());
        }
        std::vfprintf(state.log.get(), format, arguments);
    }
    if (state.terminal == kReopen) {
        state.log.reset();
    }
}

} // namespace

int MSG_out(unsigned mask, const char *format, ...)
{
    if ((mask & state.mask) == 0) {
        return 0;
    }
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    write_log(format, arguments);
    va_end(arguments);
    const bool shown = state.terminal != kLogOnly;
    if (shown) {
        std::vfprintf((mask & (kMsgError | kMsgWarn)) != 0 ? stderr : stdout, format, again);
    }
    va_end(again);
    if (!shown) {
        return 0;
    }
    if (state.paging == kCountLines) {
        const std::string_view text = format;
        state.lines += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
        if (state.lines > state.page_length) {
            MSG_pause(mask, "Press return to continue\n");
        }
    }
    return 1;
}

int MSG_test(unsigned mask)
{
    return (mask & state.mask) != 0;
}

unsigned MSG_get_mask()
{
    return state.mask;
}

int MSG_explicit()
{
    return state.explicit_count;
}

void MSG_set_mask(int mode, unsigned mask)
{
    constexpr int kExplicitBelow = 5;
    constexpr int kYieldsAbove = 15;
    if (mode < kExplicitBelow) {
        ++state.explicit_count;
    }
    if (mode > kYieldsAbove && state.explicit_count != 0) {
        return;
    }
    switch (mode) {
    case 0:
    case 10:
    case 20:
        set_mask(' ', mask);
        break;
    case 1:
    case 11:
    case 21:
        set_mask('+', mask);
        break;
    case -1:
    case 9:
    case 19:
        set_mask('-', mask);
        break;
    default:
        break;
    }
}

void MSG_options(const char *value)
{
    ++state.explicit_count;
    for (const std::string &word : STR_fields(value ? value : "", ',')) {
        if (word.empty() || take_sink(word) || take_pager_word(word)) {
            continue;
        }
        const bool has_sign = word[0] == '+' || word[0] == '-';
        set_mask(has_sign ? word[0] : ' ', level_mask(has_sign ? word.substr(1) : word));
    }
}

std::vector<std::string_view> tyr::message_words()
{
    std::vector<std::string_view> words = {"nopage", "page", "line"};
    for (const LevelWord &level : kLevels) {
        words.emplace_back(level.word);
    }
    for (const Sink &sink : kSinks) {
        words.emplace_back(sink.prefix);
    }
    return words;
}

void MSG_set_paging(int mode)
{
    state.paging = mode;
}

int MSG_page_length()
{
    return state.page_length;
}

int MSG_pause(unsigned mask, const char *prompt)
{
    if (!MSG_test(mask) || state.terminal == kLogOnly || PRM_is_batch() ||
        state.paging == kNoPauses) {
        return 0;
    }
    const bool both = (mask & kMsgError) != 0 && (mask & kMsgWarn) != 0;
    FILE *stream = both ? stderr : stdout;
    std::fputs(prompt, stream);
    std::fflush(stream);
    std::getchar();
    state.lines = 0;
    return 1;
}

void MSG_banner(const char *title)
{
    MSG_out(kMsgMess, "      %s (Ver %s)\n\n", title, SYS_version());
}
