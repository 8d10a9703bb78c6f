#include "tyr/upper_air/upa_text_file.h"

#include <cctype>
#include <utility>

#include "base/missing.h"
#include "base/msg.h"
#include "base/str.h"
#include "tyr/upper_air/coded_text.h"
#include "tyr/upper_air/row_text.h"
#include "tyr/upper_air/short_text.h"
#include "tyr/upper_air/upa_file.h"

namespace tyr {

namespace {

constexpr size_t kMagicWord = 9;
constexpr size_t kMagicLength = 7;
constexpr size_t kIdLength = 10;
constexpr int kShortTextFirst = 22; // the third line's digits: a count below, "40" of type 2
constexpr float kLowSurface = 500.0F;

int short_text_type(std::string_view text)
{
    WordCursor lines(text);
    lines.word(kMagicWord);
    lines.line();
    lines.line();
    const std::string_view word = lines.word(2);
    int digits = 0;
    for (const char c : word) {
        digits = std::isdigit(static_cast<unsigned char>(c)) != 0 ? 10 * digits + (c - '0') : 0;
    }
    return digits < kShortTextFirst ? kUpaShort : kUpaLonger;
}

} // namespace

const char *upa_magic(int type)
{
    switch (type) {
    case kUpaFixed:
        return "TYRUPA";
    case kUpaFree:
        return "TYRUPA+";
    case kUpaPlaced:
        return "TYRUPAx";
    default:
        return nullptr;
    }
}

int upa_text_type(std::string_view text)
{
    const std::string_view word = WordCursor(text).word(kMagicWord);
    if (word.empty()) {
        return -1;
    }
    if (word.front() == 'W' || word.substr(0, kMagicLength - 1) == upa_magic(kUpaFixed)) {
        const char last = word.size() == kMagicLength ? word.back() : '\0';
        return last == '+' ? kUpaFree : last == 'x' ? kUpaPlaced : kUpaFixed;
    }
    if (word.front() >= '0' && word.front() <= '2') {
        return short_text_type(text);
    }
    return word.front() == 'C' ? 0 : -1;
}

void keep_level(UpaReport *report, int what, bool coded)
{
    UpaReport one;
    UPA_clear_report(&one);
    STR_copy(one.id, sizeof one.id, report->id);
    one.wmo = report->wmo;
    one.lat = report->lat;
    one.lon = report->lon;
    one.elev = report->elev;
    if (what == kUpaHeading || what == kUpaPlace) {
        *report = one;
        return;
    }
    SoundLevel &level = one.mand[0];
    if (what == kUpaSurface && coded) {
        if (report->sig[0].p >= kLowSurface) {
            level.p = report->sig[0].p;
            level.t = report->sig[0].t;
            level.td = report->sig[0].td;
        }
        if (report->wnd[0].z == 0) {
            level.dir = report->wnd[0].dir;
            level.spd = report->wnd[0].spd;
        }
    } else if (what >= 0 && what < kUpaMandatory) {
        level = report->mand[what];
    }
    one.num_mand = 1;
    *report = one;
}

UpaTextFile::UpaTextFile(std::string text, int type, std::string name)
    : text_(std::move(text)), type_(type), name_(std::move(name))
{
    WordCursor lines(text_);
    if (upa_magic(type_) != nullptr) {
        lines.line();
    }
    lines.line();
    starts_ = {lines.at()};
}

std::string UpaTextFile::date_line() const
{
    WordCursor lines(text_);
    if (upa_magic(type_) != nullptr) {
        lines.line();
    }
    return std::string(lines.line());
}

void UpaTextFile::skip_report(WordCursor &words) const
{
    constexpr int kShortLines = 5;
    constexpr int kLongerLines = 7;
    if (type_ == kUpaFixed) {
        skip_fixed_rows(words);
    } else if (type_ == kUpaFree || type_ == kUpaPlaced) {
        words.skip_to_dollar();
    } else {
        for (int i = 0; i < (type_ == kUpaShort ? kShortLines : kLongerLines); ++i) {
            words.line();
        }
    }
}

std::optional<size_t> UpaTextFile::find_report(int index)
{
    while (index >= 0 && starts_.size() <= static_cast<size_t>(index)) {
        WordCursor words(text_, starts_.back());
        if (words.peek().empty()) {
            return std::nullopt;
        }
        skip_report(words);
        starts_.push_back(words.at());
    }
    return index < 0 ? std::nullopt : std::optional<size_t>(starts_[static_cast<size_t>(index)]);
}

void UpaTextFile::read_heading(std::string_view word, UpaReport *report) const
{
    if (type_ == kUpaPlaced) {
        read_placed_heading(word, report);
    } else {
        STR_copy(report->id, sizeof report->id, word.substr(0, kIdLength));
    }
}

// Tells once a file that its last report is cut.
void UpaTextFile::check_end(const WordCursor &words, int index)
{
    const bool dollar = type_ == kUpaFree || type_ == kUpaPlaced;
    WordCursor ahead = words;
    const bool cut = dollar ? !ahead.skip_to_dollar() &&
                                  text_.find_last_of('$') != text_.find_last_not_of(" \t\r\n")
                            : words.at_end() && text_.back() != '\n';
    if (cut && !told_end_) {
        told_end_ = true;
        MSG_out(kMsgWarn, "UPA_read: %s: the file ends inside of report %d\n", name_.c_str(),
                index);
    }
}

int UpaTextFile::read(UpaReport *report, int what, int index)
{
    const std::optional<size_t> place = find_report(index);
    WordCursor words(text_, place.value_or(text_.size()));
    const std::string_view heading = words.word();
    if (heading.empty()) {
        return -1;
    }
    UPA_clear_report(report);
    read_heading(heading, report);
    if (what == kUpaHeading || what == kUpaPlace) {
        return 0;
    }
    if (type_ == kUpaShort || type_ == kUpaLonger) {
        read_short_text(words, type_, report);
    } else {
        read_row_text(words, type_, report);
    }
    take_surface(report);
    check_end(words, index);
    if (what != kUpaWhole) {
        keep_level(report, what, true);
    }
    return 0;
}

} // namespace tyr
