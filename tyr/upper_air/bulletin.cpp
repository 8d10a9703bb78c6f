#include "tyr/upper_air/bulletin.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <map>
#include <optional>
#include <tuple>

#include "base/missing.h"
#include "base/str.h"
#include "tyr/upper_air/bulletin_parts.h"
#include "tyr/upper_air/words.h"
#include "var/number.h"

namespace tyr {

namespace {

constexpr size_t kHeadGroups = 2; // YYGGI and IIiii
constexpr int kKnotsDays = 50;    // added to the day where speeds are knots
constexpr size_t kIdLine = 6;     // "MANJAN"

using Decoder = size_t (*)(std::span<const std::string>, const PartContext &, Ascent *);

struct PartRow {
    const char *word;
    bool upper;
    Decoder decode; // null for a part that isn't read
};
constexpr PartRow kParts[] = {
    {"TTAA", false, decode_mandatory  },
    {"TTBB", false, decode_significant},
    {"TTCC", true,  decode_mandatory  },
    {"TTDD", true,  decode_significant},
    {"PPBB", false, decode_winds      },
    {"PPDD", true,  decode_winds      },
    {"PPAA", false, nullptr           },
    {"PPCC", false, nullptr           }
};

/// Ships, mobile stations and dropsondes have parts of their own.
constexpr const char *kOtherAscents[] = {"UU", "XX", "II", "QQ", "EE"};

/// One part as it stands in the text.
struct Message {
    const PartRow *part = nullptr;
    std::string word;
    std::string id; // of the line ahead of the part
    std::vector<std::string> groups;
};

const PartRow *find_part(std::string_view word)
{
    const auto *row = std::find_if(std::begin(kParts), std::end(kParts),
                                   [&](const PartRow &r) { return word == r.word; });
    return row == std::end(kParts) ? nullptr : row;
}

bool is_other_part(std::string_view word)
{
    const bool part = word.size() == 4 && word[2] == word[3] && word[2] >= 'A' && word[2] <= 'D';
    return part && std::any_of(std::begin(kOtherAscents), std::end(kOtherAscents),
                               [&](const char *w) { return word.substr(0, 2) == w; });
}

bool is_id_line(std::string_view word)
{
    return word.size() == kIdLine && (word.substr(0, 3) == "MAN" || word.substr(0, 3) == "SGL");
}

bool has_letter(std::string_view word)
{
    return std::any_of(word.begin(), word.end(),
                       [](unsigned char c) { return std::isalpha(c) != 0; });
}

/// The groups up to '=', the next heading or the next part; those that can't be read are told.
void collect_groups(WordCursor &words, Message *message, Refusals &refusals)
{
    while (!words.peek().empty()) {
        const std::string word(words.peek());
        const bool heading = has_letter(word) && std::isalpha(static_cast<unsigned char>(word[0]));
        if (heading && word != "NIL") {
            return;
        }
        words.word();
        if (word == "=") {
            return;
        }
        if (word == "NIL") {
            message->groups.clear();
            return;
        }
        if (!is_group(word)) {
            refusals.tell(message->word + ": the group \"" + word + "\" can't be read");
            return;
        }
        message->groups.push_back(word);
    }
}

/// Year, month and day in a file's name: the first eight digits that are a date of these times.
std::optional<DateRec> name_date(const std::string &name)
{
    const std::string base = name.substr(name.rfind('/') + 1);
    for (size_t i = 0; i + 8 <= base.size(); ++i) {
        const std::string text = base.substr(i, 8);
        if (text.find_first_not_of("0123456789") != std::string::npos) {
            continue;
        }
        DateRec date;
        date.year = std::atoi(text.substr(0, 4).c_str());
        date.month = std::atoi(text.substr(4, 2).c_str());
        date.day = std::atoi(text.substr(6, 2).c_str());
        const bool good = date.year >= 1950 && date.year < 2100 && date.month >= 1 &&
                          date.month <= 12 && date.day >= 1 && date.day <= 31;
        if (good) {
            date.hour = date.minute = date.second = 0;
            return date;
        }
    }
    return std::nullopt;
}

/// Date of a day of the month and an hour, near the date of the file's name.
DateRec ascent_date(const std::optional<DateRec> &near, int day, int hour)
{
    constexpr int kDaysAround = 3;
    DateRec date;
    date.day = day;
    date.hour = hour;
    date.minute = 0;
    if (!near) {
        return date;
    }
    DateRec middle = *near;
    const long seconds = TIME_to_seconds(&middle);
    for (int offset = -kDaysAround; offset <= kDaysAround; ++offset) {
        const long then = seconds + long{offset} * kSecondsPerDay;
        DateRec candidate;
        TIME_from_seconds(&then, &candidate);
        if (candidate.day == day) {
            date.year = candidate.year;
            date.month = candidate.month;
        }
    }
    return date;
}

/// The text with the signs that end messages as words of their own.
std::string with_ends_apart(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        out += c == '=' ? " = " : std::string(1, c);
    }
    return out;
}

/// All ascents of a file, in the order in which they first stand.
class Ascents {
  public:
    explicit Ascents(Refusals &refusals) : refusals_(refusals) {}

    void add(const Message &message);
    ForeignFile finish();

  private:
    Ascent *find(const Message &message);

    Refusals &refusals_;
    std::vector<Ascent> all_;
    std::map<std::tuple<int, int, int>, size_t> places_;
};

/// The ascent that a message's heading names; null (told) where it can't be read or held.
Ascent *Ascents::find(const Message &message)
{
    const std::string &time = message.groups[0];
    const std::string &station = message.groups[1];
    const bool good =
        time.substr(0, 4).find('/') == std::string::npos && station.find('/') == std::string::npos;
    const int day = std::atoi(time.substr(0, 2).c_str());
    const int hour = std::atoi(time.substr(2, 2).c_str());
    const int true_day = day > kKnotsDays ? day - kKnotsDays : day;
    if (!good || hour > 23 || true_day < 1 || true_day > 31) {
        refusals_.tell(message.word + ": the heading \"" + time + " " + station +
                       "\" can't be read");
        return nullptr;
    }
    const std::tuple<int, int, int> key{std::atoi(station.c_str()), true_day, hour};
    const auto [place, fresh] = places_.try_emplace(key, all_.size());
    if (fresh && all_.size() == kMostForeign) {
        refusals_.tell("more reports than can be held");
        places_.erase(place);
        return nullptr;
    }
    if (fresh) {
        Ascent &ascent = all_.emplace_back();
        ascent.wmo = std::get<0>(key);
        ascent.day = true_day;
        ascent.hour = hour;
        UPA_clear_report(&ascent.report);
        ascent.report.wmo = ascent.wmo;
        STR_copy(ascent.report.id, sizeof ascent.report.id, station);
    }
    return &all_[place->second];
}

void Ascents::add(const Message &message)
{
    if (message.groups.size() < kHeadGroups) {
        return; // NIL
    }
    const std::string title = message.word + " of " + message.groups[1];
    if (message.part->decode == nullptr) {
        refusals_.tell(title + ": winds at mandatory levels alone aren't read");
        return;
    }
    Ascent *ascent = find(message);
    if (ascent == nullptr) {
        return;
    }
    if (ascent->parts.find(message.word) != std::string::npos) {
        refusals_.tell(title + " stands there twice: the first is taken");
        return;
    }
    ascent->parts += message.word;
    if (!message.id.empty()) {
        STR_copy(ascent->report.id, sizeof ascent->report.id, message.id);
    }
    PartContext part;
    part.upper = message.part->upper;
    part.metric = std::atoi(message.groups[0].substr(0, 2).c_str()) <= kKnotsDays;
    part.last_wind = message.groups[0][4];
    const std::span<const std::string> groups = std::span(message.groups).subspan(kHeadGroups);
    const size_t read = message.part->decode(groups, part, ascent);
    if (read < groups.size()) {
        refusals_.tell(title + ": \"" + groups[read] + "\" is no level");
    }
}

ForeignFile Ascents::finish()
{
    ForeignFile file;
    const std::optional<DateRec> near = name_date(refusals_.name());
    for (Ascent &ascent : all_) {
        if (const int lost = finish_ascent(&ascent); lost > 0) {
            refusals_.tell(
                STR_print("%s: %d levels beyond the lists are left out", ascent.report.id, lost));
        }
        file.reports.push_back(ascent.report);
    }
    if (!all_.empty()) {
        file.date = ascent_date(near, all_.front().day, all_.front().hour);
    }
    return file;
}

} // namespace

bool is_bulletin(std::string_view head)
{
    WordCursor words(head);
    for (std::string_view word = words.word(); !word.empty(); word = words.word()) {
        if (find_part(word) != nullptr || is_other_part(word)) {
            return true;
        }
    }
    return false;
}

ForeignFile read_bulletins(std::string_view text, Refusals &refusals)
{
    Ascents ascents(refusals);
    std::string id;
    const std::string spaced = with_ends_apart(text);
    WordCursor words(spaced);
    for (std::string_view word = words.word(); !word.empty(); word = words.word()) {
        if (is_id_line(word)) {
            id = word.substr(3);
        } else if (is_other_part(word)) {
            refusals.tell(std::string(word) +
                          ": ascents of ships, mobile stations and dropsondes aren't read");
        } else if (const PartRow *part = find_part(word)) {
            Message message;
            message.part = part;
            message.word = word;
            message.id = id;
            collect_groups(words, &message, refusals);
            ascents.add(message);
        } else if (word.size() == kIdLine && has_letter(word)) {
            id.clear(); // the heading of another bulletin
        }
    }
    return ascents.finish();
}

} // namespace tyr
