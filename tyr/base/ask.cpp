#include "tyr/base/ask.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"

namespace {

constexpr int kLineLength = 79;
constexpr unsigned kLesser = 2048;
constexpr size_t kWordAllocation = 81;

using Line = std::array<char, kLineLength + 1>;

/// Reads the answer's line, cut to its room; the end of the input ends the run.
Line read_line()
{
    Line line;
    size_t n = 0;
    int c = std::getchar();
    if (c == EOF) {
        SYS_exit(kExitNormal);
    }
    for (; c != EOF && c != '\n'; c = std::getchar()) {
        if (n < kLineLength && c != '\0') {
            line[n++] = static_cast<char>(c);
        }
    }
    line[n] = '\0';
    STR_clean_line(line.data());
    return line;
}

std::string first_word(const char *line, size_t longest)
{
    constexpr const char *kBlanks = " \t\v\f\r\n";
    line += std::strspn(line, kBlanks);
    return std::string(line, std::min(std::strcspn(line, kBlanks), longest));
}

/// Asks until a word of at most `longest` characters is there and no command was served.
std::string ask_word(const char *prompt, size_t longest, bool word_is_command)
{
    for (;;) {
        MSG_out(kMsgPrint, "%s", prompt);
        const Line line = read_line();
        std::string word = first_word(line.data(), longest);
        const bool was_command = ASK_command(word_is_command ? word.c_str() : line.data()) != 0;
        if (!was_command && !word.empty()) {
            return word;
        }
    }
}

void set_resource(const char *line)
{
    Line name{};
    int value_at = 0;
    const int read = std::sscanf(line, "%*s %79[^= ]%*[= ]%n", name.data(), &value_at);
    if (read == 1) {
        RES_put(name.data(), value_at > 0 ? line + value_at : "");
        return;
    }
    MSG_out(kLesser, "Set resources\n");
    RES_print_all();
    MSG_out(kLesser, "\n");
}

char *allocated(char *answer, size_t room)
{
    return answer ? answer : static_cast<char *>(std::malloc(room));
}

} // namespace

char *ASK_text(const char *prompt, char *answer, int size)
{
    const auto room = static_cast<size_t>(std::max(size, 2));
    char *out = allocated(answer, room + 1);
    if (out) {
        STR_copy(out, room, ask_word(prompt, room - 1, false));
    }
    return out;
}

char *ASK_word(const char *prompt, char *answer)
{
    char *out = allocated(answer, kWordAllocation);
    if (out) {
        STR_copy(out, kAskWordRoom, ask_word(prompt, kAskWordRoom - 1, true));
    }
    return out;
}

float ASK_real(const char *prompt)
{
    for (;;) {
        const std::string word = ask_word(prompt, kLineLength, false);
        char *end = nullptr;
        const float value = std::strtof(word.c_str(), &end);
        if (end != word.c_str()) {
            return value;
        }
    }
}

int ASK_int(const char *prompt)
{
    for (;;) {
        const std::string word = ask_word(prompt, kLineLength, false);
        char *end = nullptr;
        const long value = std::strtol(word.c_str(), &end, 10);
        if (end != word.c_str()) {
            return static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX));
        }
    }
}

int ASK_command(const char *line)
{
    if (STR_has_prefix(line, "set")) {
        set_resource(line);
        return 1;
    }
    if (STR_has_prefix(line, "exit")) {
        SYS_exit(kExitNormal);
    }
    return 0;
}
