#include "tyr/raw_math/raw_write.h"

#include <algorithm>
#include <string>

#include "tyr/base/number_format.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/raw/raw_read_private.h"
#include "tyr/var/type_words.h"

using namespace tyr;

namespace {

enum WriteMode { kWholeLine = 1, kPlace = 3, kEndOfLine = 5 };

constexpr const char *kNone = "-";

/// The file of a handle that is open for writing; null for none.
RawFileRec *written_file(int handle)
{
    RawFileRec *file = raw_file(handle);
    return file && file->mode != kRawRead ? file : nullptr;
}

std::string without_blanks(std::string text)
{
    std::replace(text.begin(), text.end(), ' ', '_');
    return text;
}

/// How a value is written: its kind and the formats of reals and integers.
struct Form {
    int kind;
    std::string real = "%f";
    std::string integer = "%d";
};

Form form_of(const RawValue &value)
{
    Form form{value.kind == 0 ? static_cast<int>(kTypeValue) : value.kind};
    for (const std::string &word : RES_list("plot_format")) {
        if (word[0] != '%') {
            const int type = VAR_plot_code(word.c_str());
            form.kind = type > 0 ? type : form.kind;
        } else if (conversion_of(word.c_str()) != Conversion::kNone) {
            form.kind = kTypeValue;
            form.real = form.integer = word;
        }
    }
    return form;
}

std::string real_text(const Form &form, float value)
{
    return print_real(form.real.c_str(), "%f", static_cast<double>(value));
}

std::string value_text(const RawValue &value)
{
    const Form form = form_of(value);
    const bool is_missing_value = is_missing(value.value1);
    switch (form.kind) {
    case kTypeData:
    case kTypeText:
    case kTypeMark:
    case kTypeCloud:
    case kTypeSymbol:
        return value.text[0] != '\0' ? value.text : kNone;
    case kTypeValue:
        return is_missing_value ? kNone : real_text(form, value.value1);
    case kTypeInt:
        return is_missing_value
                   ? kNone
                   : print_real(form.integer.c_str(), "%1.0f", static_cast<double>(value.value1));
    case kTypeVector:
    case kTypeBarb:
    case kTypeCloudBarb:
    case kTypeDotBarb:
        return is_missing_value
                   ? kNone
                   : real_text(form, value.value1) + "," + real_text(form, value.value2);
    default:
        return kNone;
    }
}

} // namespace

int RAW_write_header(int handle, const RawHeader *header)
{
    RawFileRec *file = written_file(handle);
    if (!file) {
        return -1;
    }
    std::FILE *stream = file->out.stream();
    if (file->fields.empty()) {
        std::fprintf(stream, "TYRRAW\n%s\n%s\n", header->title, header->format);
        return 0;
    }
    std::fprintf(stream, "TYRRAW\n%s\n!%s\nid lat lon\n", header->title, header->format);
    for (const RawField &field : file->fields) {
        std::fprintf(stream, "%s:%s:%s\n", without_blanks(field.name.data()).c_str(),
                     without_blanks(field.label.data()).c_str(),
                     without_blanks(field.format.data()).c_str());
    }
    std::fputs("$\n", stream);
    return 0;
}

int RAW_write_value(int handle, const RawValue *value, int mode, int * /*line*/)
{
    RawFileRec *file = written_file(handle);
    if (!file) {
        return 0;
    }
    std::FILE *stream = file->out.stream();
    if (mode == kEndOfLine) {
        std::fputc('\n', stream);
        return 0;
    }
    if (mode == kWholeLine || mode == kPlace) {
        std::fputs(value->id, stream);
        if (!is_missing(value->lat)) {
            std::fprintf(stream, " %6.2f %7.2f", static_cast<double>(value->lat),
                         static_cast<double>(value->lon));
        }
    }
    if (mode == kPlace) {
        return 0;
    }
    std::fprintf(stream, " %s", value_text(*value).c_str());
    if (value->format[0] != '\0') {
        std::fprintf(stream, ":%s", value->format);
    }
    if (mode == kWholeLine) {
        std::fputc('\n', stream);
    }
    return 1;
}

void RAW_set_field_format(int handle, long column, const char *format)
{
    RawFileRec *file = raw_file(handle);
    const int field = file ? raw_field_index(*file, column) : -1;
    if (field >= 0 && field < static_cast<int>(file->fields.size())) {
        STR_copy(file->fields[static_cast<size_t>(field)].format.data(), kRawFormatRoom, format);
    }
}
