#include <cstdio>

#include "tyr/place/table.h"

namespace {

struct Entry {
    int number;
    char text[12];
};

struct TableTest : ::testing::Test {
    TableRec table;
    void add(int number, const char *a, const char *b)
    {
        Entry entry = {number, ""};
        std::snprintf(entry.text, sizeof entry.text, "%d", number);
        TBL_add(&table, &entry, a, b);
    }
    int find(int key, const char *text)
    {
        const void *found = TBL_find(&table, key, text);
        return found ? static_cast<const Entry *>(found)->number : -1;
    }
};

} // namespace

TEST_F(TableTest, EntriesAreFoundByEachKeyExactly)
{
    ASSERT_EQ(TBL_init(&table, 7, sizeof(Entry), 2), 0);
    add(1, "KDEN", "72565");
    add(2, "KDNR", "72469");
    add(3, "KDEN", "72999");
    const struct {
        const char *name;
        int key;
        const char *text;
        int number;
    } cases[] = {
        {"first key", 1, "KDNR", 2},
        {"second key", 2, "72565", 1},
        {"the first of two the same", 1, "KDEN", 1},
        {"its other key", 2, "72999", 3},
        {"other case", 1, "kden", -1},
        {"key of the other kind", 1, "72565", -1},
        {"unknown", 2, "", -1},
        {"no such key", 3, "72565", -1},
        {"no such key below", 0, "72565", -1},
        {"null", 1, nullptr, -1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(find(c.key, c.text), c.number);
    }
}

TEST_F(TableTest, ChainsGrowAsNeededAndTheWalkKeepsTheOrder)
{
    TBL_init(&table, 1, sizeof(Entry), 2); // all in one chain
    constexpr int kCount = 2000;
    for (int i = 0; i < kCount; ++i) {
        const std::string key = std::to_string(i);
        add(i, key.c_str(), ("b" + key).c_str());
    }
    EXPECT_EQ(find(1, "1999"), 1999);
    EXPECT_EQ(find(2, "b777"), 777);
    for (int round = 0; round < 2; ++round) {
        TBL_rewind(&table);
        for (int i = 0; i < kCount; ++i) {
            const Entry *entry = static_cast<const Entry *>(TBL_next(&table));
            ASSERT_NE(entry, nullptr);
            ASSERT_EQ(entry->number, i);
            ASSERT_EQ(entry->text, std::to_string(i));
        }
        EXPECT_EQ(TBL_next(&table), nullptr);
    }
    TBL_free(&table);
    TBL_rewind(&table);
    EXPECT_EQ(TBL_next(&table), nullptr);
    EXPECT_EQ(find(1, "5"), -1);
}

TEST_F(TableTest, ShapesThatCantBeAreRefused)
{
    EXPECT_EQ(TBL_init(&table, 10, 4, 0), -1);
    EXPECT_EQ(TBL_init(&table, 10, 4, 4), -1);
    EXPECT_EQ(TBL_init(&table, 10, 0, 1), -1);
    EXPECT_EQ(TBL_add(&table, "x", "key"), nullptr);
    EXPECT_EQ(TBL_init(&table, -5, 1, 1), 0) << "as one slot";
    EXPECT_NE(TBL_add(&table, "x", "key"), nullptr);
    EXPECT_NE(TBL_find(&table, 1, "key"), nullptr);
}

TEST_F(TableTest, HashFollowsItsFormula)
{
    // By hand: "AB": (65 * 257 + 66) % 35177 = 16771; "ABC": (16771 * 257 + 67) % 35177 = 18617
    EXPECT_EQ(TBL_hash(""), 0);
    EXPECT_EQ(TBL_hash("A"), 65);
    EXPECT_EQ(TBL_hash("AB"), 16771);
    EXPECT_EQ(TBL_hash("ABC"), (16771 * 257 + 67) % 35177);
    TBL_init(&table, 3, 1, 1);
    const std::string high(100, '\xFF'); // signed bytes below 0
    TBL_add(&table, "x", high.c_str());
    EXPECT_NE(TBL_find(&table, 1, high.c_str()), nullptr);
}
