#include <cstdlib>
#include <ctime>

#include "support/dates.h"
#include "support/scoped_env.h"
#include "tyr/names/date_label.h"

namespace {

constexpr int kNone = kMissingInt;

std::string format(const DateRec &date)
{
    char text[kDateTextRoom];
    EXPECT_EQ(TIME_format(&date, text), 0);
    return text;
}

std::string valid(int forecast, const DateRec &date)
{
    char text[kDateTextRoom];
    EXPECT_EQ(TIME_format_valid(forecast, &date, text), 0);
    return text;
}

TEST(Date, EveryDayOfTwoCenturiesAgreesWithTheCLibrary)
{
    long days = 0;
    for (int year = 1901; year <= 2099; ++year) {
        for (int yday = 1; yday <= (TIME_is_leap(year) ? 366 : 365); ++yday) {
            int month = 0;
            int day = 0;
            TIME_yday_to_date(year, yday, &month, &day);
            DateRec d = make_date(year, month, day, 12, 34, 56);
            tm parts{};
            parts.tm_year = year - 1900;
            parts.tm_mday = yday;
            parts.tm_hour = 12;
            parts.tm_min = 34;
            parts.tm_sec = 56;
            const long expected = timegm(&parts);
            ASSERT_EQ(TIME_to_seconds(&d), expected) << year << ' ' << yday;
            ASSERT_EQ(parts.tm_mon + 1, month);
            ASSERT_EQ(parts.tm_mday, day);
            DateRec back;
            TIME_from_seconds(&expected, &back);
            ASSERT_EQ(back.month, month);
            ASSERT_EQ(back.yday, yday);
            ASSERT_EQ(back.wday, parts.tm_wday);
            int yday_back = 0;
            TIME_date_to_yday(year, month, day, &yday_back);
            ASSERT_EQ(yday_back, yday);
            ++days;
        }
    }
    EXPECT_EQ(days, 72684); // 199 years, 49 of them leap
}

TEST(Date, SecondsRepairTheRecord)
{
    // clang-format off
    const struct {
        const char *name;
        DateRec before, after;
    } cases[] = {
        {"all missing",    make_date(kNone, kNone, kNone),    make_date(1980, 1, 1, 0, 0, 0)},
        {"no hour",        make_date(1999, 3, 6),             make_date(1999, 3, 6, 0, 0, 0)},
        {"99",             make_date(99, 3, 6, 1, 2, 3),      make_date(1999, 3, 6, 1, 2, 3)},
        {"49",             make_date(49, 3, 6, 1, 2, 3),      make_date(2049, 3, 6, 1, 2, 3)},
        {"50",             make_date(50, 3, 6, 1, 2, 3),      make_date(1950, 3, 6, 1, 2, 3)},
        {"199 after 1900", make_date(199, 3, 6, 1, 2, 3),     make_date(2099, 3, 6, 1, 2, 3)},
        {"month 13",       make_date(1999, 13, 6, 1, 2, 3),   make_date(1999, 1, 6, 1, 2, 3)},
        {"day 32",         make_date(1999, 3, 32, 1, 2, 3),   make_date(1999, 3, 1, 1, 2, 3)},
        {"day 0 stays",    make_date(1999, 3, 0, 1, 2, 3),    make_date(1999, 3, 0, 1, 2, 3)},
        {"24:60:60",       make_date(1999, 3, 6, 24, 60, 60), make_date(1999, 3, 6, 0, 0, 0)},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        DateRec d = c.before;
        TIME_to_seconds(&d);
        EXPECT_EQ(fields(d), fields(c.after));
    }
    DateRec leap = make_date(2000, 2, 29, 0, 0, 0);
    EXPECT_EQ(TIME_to_seconds(&leap), 951782400L); // date -u -d 2000-02-29 +%s
    DateRec day_zero = make_date(2000, 3, 0, 0, 0, 0);
    EXPECT_EQ(TIME_to_seconds(&day_zero), 951782400L);
    EXPECT_EQ(TIME_is_leap(2100), 0);
    EXPECT_EQ(TIME_is_leap(2000), 1);
}

TEST(Date, KnowsMonthNames)
{
    for (int m = 1; m <= 12; ++m) {
        EXPECT_EQ(TIME_month_number(TIME_month_abbr(m)), m);
        EXPECT_EQ(TIME_month_number(TIME_month_lower(m)), m);
    }
    for (const char *text : {"", "J", "JU", "Jun", "XY", "A"}) {
        EXPECT_EQ(TIME_month_number(text), 0) << text;
    }
    EXPECT_EQ(TIME_month_number("jun"), 6);
    EXPECT_EQ(TIME_month_number("JUL"), 7);
    EXPECT_EQ(TIME_month_number("MaR"), 3);
    EXPECT_EQ(TIME_month_number("f"), 2);
    EXPECT_STREQ(TIME_month_abbr(0), "");
    EXPECT_STREQ(TIME_month_abbr(13), "");
    EXPECT_STREQ(TIME_month_name(kNone), "");
}

TEST(Date, ParsesBulletinDates)
{
    // clang-format off
    const struct {
        const char *text;
        DateRec date;
    } cases[] = {
        {"12Z 06 MAR 99",             make_date(1999, 3, 6, 12)},
        {"words 1230Z 06 MAR 99",     make_date(1999, 3, 6, 12, 30)},
        {"words  930Z 06 MAR 99",     make_date(1999, 3, 6, 9, 30)},
        {"words 12:30:45Z 06 MAR 49", make_date(2049, 3, 6, 12, 30, 45)},
        {"words 12Z 06 MAR 99",       make_date(1999, 3, 6, 12)},
        {"12 06 03 99",               make_date(1999, 3, 6, 12)},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        DateRec d;
        TIME_parse(c.text, &d);
        EXPECT_EQ(fields(d), fields(c.date));
    }
    for (const char *text :
         {"", "no date here at all, really", "12Z 06", "12 06 13 99", "12 06 03 99 Main st"}) {
        DateRec d;
        TIME_parse(text, &d);
        EXPECT_EQ(fields(d), fields(make_date(kNone, 0))) << text;
    }
}

TEST(Date, FormatsValidTimes)
{
    const DateRec date = make_date(1999, 3, 6, 0);
    EXPECT_EQ(valid(12, date), "12Z SAT  6 MAR 99");
    EXPECT_EQ(valid(36, date), "12Z SUN  7 MAR 99");
    EXPECT_EQ(valid(kNone, date), "0Z SAT  6 MAR 99");
    EXPECT_EQ(valid(2006012, date), "12Z SAT  6 MAR 99");
    EXPECT_EQ(valid(800, date), "0Z SAT  6 MAR 99");
    EXPECT_EQ(valid(24, make_date(1999, 12, 31)), "SAT  1 JAN 00");
}

TEST(Date, LabelsForecasts)
{
    const struct {
        int hours, use_days;
        const char *text;
    } cases[] = {
        {0, 0, ""},         {kNone, 1, ""},     {6, 0, "6 hour"},    {12, 0, "12 hour"},
        {12, 1, "0.5 day"}, {24, 1, "1 day"},   {36, 1, "1.5 day"},  {60, 1, "2.5 day"},
        {60, 0, "60 hour"}, {30, 1, "30 hour"}, {72, 0, "3 day"},    {84, 0, "3.5 day"},
        {78, 0, "78 hour"}, {805, 0, "5 day"},  {903, 0, "3 month"}, {900, 0, "100 day"},
    };
    for (const auto &c : cases) {
        char text[kDateTextRoom];
        TIME_forecast_label(text, c.hours, c.use_days);
        EXPECT_STREQ(text, c.text) << c.hours << ' ' << c.use_days;
    }
    EXPECT_EQ(TIME_forecast_hours(2006012), 12);
    EXPECT_EQ(TIME_forecast_hours(6006012), 6);
    EXPECT_EQ(TIME_forecast_hours(6800012), 0);
    EXPECT_EQ(TIME_forecast_hours(kNone), kNone);
}

TEST(Date, ExpandsPlotLabels)
{
    const DateRec date = make_date(1999, 3, 6, 0, 5);
    TIME_set_plot(&date, 24);
    char text[kLabelRoom];
    TIME_expand_label("a_b %D|%V|%W|%y%m%b%d%h%n|%f|%F|%%|%q|%", text);
    EXPECT_STREQ(
        text, "a b 0005Z  6 MAR 99|0Z SUN  7 MAR 99|SUN  7 MAR 99|9903MAR060005|24 hour|1 day|%||");
    TIME_expand_label(std::string(4000, '_').c_str(), text);
    EXPECT_EQ(std::string(text), std::string(kLabelRoom - 1, ' '));
    const DateRec none;
    TIME_set_plot(&none, kNone);
    TIME_expand_label("%b%y%f", text);
    EXPECT_STREQ(text, "00");
}

TEST(Date, HeaderDateFollowsTheEnvironment)
{
    DateRec date;
    const ScopedEnv epoch("SOURCE_DATE_EPOCH", "951782400");
    TIME_header_now(&date);
    EXPECT_EQ(format(date), "0000Z 29 FEB 00");
    const ScopedEnv later("SOURCE_DATE_EPOCH", "yesterday");
    TIME_header_now(&date);
    EXPECT_GT(date.year, 2020);
}

// The zone stays for the rest of the process: this test is the last.
TEST(Date, FormatsWhatIsGivenInTheZone)
{
    const DateRec full = make_date(1999, 3, 6, 0, 5);
    // clang-format off
    const struct {
        const char *zone;
        DateRec date;
        const char *text;
    } cases[] = {
        {nullptr,    make_date(1999, kNone, kNone),  "99"},
        {nullptr,    make_date(1999, 3, kNone),      "MAR 99"},
        {nullptr,    make_date(1999, 3, 6),          " 6 MAR 99"},
        {nullptr,    make_date(1999, 3, 6, 7),       "07Z  6 MAR 99"},
        {nullptr,    make_date(2007, 12, 16, 17, 5), "1705Z 16 DEC 07"},
        {nullptr,    make_date(kNone, 3, 6),         " 6 MAR 80"},
        {"UTC:0",    full,                           "0005 UTC  6 MAR 99"},
        {"CST:-6",   full,                           "1805 CST  5 MAR 99"},
        {"CST:-6",   make_date(1999, 3, 6),          " 6 MAR 99"},
        {"+UTC:0",   full,                           "12:05 AM UTC  6 MAR 99"},
        {"+UTC:0",   make_date(1999, 3, 6, 0),       "12 AM UTC  6 MAR 99"},
        {"+UTC:0",   make_date(1999, 3, 6, 11),      "11 AM UTC  6 MAR 99"},
        {"+UTC:0",   make_date(1999, 3, 6, 12, 30),  "12:30 PM UTC  6 MAR 99"},
        {"+UTC:0",   make_date(1999, 3, 6, 13),      "1 PM UTC  6 MAR 99"},
        {"-CST:-6",  full,                           "6:05 PM CST [0005Z]  5 MAR 99"},
        {"-CST:-6",  make_date(1999, 3, 6, 18),      "12 PM CST [18Z]  6 MAR 99"},
        {"-IST:5.5", full,                           "5:35 AM IST [0005Z]  6 MAR 99"},
        {"LONGER:0", make_date(1999, 3, 6, 7),       "07 LONG  6 MAR 99"},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        if (c.zone) {
            EXPECT_EQ(TIME_set_zone(c.zone), 0);
        }
        EXPECT_EQ(format(c.date), c.text);
    }
    EXPECT_EQ(TIME_format(&full, nullptr), -1);
    for (const char *zone : {"", "CST", "-:5", "CST:", "CST:x", "CST:nan", "CST:1e9"}) {
        EXPECT_EQ(TIME_set_zone(zone), -1) << zone;
    }
}

} // namespace
