#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/raw/raw_column.h"
#include "tyr/raw_math/raw_math.h"
#include "tyr/raw_math/raw_math_private.h"
#include "tyr/raw_math/raw_write.h"

using namespace tyr;

namespace {

constexpr int kEachLine = 1;
constexpr unsigned kTrace = kMsgOut3;
constexpr size_t kSeriesLabel = 10; ///< characters of a file's label in place of the id

struct ScalarOp {
    const char *word;
    float (*work)(float v, float k);
};
constexpr ScalarOp kOps[] = {
    {"sum",   [](float v, float k) { return v + k; }               },
    {"add",   [](float v, float k) { return v + k; }               },
    {"sub",   [](float v, float k) { return v - k; }               },
    {"psub",  [](float v, float k) { return k - v; }               },
    {"mul",   [](float v, float k) { return v * k; }               },
    {"scale", [](float v, float k) { return v * k; }               },
    {"div",   [](float v, float k) { return v / k; }               },
    {"pdiv",  [](float v, float k) { return k / v; }               },
    {"mod",   [](float v, float k) { return std::fmod(v, k); }     },
    {"pmod",  [](float v, float k) { return std::fmod(k, v); }     },
    {"ge",    [](float v, float k) { return v > k ? kMissing : v; }},
    {"le",    [](float v, float k) { return v < k ? kMissing : v; }},
};

/// Writes each value of a file as `change` gives it, with a trace.
template <class Change>
int write_values(const MathFile &in, MathFile *out, const char *trace, Change change)
{
    for (RawValue value = {}; in.next(&value);) {
        change(&value);
        RAW_write_value(out->handle(), &value, kEachLine, nullptr);
        MSG_out(kTrace, "%s: %s %f\n", trace, value.id, static_cast<double>(value.value1));
    }
    return out->keep();
}

/// The header of an extract: the column's label or its name behind the input's text.
void name_column(const MathFile &in, const RawHeader &header)
{
    const char *label = RAW_field_label(in.handle(), in.column());
    const char *name = raw_column_name(in.column());
    const char *told = label != nullptr && label[0] != '\0' ? label : name;
    std::string text = header.format;
    if (in.column() != kRawAllWords && told != nullptr && told[0] != '\0') {
        text += std::string("-") + told;
    }
    RawHeader &out = raw_math().header;
    STR_copy(out.title, sizeof out.title, header.title);
    STR_copy(out.format, sizeof out.format, text.c_str());
}

/// Writes the header of a series by its first file.
void begin_series(const MathFile &in, const RawHeader &header, char **words, int count, int at,
                  const MathFile &out)
{
    RawHeader &wanted = raw_math().header;
    if (const char *label = RAW_field_label(in.handle(), in.column())) {
        STR_copy(wanted.format, sizeof wanted.format, label);
    }
    take_header_words(words, count, at);
    fill_header(header);
    RAW_write_header(out.handle(), &wanted);
}

} // namespace

int RAW_scalar_math(const char *op, const char *file, float number, const char *out)
{
    const MathFile in(file, kRawRead);
    if (!in) {
        return 0;
    }
    MathFile written(out, kRawWrite);
    if (!written) {
        return 0;
    }
    RawHeader header = {};
    RAW_read_header(in.handle(), &header);
    fill_header(header);
    RAW_write_header(written.handle(), &raw_math().header);
    const auto *row = std::find_if(std::begin(kOps), std::end(kOps), [op](const ScalarOp &known) {
        return STR_casecmp(known.word, op) == 0;
    });
    return write_values(in, &written, "Updated", [&](RawValue *value) {
        value->value1 = row == std::end(kOps) ? value->value1 : row->work(value->value1, number);
    });
}

int RAW_extract(const char *in, const char *out)
{
    const MathFile read(in, kRawRead);
    if (!read) {
        return 0;
    }
    MathFile written(out, kRawWrite);
    if (!written) {
        return 0;
    }
    RawHeader header = {};
    RAW_read_header(read.handle(), &header);
    if (raw_math().has_no_attributes) {
        RAW_set_field_format(read.handle(), read.column(), "");
    }
    name_column(read, header);
    RAW_write_header(written.handle(), &raw_math().header);
    return write_values(read, &written, "Saved", [](RawValue * /*value*/) {});
}

int RAW_series(char **words, int count)
{
    const int sign =
        static_cast<int>(std::find_if(words, words + count,
                                      [](const char *w) { return std::string_view(w) == "="; }) -
                         words);
    MathFile out(sign + 1 < count ? words[sign + 1] : "-", kRawWrite);
    if (!out) {
        return 0;
    }
    for (int i = 0; i < sign; ++i) {
        MSG_out(kTrace, "Opening file: %s\n", words[i]);
        const MathFile in(words[i], kRawRead);
        if (!in) {
            return 0;
        }
        RawHeader header = {};
        RAW_read_header(in.handle(), &header);
        if (i == 0) {
            begin_series(in, header, words, count, sign + 2, out);
        }
        const std::string id = in.format() != nullptr
                                   ? std::string(in.format()).substr(0, kSeriesLabel)
                                   : std::to_string(i + 1);
        for (RawValue value = {}; in.next(&value);) {
            STR_copy(value.id, sizeof value.id, id.c_str());
            RAW_write_value(out.handle(), &value, kEachLine, nullptr);
        }
    }
    return out.keep();
}
