#include "tyr/var/sources.h"

#include <optional>
#include <string>
#include <string_view>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/number.h"
#include "tyr/base/str.h"
#include "tyr/var/data_file.h"

namespace {

constexpr const char *kSourceFile = "source.lup";
constexpr const char *kModelFile = "mod_name.lup";
constexpr int kCenterUnit = 1000; // weight of the center in a model's code

struct State {
    FilePtr models;
    std::string path;            // of the model file
    int last_code = kMissingInt; // the model last found
    std::string last_name;
};
State state;

/// One line of the model file.
struct Model {
    std::optional<int> center;
    int number = 0;
    std::string_view name;
};

std::optional<Model> read_model(std::string_view line)
{
    Model model;
    std::optional<int> number = VAR_take_int(&line);
    if (number.has_value() && !line.empty() && line[0] == ':') {
        model.center = number;
        line.remove_prefix(1);
        number = VAR_take_int(&line);
    }
    model.name = VAR_trim(line);
    if (!number.has_value() || model.name.empty()) {
        return std::nullopt;
    }
    model.number = *number;
    return model;
}

bool find_model(int code, std::string *name)
{
    const int center = code > kCenterUnit ? code / kCenterUnit : 0;
    const int number = code > kCenterUnit ? code % kCenterUnit : code;
    std::rewind(state.models.get());
    std::string line;
    while (VAR_next_line(state.models.get(), &line)) {
        const std::optional<Model> model = read_model(line);
        if (!model.has_value() || model->number != number ||
            model->center.value_or(center) != center) {
            continue;
        }
        *name = model->name;
        return true;
    }
    return false;
}

} // namespace

char *VAR_source(char *out, int code)
{
    *out = '\0';
    const FilePtr file = VAR_open_data(kSourceFile);
    if (file == nullptr) {
        MSG_out(kMsgWarnA, "VAR_source: Unable to open file: %s\n",
                VAR_data_path(kSourceFile).c_str());
        return nullptr;
    }
    std::string line;
    while (VAR_next_line(file.get(), &line)) {
        std::string_view rest = line;
        const std::optional<int> number = VAR_take_int(&rest);
        if (!number.has_value() || *number != code || VAR_trim(rest).empty()) {
            continue;
        }
        STR_copy(out, kSourceTextSize, VAR_trim(rest));
        break;
    }
    return out;
}

char *VAR_model(char *out, int code)
{
    *out = '\0';
    if (state.models == nullptr || state.path != VAR_data_path(kModelFile)) {
        state = State{VAR_open_data(kModelFile), VAR_data_path(kModelFile), kMissingInt, {}};
    }
    if (state.models == nullptr) {
        MSG_out(kMsgWarnA, "VAR_model: Unable to open file: %s\n", state.path.c_str());
        return out;
    }
    if (code != state.last_code || state.last_name.empty()) {
        state.last_name.clear();
        state.last_code = code;
        find_model(code, &state.last_name);
    }
    STR_copy(out, kModelTextSize, state.last_name);
    return out;
}
