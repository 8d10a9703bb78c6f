#include "tyr/upper_air/foreign/foreign_forms.h"

#include "tyr/upper_air/foreign/bulletin.h"
#include "tyr/upper_air/foreign/spc.h"
#include "tyr/upper_air/foreign/wyoming.h"
#include "tyr/upper_air/upa_types.h"

namespace tyr {

namespace {

constexpr size_t kHead = 4096; // where a form has to show itself

} // namespace

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

} // namespace tyr
