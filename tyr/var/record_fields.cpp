#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/number.h"
#include "tyr/base/str.h"
#include "tyr/var/level.h"
#include "tyr/var/record_fields_private.h"
#include "tyr/var/time_range.h"
#include "tyr/var/type_words.h"

using namespace tyr;

namespace {

/// A text into a field of a record; one that doesn't fit is refused and the field stays.
void set_field(char *field, size_t room, const std::string &text, const char *what)
{
    if (text.size() < room) {
        STR_copy(field, room, text);
    } else {
        MSG_out(kMsgWarn, "VAR_process_var: The %s has more than %d characters: %s\n", what,
                static_cast<int>(room) - 1, text.c_str());
    }
}

} // namespace

std::vector<std::string> tyr::split_fields(std::string_view text)
{
    std::string plain(text);
    STR_unescape(plain.data());
    plain.resize(plain.find('\0') == std::string::npos ? plain.size() : plain.find('\0'));
    return STR_fields(plain, ':');
}

std::string tyr::field_text(const std::vector<std::string> &fields, size_t i)
{
    return i < fields.size() ? std::string(VAR_trim(fields[i])) : std::string();
}

void tyr::set_units(VarRec *record, const std::string &units)
{
    if (!units.empty()) {
        set_field(record->units, kVarUnitsSize, units, "unit");
    }
}

void tyr::set_format(VarRec *record, const std::vector<std::string> &fields, size_t f)
{
    if (f >= fields.size()) {
        return;
    }
    std::string format = fields[f];
    for (++f; f < fields.size(); ++f) {
        format += ":" + fields[f];
    }
    set_field(record->format, kVarFormatSize, std::string(VAR_trim(format)), "format");
}

int tyr::word_type(const std::string &word)
{
    static constexpr struct {
        const char *word;
        int type;
    } kWords[] = {
        {"map",   kTypeMap  },
        {"plot",  kTypePlot },
        {"frame", kTypeFrame},
        {"panel", kTypePanel}
    };
    for (const auto &row : kWords) {
        if (STR_casecmp(word.c_str(), row.word) == 0) {
            return row.type;
        }
    }
    return -1;
}

size_t tyr::settle_time_and_level(const std::vector<std::string> &fields, VarRec *record)
{
    if (fields.size() > 2) {
        record->time_class = VAR_time(field_text(fields, 0).c_str(), &record->time);
        if (record->time_class != 0) {
            warn_unless_level(field_text(fields, 1).c_str());
            record->level_class =
                VAR_level(field_text(fields, 1).c_str(), &record->level_kind, &record->level_value);
            return 2;
        }
    }
    if (record->time == kMissingInt) {
        record->time_class = VAR_time("", &record->time);
    }
    if (record->level_kind == kMissingInt) {
        record->level_class = VAR_level("", &record->level_kind, &record->level_value);
    }
    return 0;
}

size_t tyr::find_closing(std::string_view text, size_t open, char closing)
{
    int depth = 0;
    for (size_t i = open; i < text.size(); ++i) {
        if (text[i] == text[open]) {
            ++depth;
        } else if (text[i] == closing && --depth == 0) {
            return i;
        }
    }
    return std::string_view::npos;
}

std::string tyr::take_file(std::string *text)
{
    constexpr size_t kPrefix = 3;
    if (!STR_has_prefix(*text, "fi:")) {
        return {};
    }
    const size_t end = text->find(':', kPrefix);
    std::string file = text->substr(kPrefix, end == std::string::npos ? end : end - kPrefix);
    *text = end == std::string::npos ? std::string() : text->substr(end + 1);
    return file;
}
