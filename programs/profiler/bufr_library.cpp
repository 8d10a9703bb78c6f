#include "programs/profiler/bufr_library.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <type_traits>

#include "programs/profiler/bufr_walkable.h"
#include "programs/profiler/child.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/met/wind.h"

#ifdef TYR_HAVE_ECCODES
#include "programs/profiler/eccodes_calls.h"
#endif

namespace {

[[maybe_unused]] constexpr int kMostFalls = 3;        ///< of the library, before the rest is left
[[maybe_unused]] constexpr unsigned kMostSeconds = 2; ///< for the messages of a file

using namespace tyr;

#ifdef TYR_HAVE_ECCODES

/// Elements of the library's flat list of a message, by their descriptors.
enum Element : long {
    kBlock = 1001,
    kStation = 1002,
    kShortName = 1018,
    kLongName = 1019,
    kSiteName = 1015,
    kYear = 4001,
    kMonth = 4002,
    kDay = 4003,
    kHour = 4004,
    kMinute = 4005,
    kLatitude = 5001,
    kLatitudeCoarse = 5002,
    kLongitude = 6001,
    kLongitudeCoarse = 6002,
    kStationHeight = 7001,
    kGroundHeight = 7030,
    kAboveStation = 7006,
    kHeight = 7007,
    kOtherHeight = 10007,
    kDirection = 11001,
    kSpeed = 11002,
    kU = 11003,
    kV = 11004,
    kW = 11006,
    kQualityMark = 33002,
    kAssociated = 999999,
};

struct HandleCloser {
    void operator()(codes_handle *h) const { codes().handle_delete(h); }
};
using Handle = std::unique_ptr<codes_handle, HandleCloser>;

struct IteratorCloser {
    void operator()(codes_bufr_keys_iterator *k) const { codes().bufr_keys_iterator_delete(k); }
};
using Iterator = std::unique_ptr<codes_bufr_keys_iterator, IteratorCloser>;

/// Gathers the elements of one subset into its profiles.
class Gatherer {
  public:
    explicit Gatherer(std::vector<LibraryReport> *out) : out_(out)
    {
        PRF_init_record(&report_.record);
        report_.date = {};
    }

    void take(long element, double value, bool is_bad)
    {
        const auto number = static_cast<float>(value);
        ProfilerRecord &r = report_.record;
        switch (element) {
        case kBlock:
            block_ = static_cast<int>(value);
            break;
        case kStation:
            station_ = static_cast<int>(value);
            break;
        case kLatitude:
        case kLatitudeCoarse:
            r.lat = number;
            break;
        case kLongitude:
        case kLongitudeCoarse:
            r.lon = number;
            break;
        case kStationHeight:
        case kGroundHeight:
            r.elev = number;
            break;
        case kAboveStation:
            begin_level(number);
            break;
        case kHeight:
        case kOtherHeight:
            begin_level(number - (is_missing(r.elev) ? 0.0F : r.elev));
            break;
        case kQualityMark:
            is_suspect_ = value == 1.0;
            break;
        default:
            take_date(element, static_cast<int>(value));
            take_wind(element, number, is_bad);
        }
    }

    void name(const std::string &text)
    {
        const size_t last = text.find_last_not_of(' ');
        name_ = last == std::string::npos ? name_ : text.substr(0, last + 1);
    }

    void end_profile()
    {
        end_level();
        if (report_.record.num_level > 0) {
            write_id();
            out_->push_back(report_);
        }
        report_.record.num_level = 0;
    }

  private:
    void take_date(long element, int value)
    {
        DateRec &d = report_.date;
        const bool has_levels = has_level_ || report_.record.num_level > 0;
        if (element >= kYear && element <= kMinute && has_levels) {
            end_profile(); // the next time of the message
        }
        switch (element) {
        case kYear:
            d.year = value;
            break;
        case kMonth:
            d.month = value;
            break;
        case kDay:
            d.day = value;
            break;
        case kHour:
            d.hour = value;
            break;
        case kMinute:
            d.minute = value;
            break;
        default:
            break;
        }
    }

    void take_wind(long element, float value, bool is_bad)
    {
        if (is_bad) {
            return;
        }
        switch (element) {
        case kDirection:
            direction_ = value;
            break;
        case kSpeed:
            speed_ = value;
            break;
        case kU:
            level_.u = value;
            break;
        case kV:
            level_.v = value;
            break;
        case kW:
            level_.w = value;
            break;
        default:
            break;
        }
    }

    void begin_level(float z)
    {
        end_level();
        const ProfilerRecord &r = report_.record;
        if (r.num_level > 0 && z <= r.level[r.num_level - 1].z) {
            end_profile(); // heights begin anew
        }
        level_ = {z, kMissing, kMissing, kMissing, kMissing, kMissing, 0};
        direction_ = speed_ = kMissing;
        is_suspect_ = false;
        has_level_ = true;
    }

    void end_level()
    {
        ProfilerRecord &r = report_.record;
        if (has_level_ && r.num_level < kMaxProfilerLevels) {
            if (!is_missing(direction_) && !is_missing(speed_)) {
                MET_wind_uv(&level_.u, &level_.v, direction_, speed_);
            }
            if (is_suspect_) {
                level_.u = level_.v = level_.w = kMissing;
                level_.qual = 1;
            }
            r.level[r.num_level++] = level_;
        }
        has_level_ = false;
    }

    /// The WMO number, else the name, else the position as 4338N00304W.
    void write_id()
    {
        ProfilerRecord &r = report_.record;
        std::string id = name_;
        if (block_ >= 0 && station_ >= 0) {
            id = STR_print("%02d%03d", block_, station_);
        } else if (id.empty() && !is_missing(r.lat) && !is_missing(r.lon)) {
            const long lat = std::lround(std::fabs(r.lat) * 100.0F);
            const long lon = std::lround(std::fabs(r.lon) * 100.0F);
            id = STR_print("%04ld%c%05ld%c", lat, r.lat < 0.0F ? 'S' : 'N', lon,
                           r.lon < 0.0F ? 'W' : 'E');
        }
        STR_copy(r.id, sizeof r.id, id);
    }

    std::vector<LibraryReport> *out_;
    LibraryReport report_;
    ProfilerLevel level_ = {};
    bool has_level_ = false;
    bool is_suspect_ = false;
    float direction_ = kMissing;
    float speed_ = kMissing;
    int block_ = -1;
    int station_ = -1;
    std::string name_;
};

bool is_name(long element)
{
    return element == kShortName || element == kLongName || element == kSiteName;
}

/// A message of one subset, whose elements come in the order of its template.
void gather(codes_handle *h, std::vector<LibraryReport> *out)
{
    codes().set_long(h, "unpack", 1);
    Gatherer gatherer(out);
    const Iterator keys(codes().bufr_keys_iterator_new(h, 0));
    while (keys && codes().bufr_keys_iterator_next(keys.get()) != 0) {
        const char *text = codes().bufr_keys_iterator_get_name(keys.get());
        const std::string key = text != nullptr ? text : "";
        long element = 0;
        if (codes().get_long(h, (key + "->code").c_str(), &element) != CODES_SUCCESS) {
            continue; // of the header
        }
        if (is_name(element)) {
            char value[128] = "";
            size_t length = sizeof value;
            if (codes().get_string(h, key.c_str(), value, &length) == CODES_SUCCESS) {
                gatherer.name(value);
            }
            continue;
        }
        double value = 0.0;
        double mark = 0.0; // of the associated field: 1 is bad
        const std::string associated = key + "->associatedField";
        const bool has_mark = codes().get_double(h, associated.c_str(), &mark) == CODES_SUCCESS;
        if (codes().get_double(h, key.c_str(), &value) == CODES_SUCCESS &&
            std::fabs(value) < 1e9) { // the library's missing value is -1e100
            gatherer.take(element, value, has_mark && mark == 1.0);
        }
    }
    gatherer.end_profile();
}

/// Every subset of a message on its own. @return whether the library could
bool decode(std::string_view message, std::vector<LibraryReport> *out)
{
    const auto copy = [message] {
        return Handle(
            codes().handle_new_from_message_copy(nullptr, message.data(), message.size()));
    };
    const Handle whole = copy();
    long subsets = 0;
    if (!whole || codes().get_long(whole.get(), "numberOfSubsets", &subsets) != CODES_SUCCESS) {
        return false;
    }
    if (subsets == 1) {
        const bool is_good = codes().set_long(whole.get(), "unpack", 1) == CODES_SUCCESS;
        if (is_good) {
            gather(whole.get(), out);
        }
        return is_good;
    }
    for (long i = 1; i <= subsets; ++i) {
        const Handle h = copy();
        if (!h || codes().set_long(h.get(), "unpack", 1) != CODES_SUCCESS ||
            codes().set_long(h.get(), "extractSubset", i) != CODES_SUCCESS ||
            codes().set_long(h.get(), "doExtractSubsets", 1) != CODES_SUCCESS) {
            return false;
        }
        const Handle one(codes().handle_clone(h.get()));
        if (!one) {
            return false;
        }
        gather(one.get(), out);
    }
    return subsets > 0;
}

/// What comes from the child for a message, with so many reports behind it.
struct Answer {
    bool is_good = false;
    int reports = 0;
};
static_assert(std::is_trivially_copyable_v<LibraryReport>);

bool send(std::string_view message, int descriptor)
{
    codes().context_set_logging_proc(nullptr, [](const codes_context *, int, const char *) {});
    std::vector<LibraryReport> reports;
    const bool is_good = decode(message, &reports);
    const Answer answer = {is_good, static_cast<int>(reports.size())};
    return write_all(descriptor, &answer, sizeof answer) &&
           write_all(descriptor, reports.data(), reports.size() * sizeof(LibraryReport));
}

/// Takes the answers to whole messages. @return how many of them couldn't be decoded
int receive(std::string_view bytes, int *done, std::vector<LibraryReport> *reports)
{
    int refused = 0;
    while (bytes.size() >= sizeof(Answer)) {
        Answer answer;
        std::memcpy(&answer, bytes.data(), sizeof answer);
        const size_t size = static_cast<size_t>(answer.reports) * sizeof(LibraryReport);
        bytes.remove_prefix(sizeof answer);
        if (bytes.size() < size) {
            break;
        }
        const size_t before = reports->size();
        reports->resize(before + static_cast<size_t>(answer.reports));
        if (size > 0) {
            std::memcpy(&(*reports)[before], bytes.data(), size);
        }
        bytes.remove_prefix(size);
        refused += answer.is_good ? 0 : 1;
        ++*done;
    }
    return refused;
}

#endif

} // namespace

std::string tyr::bufr_library_version()
{
#ifdef TYR_HAVE_ECCODES
    return "ecCodes " ECCODES_VERSION_STR;
#else
    return "";
#endif
}

bool tyr::bufr_needs_library(std::string_view bytes)
{
    const std::vector<std::string_view> messages = bufr_messages(bytes);
    return !bufr_library_version().empty() &&
           std::any_of(messages.begin(), messages.end(), [](auto m) { return !bufr_is_own(m); });
}

std::vector<LibraryReport> tyr::bufr_library_read([[maybe_unused]] std::string_view bytes,
                                                  [[maybe_unused]] const char *name)
{
    std::vector<LibraryReport> reports;
#ifdef TYR_HAVE_ECCODES
    if (!has_eccodes()) {
        return reports;
    }
    const std::vector<std::string_view> messages = bufr_messages(bytes);
    const auto count = static_cast<int>(messages.size());
    int refused = 0;
    for (int done = 0, falls = 0; done < count && falls < kMostFalls; ++falls) {
        const std::string result = run_in_child(
            [&](int descriptor) {
                for (int i = done; i < count && send(messages[static_cast<size_t>(i)], descriptor);
                     ++i) {
                }
            },
            kMostSeconds);
        refused += receive(result, &done, &reports);
        if (done < count) { // the library fell over this message
            done++;
            refused++;
        }
    }
    if (refused > 0 && !reports.empty()) {
        MSG_out(kMsgWarn, "PROF_read: %s: %d BUFR messages that can't be decoded\n", name, refused);
    }
#endif
    return reports;
}
