#include <clocale>

#include <sys/stat.h>
#include <unistd.h>

#include "support/run.h"
#include "support/scoped_env.h"
#include "support/temp_dir.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/paper/output_private.h"

using namespace tyr;

namespace {

TEST(Output, NumbersAreWrittenAsPrintfWritesThem)
{
    struct Case {
        double value;
        int digits;
        const char *expected;
    };
    const Case cases[] = {
        {0.0, 2, "0.00"}, {1.005, 2, "1.00"}, {-12.345, 1, "-12.3"},    {99999.996, 2, "100000.00"},
        {0.5, 0, "0"},    {1.5, 0, "2"},      {1e10, 0, "10000000000"}, {1.0 / 3.0, 6, "0.333333"},
    };
    const TempDir dir;
    std::string expected;
    Output out;
    ASSERT_TRUE(out.open(dir.file("numbers").c_str()));
    for (const Case &c : cases) {
        out << Fixed{c.value, c.digits} << " ";
        expected += std::string(c.expected) + " ";
    }
    out << -42;
    out.print(" %3.2f %s", 2.5, std::string(1000, 'x').c_str());
    EXPECT_TRUE(out.close("test"));
    EXPECT_EQ(read_file(dir.file("numbers")), expected + "-42 2.50 " + std::string(1000, 'x'));
}

TEST(Output, LocalesDoNotChangeNumbers)
{
    // a locale with a decimal comma, made for this test
    const TempDir locales;
    run({"localedef", "-i", "de_DE", "-f", "UTF-8", locales.file("comma.utf8")});
    const ScopedEnv path("LOCPATH", locales.path().c_str());
    if (std::setlocale(LC_ALL, "comma.utf8") == nullptr) {
        GTEST_SKIP() << "a locale with a decimal comma can't be made";
    }
    const TempDir dir;
    Output out;
    ASSERT_TRUE(out.open(dir.file("numbers").c_str()));
    out << Fixed{1.5, 1};
    out.print(" %.1f", 2.5);
    EXPECT_TRUE(out.close("test"));
    EXPECT_EQ(read_file(dir.file("numbers")), "1.5 2.5");
    std::setlocale(LC_ALL, "C");
}

TEST(Output, LargeFilesGoOutWhole)
{
    const TempDir dir;
    Output out;
    ASSERT_TRUE(out.open(dir.file("large").c_str()));
    std::string expected;
    for (int i = 0; i < 50000; i++) {
        out << i << "\n";
        expected += std::to_string(i) + "\n";
    }
    EXPECT_TRUE(out.close("test"));
    EXPECT_EQ(read_file(dir.file("large")), expected);
}

/// What a plot of many lines says on standard error, and what its closing gives.
std::string failure_of(const std::string &target, int device, int lines, int *result)
{
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    gopen_gks(nullptr, 0);
    *result = gopen_ws(1, target.c_str(), device);
    if (*result == 0) {
        const float line[4] = {0.0F, 0.0F, 1.0F, 1.0F};
        for (int i = 0; i < lines; i++) {
            gpolyline(2, line);
        }
        *result = gclose_ws(1);
        EXPECT_EQ(ginq_open(), 0);
    }
    gclose_gks();
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(out.find("Created"), std::string::npos) << out;
    return testing::internal::GetCapturedStderr();
}

TEST(Output, FailuresAreToldOnceAndReturned)
{
    struct Case {
        const char *name, *target;
        int device, lines;
        const char *expected;
    };
    const Case cases[] = {
        {"full disk", "/dev/full", kDevicePostScript, 1,
         "gps_close: unable to write /dev/full: No space left on device\n"},
        {"full disk, much output", "/dev/full", kDevicePostScript, 20000,
         "gps_close: unable to write /dev/full: No space left on device\n"},
        {"full disk, HPGL", "/dev/full", kDeviceHpgl, 1,
         "ghp_close: unable to write /dev/full: No space left on device\n"},
        {"full disk, metafile", "/dev/full", kDeviceMetafile, 1,
         "gmeta_close: unable to write /dev/full: No space left on device\n"},
        {"full disk, append", "+/dev/full", kDevicePostScript, 1,
         "gps_close: unable to write /dev/full: No space left on device\n"},
        {"command fails", "|cat > /dev/null; exit 3", kDevicePostScript, 1,
         "gps_close: command failed: cat > /dev/null; exit 3\n"},
        {"reader dies", "|false", kDevicePostScript, 20000,
         "gps_close: unable to write false: Broken pipe\n"},
        {"no folder", "/dev/null/plot.ps", kDevicePostScript, 1,
         "gopen_ws: unable to open postscript file\n\n"
         "gopen_ws: /dev/null/plot.ps: Not a directory\n"},
        {"a folder", "/tmp", kDeviceHpgl, 1,
         "gopen_ws: unable to open HPGL file\n\ngopen_ws: /tmp: Is a directory\n"},
        {"a folder, metafile", "/tmp", kDeviceMetafile, 1,
         "gopen_ws: unable to open metafile\n\ngopen_ws: /tmp: Is a directory\n"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        int result = 0;
        EXPECT_EQ(failure_of(c.target, c.device, c.lines, &result), c.expected);
        EXPECT_EQ(result, -1);
    }
}

TEST(Output, MissingPermissionIsTold)
{
    constexpr uid_t kNobody = 65534;
    const uid_t user = geteuid();
    const TempDir dir;
    const std::string path = dir.write("plot.ps", "");
    chmod(path.c_str(), 0444);
    if (user == 0 && seteuid(kNobody) != 0) { // everything is permitted to root
        GTEST_SKIP() << "can't become another user";
    }
    int result = 0;
    const std::string said = failure_of(path, kDevicePostScript, 1, &result);
    EXPECT_EQ(seteuid(user), 0);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(said, "gopen_ws: unable to open postscript file\n\ngopen_ws: " + path +
                        ": Permission denied\n");
}

TEST(Output, DevicesThatAreNotThereDoNotOpen)
{
    int result = 0;
    for (const int device : {0, 2, 8}) {
        EXPECT_EQ(failure_of("plot", device, 1, &result),
                  "gopen_ws: device not available: " + std::to_string(device) + "\n\n");
        EXPECT_EQ(result, -1);
    }
}

} // namespace
