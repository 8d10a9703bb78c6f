#include "tyr/upper_air/forms/upa_digest.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdint>

#include "tyr/base/missing.h"
#include "tyr/base/number.h"
#include "tyr/base/str.h"

namespace tyr {

namespace {

constexpr size_t kIdBytes = 5;
constexpr size_t kWmoBytes = 7;
constexpr int kNone = 9999;
constexpr int kSlots[] = {3, 4, 5}; // 850, 700, 500 hPa

std::string text_of(const std::string &text, size_t bytes)
{
    std::string out = text.substr(0, bytes);
    out.resize(bytes, '\0');
    return out;
}

/// The numbers of one report.
class Numbers {
  public:
    void put(int value)
    {
        constexpr int kLimit = 32767;
        const auto bits = static_cast<uint16_t>(std::clamp(value, -kLimit - 1, kLimit));
        bytes_ += static_cast<char>(bits & 0xFFU);
        bytes_ += static_cast<char>(bits >> 8U);
    }
    void zeros(int count)
    {
        for (int i = 0; i < count; ++i) {
            put(0);
        }
    }
    void whole(float value, double scale = 1.0, double more = 0.0)
    {
        put(is_missing(value) ? kNone : VAR_whole(value * scale + more));
    }
    void rounded(float value) { whole(value, 1.0, 0.5); }
    const std::string &bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

float difference(float a, float b)
{
    return is_missing(a) || is_missing(b) ? kMissing : a - b;
}

} // namespace

std::string digest_heading(const DateRec &date)
{
    DateRec full = date;
    TIME_to_seconds(&full);
    return STR_print("%2.2d:%2.2dZ XXX %3s %2d %4d", full.hour, full.minute,
                     TIME_month_abbr(full.month), full.day, full.year);
}

std::string digest_report(const UpaReport &report)
{
    const auto level = [&](size_t i) -> const SoundLevel & { return report.mand[kSlots[i]]; };
    Numbers out;
    out.whole(report.lat, 100.0, 0.1);
    out.whole(report.lon, 100.0, 0.1);
    out.rounded(level(0).t);
    out.zeros(1);
    out.rounded(level(1).t);
    out.rounded(level(2).t);
    out.zeros(1);
    for (const int slot : kSlots) {
        out.whole(report.mand[slot].z);
    }
    out.zeros(5);
    for (const int slot : kSlots) {
        out.whole(report.mand[slot].dir, 0.1);
    }
    out.zeros(1);
    for (const int slot : kSlots) {
        out.whole(report.mand[slot].spd);
    }
    out.zeros(1);
    for (const int slot : kSlots) {
        out.rounded(difference(report.mand[slot].t, report.mand[slot].td));
    }
    out.whole(report.mand[kUpaTropopause].z);
    out.whole(difference(level(2).z, report.mand[kUpa1000].z));
    out.put(report.extra == kMissingInt ? kNone : report.extra);
    out.zeros(4);
    const bool letter = std::isalpha(static_cast<unsigned char>(report.id[0])) != 0;
    const std::string wmo = report.wmo == kMissingInt ? "99999" : STR_print("%5.5d", report.wmo);
    return text_of(letter ? report.id : "", kIdBytes) + text_of(wmo, kWmoBytes) + out.bytes();
}

} // namespace tyr
