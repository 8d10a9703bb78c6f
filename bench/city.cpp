// How fast the city database is read and asked.

#include "tyr/place/city.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"

namespace {

double seconds_of(const std::function<void()> &run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

DomainRec world()
{
    DomainRec domain;
    DOM_init(&domain);
    domain.proj = kProjLatLon;
    domain.clat = domain.clon = 0.0F;
    domain.dx = domain.dy = 1.0F;
    domain.nx = 361;
    domain.ny = 181;
    return domain;
}

std::vector<std::string> all_ids()
{
    std::vector<std::string> ids;
    const int handle = CTY_open_file(nullptr, nullptr);
    for (CityRec record; CTY_read_record(handle, &record) >= 1;) {
        ids.emplace_back(record.id);
    }
    CTY_close_file(handle);
    return ids;
}

} // namespace

int main(int argc, char **argv)
{
    constexpr int kRounds = 50;
    RES_put("file_path", argc > 1 ? argv[1] : "data");
    MSG_set_mask(0, kMsgError);
    const std::vector<std::string> ids = all_ids();
    DomainRec domain = world();
    const double read = seconds_of(
        [&] { CTY_close_file(CTY_read(nullptr, kCityPlaces, &domain, kAllPriorities)); });
    size_t found = 0;
    const double asked = seconds_of([&] {
        for (int i = 0; i < kRounds; ++i) {
            for (const std::string &id : ids) {
                CityPoint point;
                found += static_cast<size_t>(CTY_get(id.c_str(), &point));
            }
        }
    });
    const double lookups = static_cast<double>(kRounds) * static_cast<double>(ids.size());
    std::printf("%-28s %8zu stations  %8.1f ms\n", "reading the database", ids.size(), 1e3 * read);
    std::printf("%-28s %8.0f found     %8.2f million a second\n", "looking up",
                static_cast<double>(found), lookups / asked / 1e6);
    return 0;
}
