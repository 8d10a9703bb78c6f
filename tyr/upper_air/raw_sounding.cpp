#include "tyr/upper_air/raw_sounding.h"

#include <array>
#include <string>
#include <string_view>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/base/whole_file.h"
#include "tyr/names/name_conv.h"
#include "tyr/raw/raw.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/sounding_store_private.h"

using namespace tyr;

namespace {

constexpr const char *kConvention = "upa_snd";
constexpr unsigned kWritten = 512; // a bit of mess
constexpr int kFirstField = 2;     // of a row's values: z, t, td, dir, spd
constexpr int kLastField = 6;

/// Where the rows of a file go while it is read.
struct Target {
    SoundLevel *level = nullptr; // of the row
    bool in_winds = false;
    int num_temps = 0;
    int num_winds = 0;
    int lost = 0;
    float surface_pressure = kMissing;
};

bool is_word(const RawValue &value, const char *word)
{
    return STR_casecmp(value.id, word) == 0;
}

/// The next level of the current list; null where it is full.
SoundLevel *next_level(Target *target)
{
    int &count = target->in_winds ? target->num_winds : target->num_temps;
    if (count == kMaxSounding) {
        ++target->lost;
        return nullptr;
    }
    SoundLevel *levels = target->in_winds ? stored_winds().data() : stored_temps().data();
    return &levels[count++];
}

/// A row's word says where its values go.
void begin_row(const RawValue &value, Target *target)
{
    if (is_word(value, "sfc")) {
        target->surface_pressure = value.lat;
    }
    if (is_word(value, "mwnd")) {
        target->level = &sounding_store().max_wind;
    } else if (is_word(value, "trop")) {
        target->level = &sounding_store().tropopause;
    } else {
        if (is_word(value, "wind")) {
            target->in_winds = true;
            target->num_winds = 0;
        }
        target->level = next_level(target);
    }
    if (target->level != nullptr) {
        MET_clear_level(target->level);
        target->level->p = value.lat;
    }
}

void take_value(const RawValue &value, Target *target)
{
    constexpr float SoundLevel::*kFields[] = {&SoundLevel::z, &SoundLevel::t, &SoundLevel::td,
                                              &SoundLevel::dir, &SoundLevel::spd};
    if (value.field == kFirstField) {
        begin_row(value, target);
    }
    if (target->level != nullptr && value.field >= kFirstField && value.field <= kLastField) {
        target->level->*kFields[value.field - kFirstField] = value.value1;
    }
}

void read_header(int handle)
{
    RawHeader header = {};
    RAW_read_header(handle, &header);
    const std::string_view text = header.format;
    const std::string station(text.substr(0, text.find(' ')));
    THERM_set_station(station.c_str());
    DateRec date;
    TIME_parse(header.title, &date);
    THERM_set_date(&date);
    MSG_out(kMsgMess, "ID: %s\n", station.c_str());
    MSG_out(kMsgMess, "Date: %s\n", header.title);
}

std::string cell(const char *blank, const char *before, int width, int decimals, float value,
                 const char *behind)
{
    return is_missing(value) ? blank
                             : STR_print("%s%*.*f%s", before, width, decimals, value, behind);
}

std::string row(const std::string &word, const SoundLevel &level)
{
    return word + cell("   - ", "", 4, 0, level.p, " ") + cell("    - ", "", 5, 0, level.z, " ") +
           cell("     - ", " ", 5, 1, level.t, " ") + cell("    - ", "", 5, 1, level.td, " ") +
           cell("   - ", "", 4, 0, level.dir, " ") + cell("  - ", "", 3, 0, level.spd, "") + "\n";
}

std::string file_text()
{
    SoundingStore &store = sounding_store();
    char date[kDateTextRoom] = {};
    TIME_format(&store.date, date);
    std::string text = STR_print("TYRRAW\n%s\n!%s Sounding\n", date, store.station) +
                       " Lev   P     H     T     Td    Dir Spd $\n";
    std::vector<SoundLevel> temps(store.temps, store.temps + store.num_temps);
    THERM_fill_winds(temps.data(), store.num_temps, store.winds, store.num_winds);
    for (int i = 0; i < store.num_temps; ++i) {
        const SoundLevel &level = temps[static_cast<size_t>(i)];
        const bool surface = level.p == store.surface_pressure && !is_missing(level.p);
        text += row(surface ? " SFC " : STR_print("%4d ", i), level);
    }
    for (int i = 0; i < store.num_winds; ++i) {
        text += row(i == 0 ? "WIND " : STR_print("%4d ", i), store.winds[i]);
    }
    if (!is_missing(store.tropopause.p)) {
        text += row("TROP ", store.tropopause);
    }
    if (!is_missing(store.max_wind.p)) {
        text += row("MWND ", store.max_wind);
    }
    return text + "\n";
}

/// Writes the file that a convention names.
void write_file(const std::string &convention)
{
    std::array<char, kFileNameRoom> word = {};
    STR_copy(word.data(), word.size(), convention);
    FILE_set_name(word.data());
    std::array<char, kFileNameRoom> name = {};
    FILE_compose(&sounding_store().date, name.data());
    if (name[0] == '\0') {
        STR_copy(name.data(), name.size(), word.data());
    }
    THERM_write_raw(name.data());
}

} // namespace

void THERM_read_raw(const char *name)
{
    const int handle = RAW_open(name, kRawRead, nullptr);
    if (handle == -1) {
        MSG_out(kMsgError, "Unable to open file:%s\n", name);
        SYS_exit(kExitNoFile);
    }
    SoundLevel none;
    MET_clear_level(&none);
    THERM_set_special(&none, &none);
    read_header(handle);
    Target target;
    RawValue value = {};
    for (int got = 0; (got = RAW_read_value(handle, &value, kRawAllWords, nullptr)) >= 0;) {
        if (got == 1) {
            take_value(value, &target);
        }
    }
    RAW_close(handle);
    if (target.lost > 0) {
        MSG_out(kMsgWarn, "THERM_read_raw: %s: %d levels beyond %d are left out\n", name,
                target.lost, kMaxSounding);
    }
    SoundLevel *temps = stored_temps().data();
    if (is_missing(target.surface_pressure) && target.num_temps > 0) {
        target.surface_pressure = temps[0].p;
    }
    THERM_setup(temps, target.num_temps, target.in_winds ? stored_winds().data() : temps,
                target.in_winds ? target.num_winds : target.num_temps, target.surface_pressure);
}

void THERM_out_raw()
{
    const char *entries = RES_get("out_file");
    if (entries == nullptr || *entries == '\0') {
        write_file(kConvention);
        return;
    }
    int count = 0;
    char **words = nullptr;
    RES_get_list("out_file", &count, &words);
    for (int i = 0; i < count; ++i) {
        const std::string word = words[i];
        if (STR_has_prefix(word, "gif")) {
            continue;
        }
        constexpr size_t kBehindRaw = 4; // "raw" and a separator
        if (STR_has_prefix(word, "raw")) {
            write_file(word.size() > kBehindRaw ? word.substr(kBehindRaw) : kConvention);
        } else {
            write_file(word);
        }
    }
    STR_free_list(count, words);
}

int THERM_write_raw(const char *name)
{
    WholeFile file;
    const std::string text = file_text();
    if (!file.open(name) ||
        std::fwrite(text.data(), 1, text.size(), file.stream()) != text.size() ||
        file.keep() != 0) {
        MSG_out(kMsgWarn, "THERM_out_raw: Unable to open output file: %s\n", name);
        return -1;
    }
    MSG_out(kWritten, "Written raw file to: %s\n", name);
    return 0;
}
