// How fast the paper devices write: points of lines, markers and characters a second.

#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"

namespace {

struct Workload {
    const char *name;
    int count; ///< things that one run draws
    std::function<void()> run;
};

constexpr int kPoints = 1000;

std::vector<float> wave()
{
    std::vector<float> points;
    for (int i = 0; i < kPoints; i++) {
        const float x = static_cast<float>(i) / kPoints;
        points.push_back(x);
        points.push_back(0.5F + 0.4F * std::sin(20.0F * x));
    }
    return points;
}

double seconds_of(const std::function<void()> &run, int times)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < times; i++) {
        run();
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count();
}

} // namespace

int main(int argc, char **argv)
{
    RES_put("file_path", argc > 1 ? argv[1] : "data");
    MSG_set_mask(0, kMsgError);
    const std::vector<float> points = wave();
    const float pos[2] = {0.1F, 0.5F};
    const Workload workloads[] = {
        {"points of lines", kPoints, [&] { gpolyline(kPoints, points.data()); }       },
        {"lines of 2",      100,
         [&] {
             for (int i = 0; i < 100; i++) {
                 gpolyline(2, &points[2 * i]);
             }
         }                                                                            },
        {"markers",         kPoints, [&] { gpolymarker(kPoints, points.data()); }     },
        {"characters",      26,      [&] { gtext(pos, "abcdefghijklmnopqrstuvwxyz"); }},
        {"fonts loaded",    1,       [&] { read_font("triplex.fnt"); }                },
    };
    const int devices[] = {kDevicePostScript, kDeviceHpgl, kDeviceMetafile};
    std::printf("%-18s %14s %14s %14s   a second\n", "", "PostScript", "HPGL", "metafile");
    for (const Workload &work : workloads) {
        std::printf("%-18s", work.name);
        for (const int device : devices) {
            constexpr int kTimes = 200;
            gopen_gks(nullptr, 0);
            gopen_ws(1, "/dev/null", device);
            const double taken = seconds_of(work.run, kTimes);
            gclose_ws(1);
            gclose_gks();
            std::printf(" %14.0f", work.count * kTimes / taken);
        }
        std::printf("\n");
    }
    return 0;
}
