#include <string>

#include <gtest/gtest.h>

#include "base/msg.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/upa_file.h"
#include "upper_air/sample_report.h"

namespace {

/// Reads what can be read of a file, every level of it, and assembles the reports.
int read_everything(const std::string &path)
{
    int type = 0;
    const int handle = UPA_open(path.c_str(), 0, &type);
    if (handle == -1)
        return 0;
    UpaFileHeader header;
    UPA_read_header(handle, &header);
    UpaReport report;
    int read = 0;
    for (int i = 0; i < 8 && UPA_read(handle, &report, kUpaWhole, &i) == 0; ++i, ++read) {
        EXPECT_LE(report.num_sig, kUpaSignificant);
        EXPECT_LE(report.num_wnd, kUpaWinds);
        report.elev = 100;
        THERM_process_report(&report);
        for (const int what : {0, 2, 22, 31})
            UPA_read(handle, &report, what, &i);
    }
    UPA_close(handle);
    return read;
}

/// A valid file cut at each length, and with each byte turned over, set to 0 and to 255.
void damage_everywhere(const std::string &bytes, size_t step)
{
    const TempDir folder;
    MSG_set_mask(0, 0); // refusals come by the thousand
    EXPECT_GT(read_everything(folder.write("whole", bytes)), 0);
    for (size_t i = 0; i < bytes.size(); i += step) {
        read_everything(folder.write("cut", bytes.substr(0, i)));
        for (const int value : {~bytes[i] & 0xFF, 0, 0xFF}) {
            std::string damaged = bytes;
            damaged[i] = static_cast<char>(value);
            read_everything(folder.write("damaged", damaged));
        }
    }
}

TEST(Damage, TextFormsStandIt)
{
    const TempDir folder;
    for (const int type : {1, 2, 3, 4, 5}) {
        ASSERT_EQ(write_sample(folder.file("upa"), type, 2), 0);
        damage_everywhere(read_file(folder.file("upa")), 1);
    }
}

TEST(Damage, NetcdfLayoutsStandIt)
{
    const TempDir folder;
    for (const int type : {11, 12}) {
        ASSERT_EQ(write_sample(folder.file("upa"), type, 1), 0);
        const std::string bytes = read_file(folder.file("upa"));
        damage_everywhere(bytes, 17);
    }
}

TEST(Damage, BulletinsAndTablesStandIt)
{
    const TempDir folder;
    damage_everywhere("USUS44 KJAN 221223\nMANJAN\n72235 TTAA 72121 72235 99000 24416 18006 00089 "
                      "///// ///// 92772 21205 20540 88125 71361 25061 77182 25075 41112 51515=\n"
                      "TTBB 72120 72235 00000 24416 11985 23605 21212 11850 18010=\n"
                      "PPBB 72120 72235 90012 18006 19033 20037 916// 23038=\n"
                      "TTCC 72001 72235 70864 571// 20017 10145 339// 07017 88999 77999=\n",
                      1);
    damage_everywhere("72357 OUN Norman Observations at 12Z 22 Dec 2018\n---\n"
                      "   PRES   HGHT   TEMP   DWPT   RELH   MIXR   DRCT   SKNT   THTA\n"
                      "    hPa     m      C      C      %    g/kg    deg   knot     K\n---\n"
                      "  966.0    345    3.6   -1.2     71   3.64     55      2  279.5\n"
                      "  965.0    353    4.0   -2.0     65   3.44     59      2  280.0\n"
                      "  700.0   2998    4.2  -18.8     17   1.24    260     27  307.1\n"
                      "</PRE><H3>Station information</H3><PRE>\n"
                      "  Station latitude: 35.18\n  Station elevation: 345.0\n",
                      1);
    damage_everywhere("%TITLE%\n OAX   140616/1900  41.32,-96.37\n\n%RAW%\n"
                      " 965.00, 350.00, 27.80, 23.80, 150.00, 23.00\n"
                      " 700.00, 3118.00, 11.60, 2.60, 215.00, 50.99\n%END%\n",
                      1);
}

} // namespace
