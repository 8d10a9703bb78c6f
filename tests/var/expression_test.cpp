#include "support/capture.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/var/base_stack.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/expression.h"
#include "tyr/var/type_words.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_name.h"

namespace {

constexpr int M = kMissingInt;

class ExpressionTest : public testing::Test {
  protected:
    void SetUp() override
    {
        PRM_clear(kMissingInt);
        RES_put("file_path", folder_.path().c_str());
        RES_put("plot_param", "");
        VAR_close_file();
        VAR_set_default_type(kTypeValue);
        folder_.write("variable.lup", "11,1,2,3,4 temp Temperature\n"
                                      "17 dewp Dew point\n"
                                      "205,7 wbrb Wind barbs\n");
        VAR_read_varfile();
    }

    // One line for each record: name|units|type|time|kind|value|format|role
    static std::string decode(const std::string &text, const char *file = nullptr)
    {
        VAR_decode(file, text.c_str());
        std::string out;
        for (int i = 0; i < VAR_count(); ++i) {
            const VarRec &r = *VAR_get(i);
            const auto number = [](int n) { return n == M ? std::string("-") : std::to_string(n); };
            out += std::string(r.name) + "|" + r.units + "|" + number(r.type) + "|" +
                   number(r.time) + "|" + number(r.level_kind) + "|" + number(r.level_value) + "|" +
                   r.format + "|" + std::to_string(r.role) + "\n";
        }
        return out;
    }

    void open(const std::string &lines)
    {
        folder_.write("test.var", lines);
        ASSERT_EQ(VAR_open_file("test.var"), 1);
    }

    TempDir folder_;
};

} // namespace

TEST_F(ExpressionTest, Grammar)
{
    const struct {
        const char *text, *want;
    } cases[] = {
        {"wbrb", "wbrb||2|0|-|-||0\n"},
        {"wbrb:knt", "wbrb|knt|2|0|-|-||0\n"},
        {"wspd:m/s:value:co=red", "wspd|m/s|2|0|-|-|co=red|0\n"},
        {"wspd:m/s:wbarb:co=red:hi=2:%1.0f", "wspd|m/s|32|0|-|-|co=red:hi=2:%1.0f|0\n"},
        {"wspd:m/s:co=red", "wspd|m/s|2|0|-|-|co=red|0\n"},
        {"wbrb-500", "wbrb-500||2|0|-|-||0\n"},
        {"12:500:temp", "temp||2|12|100|500||0\n"},
        {"12:500:temp:C:cbarb:ul", "temp|C|33|12|100|500|ul|0\n"},
        {":sfc:temp:C", "temp|C|2|0|1|0||0\n"},
        {"miss:miss:temp", "temp||2|-|-|-||0\n"},
        {"xyz:500:temp", "xyz|500|2|0|-|-|temp|0\n"},
        {" wbrb : knt ", "wbrb|knt|2|0|-|-||0\n"},
        {"+wbrb", "wbrb||2|0|-|-||0\n"},
        {"#12", "#12||40|0|-|-||0\n"},
        {"map", "map||6|-|-|-||4\n"},
        {"plot:co=red", "plot||30|-|-|-|co=red|4\n"},
        {"FRAME:cbarb:x", "FRAME||33|-|-|-|x|4\n"},
        {"a,b", "a||2|0|-|-||0\nb||2|0|-|-||0\n"},
        {"a,", "a||2|0|-|-||0\n"},
        {",,a , ,", "a||2|0|-|-||0\n"},
        {"", ""},
        {"::::", ""},
        {"12:500::knt,b", "b||2|0|-|-||0\n"},
        {"dewp(a)", "dewp||10|0|-|-||2\na||10|0|-|-||10\n"},
        {"func(a)[knt::co=red]", "func|knt|2|0|-|-|:co=red|2\na||2|0|-|-||10\n"},
        {"a[knt:wbarb:co=red]", "a|knt|32|0|-|-|co=red|0\n"},
        {"a,b[knt],c", "a||2|0|-|-||0\nb|knt|2|0|-|-||0\nc||2|0|-|-||0\n"},
        {"f(a[knt])", "f||2|0|-|-||2\na||2|0|-|-||10\n"},
        {"f(g(a),b)", "f||2|0|-|-||2\ng||2|0|-|-||12\na||2|0|-|-||20\nb||2|0|-|-||10\n"},
        {"map[wbarb:co=red]", "map||32|-|-|-|co=red|4\n"},
        {"{a,b}", "||2|0|-|-||5\na||2|0|-|-||1\nb||2|0|-|-||1\n"},
        {"{{a}}", "||2|0|-|-||5\n||2|0|-|-||5\na||2|0|-|-||2\n"},
        {"<u,v>", "||10|0|-|-||6\nu||10|0|-|-||1\nv||10|0|-|-||1\n"},
        {"wind(u,v)", "wind||20|0|-|-||2\nu||10|0|-|-||10\nv||10|0|-|-||10\n"},
        {"grad(a)", "grad||2|0|-|-||2\ngrad||2|0|-|-||8\na||2|0|-|-||10\n"},
        {"12:500:f(a)", "f||2|12|100|500||2\na||2|12|100|500||10\n"},
        {"12:500:f(24:a0-1:b,c)", "f||2|12|100|500||2\nb||2|24|106|0||10\nc||2|12|100|500||10\n"},
        {"f(a", "f||2|0|-|-||2\n"},
        {"a{b", "a||2|0|-|-||5\n"},
        {"a<b", "a||10|0|-|-||6\n"},
        {"a[b,c", "a||2|0|-|-||0\n"},
        {"f((a)", "f||2|0|-|-||2\n"},
        {"a\\(b\\),c", "a(b)||2|0|-|-||0\nc||2|0|-|-||0\n"},
        {"a\\,b", "a,b||2|0|-|-||0\n"},
        {"ens\\[+3\\]temp", "ens[+3]temp||2|0|-|-||0\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(decode(c.text), c.want);
        EXPECT_EQ(VAR_decode(nullptr, c.text), *c.want == '\0' ? 0 : 1);
        EXPECT_EQ(VAR_base_index(), -1);
    }
}

TEST_F(ExpressionTest, SettingsAreTheDefaults)
{
    PRM_set(kPrmLevelKind, 103);
    PRM_set(kPrmLevelValue, 1500);
    PRM_set(kPrmTime, 6);
    EXPECT_EQ(decode("wbrb,time-2:level:x"), "wbrb||2|6|103|1500||0\nx||2|4|103|1500||0\n");
    EXPECT_EQ(decode("map{x}"), "map||6|-|-|-||5\nx||2|6|103|1500||1\n");
    VAR_set_default_type(kTypeData);
    EXPECT_EQ(decode("x"), "x||1|6|103|1500||0\n");
}

TEST_F(ExpressionTest, PlotTypeSettlesTypes)
{
    const struct {
        int plot;
        const char *text;
        int type;
    } cases[] = {{15, "temp", 15},      {22, "temp", 22},      {11, "temp", 10},
                 {99, "temp", 2},       {12, "wind(u,v)", 12}, {11, "wind(u,v)", 11},
                 {99, "<u,v>", 10},     {21, "<u,v>", 21},     {15, "a[K:wbarb]", 15},
                 {99, "a[K:wbarb]", 32}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        PRM_set(kPrmPlotType, c.plot);
        VAR_decode(nullptr, c.text);
        EXPECT_EQ(VAR_get(0)->type, c.type);
    }
}

TEST_F(ExpressionTest, DefinitionsReplaceNames)
{
    open("wbrb Barbs 1 wbrb:knt:wbarb:co=blue\n"
         "two   Two   1 a:knt, b:m/s\n"
         "deep  Deep  1 two,c\n"
         "never Never 0 temp:K\n"
         "ping  Ping  1 pong\n"
         "pong  Pong  1 ping\n"
         "empty Empty 1\n"
         "comma Comma 1 ,\n"
         "fun   Fun   1 f(temp)\n"
         "long  Long  1 a,\\\n"
         "   b:knt\n");
    const struct {
        const char *text, *want;
    } cases[] = {
        {"wbrb", "wbrb|knt|32|0|-|-|co=blue|0\n"},
        {"WBRB", "WBRB||2|0|-|-||0\n"},
        {"+wbrb", "wbrb||2|0|-|-||0\n"},
        {"wbrb:m/s", "wbrb|m/s|32|0|-|-|co=blue|0\n"},
        {"wbrb::cbarb:co=red", "wbrb|knt|33|0|-|-|co=red|0\n"},
        {"6:850:wbrb", "wbrb|knt|32|6|100|850|co=blue|0\n"},
        {"two", "a|knt|2|0|-|-||0\nb|m/s|2|0|-|-||0\n"},
        {"two:K:wbarb:x,z", "a|K|32|0|-|-|x|0\nb|m/s|2|0|-|-||0\nz||2|0|-|-||0\n"},
        {"deep", "a|knt|2|0|-|-||0\nb|m/s|2|0|-|-||0\nc||2|0|-|-||0\n"},
        {"never", "temp|K|2|0|-|-||0\n"},
        {"empty", "empty||2|0|-|-||0\n"},
        {"comma", "comma||2|0|-|-||0\n"},
        {"long", "a||2|0|-|-||0\nb|knt|2|0|-|-||0\n"},
        {"g(fun)", "g||2|0|-|-||2\nf||2|0|-|-||12\ntemp||2|0|-|-||20\n"},
        {"two[dC]", "a|dC|2|0|-|-||0\nb|m/s|2|0|-|-||0\n"},
        {"wbrb(a)", "wbrb||2|0|-|-||2\na||2|0|-|-||10\n"}, // heads aren't looked up
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(decode(c.text), c.want);
    }
    const std::string told = told_by([] { decode("ping"); }); // each names the other
    EXPECT_NE(told.find("VAR_base_push: More than 10 levels"), std::string::npos);
    EXPECT_EQ(VAR_count(), 1);
}

TEST_F(ExpressionTest, FilePrefixSelectsAVariableFile)
{
    folder_.write("other.var", "wspd Speed 1 wspd:knt:value\n");
    EXPECT_EQ(decode("fi:other.var:wspd"), "wspd|knt|2|0|-|-||0\n");
    EXPECT_EQ(decode("wspd", "other.var"), "wspd|knt|2|0|-|-||0\n");
    EXPECT_EQ(decode("fi:other.var"), "");
    EXPECT_EQ(told_by([] { EXPECT_EQ(decode("fi:absent.var:wspd"), "wspd||2|0|-|-||0\n"); }),
              "VAR_open_file: Unable to open var file: " + folder_.file("absent.var") + "\n");
}

TEST_F(ExpressionTest, LimitsAreRefusedWithAMessage)
{
    std::string many;
    for (int i = 0; i < 59; ++i)
        many += "n,";
    const std::string token(512, 'a');
    const std::string full = "VAR_process: More than 60 variables, left out from here: ";
    const std::string deep = "VAR_base_push: More than 10 levels";
    const std::string text = "VAR_process: Text of more than 511 characters left out: aaa";
    const std::string name = "abcdefghijklmnopqrstuvwxyz";
    const struct {
        std::string text;
        int count;
        std::string message;
    } cases[] = {{many + "a,b,c", 60, full + "b"},
                 {many + "grad(a)", 60, full + "grad"},
                 {"((((((((((((a))))))))))))", 10, deep},
                 {token + ",b", 1, text},
                 {"f(" + token + "),b", 2, text},
                 {name, 1, "VAR_name: Name cut to 19 characters: " + name},
                 {"a:" + name, 1, "VAR_process_var: The unit has more than 15 characters"},
                 {"a:K:" + token.substr(200), 1, "VAR_process_var: The format has more than 102"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        const std::string told = told_by([&] { decode(c.text); });
        EXPECT_EQ(told.substr(0, c.message.size()), c.message);
        EXPECT_EQ(VAR_count(), c.count);
    }
    EXPECT_STREQ(VAR_get(0)->format, "");
    EXPECT_STREQ(VAR_get(0)->units, "K");
}

TEST_F(ExpressionTest, DefinitionsThatMultiplyEnd)
{
    std::string file;
    for (char c = 'a'; c < 'i'; ++c) {
        const std::string next(1, static_cast<char>(c + 1));
        file.append(1, c).append(" T 1 ").append(next + "," + next + "," + next + "\n");
    }
    open(file + "i T 1 ,\n");
    EXPECT_NE(told_by([] { decode("a"); }), "");
    EXPECT_LE(VAR_count(), kMaxVariables);
}

TEST_F(ExpressionTest, CatalogueSettlesNumbers)
{
    const struct {
        const char *name, *stored;
        int number, a;
    } cases[] = {{"temp", "temp", 11, 1},
                 {"TEMP", "TEMP", 11, 1},
                 {"wbrb-500", "wbrb-500", 205, 7},
                 {"dewp", "dewp", 17, M},
                 {"205", "wbrb", 205, M},
                 {"999", "999", 999, M},
                 {"nothing", "nothing", M, M},
                 {"ensmean[]temp", "ensmean[]temp", 19000011, 1},
                 {"ensdev[]temp-2", "ensdev[]temp-2", 19001011, 1},
                 {"ens[-3]temp", "ens[-3]temp", 19323011, 1},
                 {"ens[+12]temp", "ens[+12]temp", 19352011, 1},
                 {"ens[3]temp", "ens[3]temp", 19300011, 1},
                 {"ens[temp", "ens[temp", M, M},
                 {"ensmean[]nothing", "ensmean[]nothing", 19000000, M}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        VarRec record;
        VAR_init(&record);
        EXPECT_EQ(VAR_name(c.name, &record), c.number);
        EXPECT_STREQ(record.name, c.stored);
        EXPECT_EQ(record.var_number, c.number);
        EXPECT_EQ(record.var_a, c.a);
    }
    VarRec record;
    VAR_init(&record);
    EXPECT_EQ(VAR_name("#5", &record), 1);
    EXPECT_EQ(VAR_name("", &record), 0);
}

TEST_F(ExpressionTest, ProbabilitiesPackTheirThreshold)
{
    // 25.0 is 10 ^ 1 times 2.5: code 1, digits 25; 11 * 10000 + 1910001000 + 125
    VarRec record;
    VAR_init(&record);
    EXPECT_EQ(VAR_name("ensprob[<25]temp", &record), 1910111125);
    EXPECT_EQ(VAR_name("ensprob[>25]temp", &record), 1910112125);
    EXPECT_EQ(VAR_name("ensprob[^25]temp", &record), 1910113125);
    EXPECT_EQ(VAR_name("ensprob[<-25]temp", &record), 1910116125);
    EXPECT_EQ(VAR_name("ensprob[=25]temp", &record), 11);
}

TEST_F(ExpressionTest, PackedValues)
{
    const std::pair<float, int> cases[] = {{0.0F, 0},    {5.0F, 50},      {1.5F, 15},
                                           {25.0F, 125}, {-250.0F, -225}, {99999.0F, 499},
                                           {0.12F, 920}, {0.0034F, 740}};
    for (const auto &[x, packed] : cases) {
        EXPECT_EQ(VAR_pack_value(x), packed) << x;
    }
}

TEST_F(ExpressionTest, TestsOfRecords)
{
    VAR_decode(nullptr, "map,a:K:wbarb,dewp(b),<u,v>,grad(c)");
    ASSERT_EQ(VAR_count(), 10);
    EXPECT_EQ(VAR_is_point(0), 0);
    EXPECT_EQ(VAR_is_map(0), 1);
    EXPECT_EQ(VAR_is_frame(0), 0);
    EXPECT_EQ(VAR_is_panel(0), 0);
    EXPECT_EQ(VAR_is_point(1), 1);
    EXPECT_EQ(VAR_is_plain(1), 1);
    EXPECT_EQ(VAR_is_function(2), 1);
    EXPECT_EQ(VAR_is_grid(2), 1);
    EXPECT_EQ(VAR_is_point(2), 0);
    EXPECT_EQ(VAR_is_vector_head(4), 1);
    EXPECT_EQ(VAR_is_in_group(5), 1);
    EXPECT_EQ(VAR_is_function(7), 1);
    EXPECT_EQ(VAR_is_second(8), 1);
    EXPECT_EQ(VAR_is_group(8), 0);
    for (const int outside : {-1, 10, 60, 1000}) {
        EXPECT_EQ(VAR_is_point(outside), 0);
        EXPECT_EQ(VAR_is_plain(outside), 0);
    }
    EXPECT_EQ(VAR_get(60), nullptr);
    EXPECT_EQ(VAR_get(-1), nullptr);
}

TEST_F(ExpressionTest, RecordsPrintInOneLine)
{
    VAR_decode(nullptr, "12:500:temp:C:cbarb:ul");
    EXPECT_EQ(shown_by([] { VAR_print(kMsgPrint, VAR_get(0)); }),
              "V: temp       U: C          FH:      12 LT:    100 L:     500 VN:     11 T: cbarb "
              "F:  0 FM: ul\n");
}

TEST(TypeWords, WordsAndNames)
{
    const struct {
        const char *word;
        int code;
        const char *name;
    } cases[] = {
        {"data", 1, "data"}, {"MARK", 4, "mark"},  {"mk", 4, "mark"},     {"ln", 12, "lcont"},
        {"cf", 15, "fcont"}, {"lcf", 16, "bcont"}, {"track", 23, "strm"}, {"wbarb", 32, "wbarb"},
        {"wx", 36, "symb"},  {"line", 37, "line"}, {"plot", 30, "plot"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word);
        EXPECT_EQ(VAR_plot_code(c.word), c.code);
        EXPECT_STREQ(VAR_plot_name(c.code), c.name);
    }
    for (const char *word : {"int", "barbs", "", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(VAR_plot_code(word), -1);
    }
    EXPECT_STREQ(VAR_plot_name(-1), "----");
    EXPECT_STREQ(VAR_plot_name(10), "grid");
    EXPECT_STREQ(VAR_plot_name(40), "const");
    EXPECT_STREQ(VAR_plot_name(5), "int");
    EXPECT_EQ(GRD_func_type("wind-x"), 20);
    EXPECT_EQ(GRD_func_type("stream"), 23);
    EXPECT_EQ(GRD_func_type("adv"), 10);
    EXPECT_EQ(GRD_func_type("Adv"), 0);
    EXPECT_EQ(GRD_func_type(""), 0);
    EXPECT_EQ(GRD_is_vector_func("grad-temp"), 1);
    EXPECT_EQ(GRD_is_vector_func("gradient"), 0);
}
