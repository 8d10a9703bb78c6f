#include "tyr/upper_air/foreign.h"

#include <algorithm>

#include "base/missing.h"
#include "base/msg.h"
#include "base/str.h"
#include "tyr/upper_air/bulletin.h"
#include "tyr/upper_air/spc.h"
#include "tyr/upper_air/upa_types.h"
#include "tyr/upper_air/wyoming.h"

namespace tyr {

namespace {

constexpr int kToldOneByOne = 10;
constexpr size_t kHead = 4096; // where a form has to show itself
constexpr int kAllSlots = 24;  // num_mand of a report that may have any slot
constexpr float kMetresOfFoot = 0.3048F;

void add_sig(const SoundLevel &level, UpaReport *report, int *lost)
{
    if (report->num_sig == kUpaSignificant) {
        ++*lost;
        return;
    }
    report->sig[report->num_sig++] = {level.p, level.t, level.td};
}

void add_wind(const SoundLevel &level, UpaReport *report, int *lost)
{
    if (report->num_wnd == kUpaWinds) {
        ++*lost;
        return;
    }
    report->wnd[report->num_wnd++] = {level.z / kMetresOfFoot, level.dir, level.spd};
}

int slot_of(float p)
{
    for (int slot = kUpa1000; slot <= kUpa1; ++slot) {
        if (UPA_mand_pressure(slot) == p) {
            return slot;
        }
    }
    return 0;
}

} // namespace

Refusals::~Refusals()
{
    if (count_ > kToldOneByOne) {
        MSG_out(kMsgWarn, "UPA_open: %s: and %d more\n", name_.c_str(), count_ - kToldOneByOne);
    }
}

void Refusals::tell(const std::string &reason)
{
    if (++count_ <= kToldOneByOne) {
        MSG_out(kMsgWarn, "UPA_open: %s: %s\n", name_.c_str(), reason.c_str());
    }
}

int foreign_type(std::string_view text)
{
    const std::string_view head = text.substr(0, kHead);
    const auto holds = [&](std::string_view word) {
        return head.find(word) != std::string_view::npos;
    };
    if (holds("%RAW%")) {
        return kUpaSpc;
    }
    if (holds("PRES   HGHT   TEMP   DWPT")) {
        return kUpaWyoming;
    }
    return is_bulletin(head) ? kUpaBulletin : -1;
}

ForeignFile read_foreign(int type, std::string_view text, const std::string &name)
{
    Refusals refusals(name);
    if (type == kUpaBulletin) {
        return read_bulletins(text, refusals);
    }
    return type == kUpaSpc ? read_spc(text, refusals) : read_wyoming(text, refusals);
}

void sort_levels(std::vector<SoundLevel> levels, UpaReport *report, Refusals &refusals)
{
    std::stable_sort(levels.begin(), levels.end(), [](const SoundLevel &a, const SoundLevel &b) {
        return a.p > b.p || (a.p == b.p && a.z < b.z);
    });
    int lost_sig = 0;
    int lost_winds = 0;
    bool above_ground = false;
    float last_sig = kMissing;
    report->num_mand = kAllSlots;
    for (const SoundLevel &level : levels) {
        const int slot = slot_of(level.p);
        const bool has_wind = !is_missing(level.dir) && !is_missing(level.spd);
        if (slot > 0) {
            report->mand[slot] = level;
        }
        if (!above_ground && !is_missing(level.t)) {
            above_ground = true;
            last_sig = level.p;
            report->mand[kUpaSurface] = level;
            add_sig(level, report, &lost_sig);
        } else if (slot == 0) {
            if (!is_missing(level.t) && level.p != last_sig) {
                last_sig = level.p;
                add_sig(level, report, &lost_sig);
            }
            if (has_wind && !is_missing(level.z)) {
                add_wind(level, report, &lost_winds);
            }
        }
    }
    if (lost_sig + lost_winds > 0) {
        refusals.tell(STR_print("%s: %d temperatures and %d winds beyond the lists are left out",
                                report->id, lost_sig, lost_winds));
    }
}

std::string_view take_field(std::string_view *text, char separator)
{
    const size_t end = std::min(text->find(separator), text->size());
    const std::string_view field = text->substr(0, end);
    text->remove_prefix(std::min(end + 1, text->size()));
    return field;
}

} // namespace tyr
