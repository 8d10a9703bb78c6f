#pragma once

#include <string_view>
#include <vector>

// Messages to the user: levels, sinks (terminal and log), the pager, the banner.

/// Level masks; single bits of a level are its sub-levels a (lowest) to d.
inline constexpr unsigned kMsgPrint = 0x0000000FU; ///< prompts, menus, help, results asked for
inline constexpr unsigned kMsgError = 0x00000030U;
inline constexpr unsigned kMsgWarn = 0x000000C0U;
inline constexpr unsigned kMsgMess = 0x00000F00U; ///< progress
inline constexpr unsigned kMsgOut1 = 0x0000F000U;
inline constexpr unsigned kMsgOut2 = 0x000F0000U;
inline constexpr unsigned kMsgOut3 = 0x00F00000U;
inline constexpr unsigned kMsgOut4 = 0x0F000000U;
inline constexpr unsigned kMsgDebug = 0xF0000000U;
inline constexpr unsigned kMsgWarnA = 0x00000040U; ///< a failure that its caller may tell of too
inline constexpr unsigned kMsgDebugA = 0x10000000U;
inline constexpr unsigned kMsgDebugB = 0x20000000U;
inline constexpr unsigned kMsgDebugC = 0x40000000U;
inline constexpr unsigned kMsgDebugD = 0x80000000U;

/// Shows a text: to the log if one is open, and to standard output, or to standard error when the
/// mask holds a bit of error or warn. Returns 1 if it went to the terminal, else 0 (the mask has no
/// bit in common with the message mask, or the terminal is off).
int MSG_out(unsigned mask, const char *format, ...) __attribute__((format(printf, 2, 3)));
/// 1 if a message of this mask would be shown: guards costly read-outs.
int MSG_test(unsigned mask);
unsigned MSG_get_mask();
/// How many times the mask has been set by the user's own request.
int MSG_explicit();
/// Changes the mask. Modes 0, 10, 20 set it to `mask` with every bit below its highest; 1, 11, 21
/// add; -1, 9, 19 clear. Modes below 5 count as explicit; modes above 15 yield to explicit ones.
void MSG_set_mask(int mode, unsigned mask);
/// The option value: comma list of level words (`warn`, `+debug`, `out2b`), sinks (`fi=path` log
/// only, `+fi=` log and terminal, `-fi=` the same afresh, `@fi=` with times, `dfi=` reopened for
/// each message) and pager words (`page`, `nopage`, `line=n`).
void MSG_options(const char *value);
/// 0 no pauses, 1 pauses without counting, 2 lines counted and a pause at the page's end.
void MSG_set_paging(int mode);
/// Lines of a page of the pager, as the word `line=n` sets it.
int MSG_page_length();
/// Shows a prompt and waits for a character. Returns 1, or 0 with nothing done when the mask isn't
/// shown, the terminal is off, paging is 0 or in batch mode.
int MSG_pause(unsigned mask, const char *prompt);
/// The program's title line with the version.
void MSG_banner(const char *title);

namespace tyr {

/// Beginnings of the words that MSG_options knows, without the signs of levels.
std::vector<std::string_view> message_words();

} // namespace tyr
