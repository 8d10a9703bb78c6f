#include "tyr/var/expression.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/number.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"
#include "tyr/var/base_stack.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/level.h"
#include "tyr/var/record_fields_private.h"
#include "tyr/var/time_range.h"
#include "tyr/var/type_words.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_name.h"

using namespace tyr;

namespace {

constexpr int kNoPlot = 99; // plot type of the word "none"
constexpr int kNoRecord = -1;

struct State {
    int function_depth = 0;
    int group_depth = 0;
    int recursion_depth = -1;
    int definitions = 0;       // looked up in this expression
    bool is_full_told = false; // the message of the full list was given
};
State state;

/// The part that a list of fields has in the expression.
enum class Part { plain, looked_up, function, group, vector };

void report_too_long(const char *routine, std::string_view text)
{
    MSG_out(kMsgWarn, "%s: Text of more than %d characters left out: %.40s...\n", routine,
            static_cast<int>(kMaxVarToken) - 1, std::string(text.substr(0, 40)).c_str());
}

void report_full(std::string_view text)
{
    if (!state.is_full_told) {
        MSG_out(kMsgWarn, "VAR_process: More than %d variables, left out from here: %.40s\n",
                kMaxVariables, std::string(text.substr(0, 40)).c_str());
    }
    state.is_full_told = true;
}

/// The record at the count, null when the list is full.
VarRec *next_record()
{
    return VAR_get(VAR_count());
}

int role_of(Part part)
{
    const int depth = state.function_depth * 10;
    switch (part) {
    case Part::plain:
    case Part::looked_up:
        return depth + state.group_depth;
    case Part::function:
        return depth + kRoleFunction;
    case Part::group:
        return depth + kRoleGroup;
    case Part::vector:
        return depth + kRoleVector;
    }
    return depth;
}

/// Replaces a name by its definition in the variable file. False if there is none.
bool expand_definition(const std::string &name, VarRec *record)
{
    if (name.empty() || name.substr(0, kVarNameSize - 1) == record->name) {
        return false;
    }
    STR_copy(record->name, kVarNameSize, name);
    if (VAR_plot_code(name.c_str()) >= 0) {
        record->type = VAR_plot_code(name.c_str());
    }
    std::string definition(kMaxVarDefinition, '\0');
    if (VAR_lookup(name.c_str(), definition.data()) == 0 || definition[0] == '\0') {
        return false;
    }
    if (++state.definitions > kMaxVarDefinitions) {
        if (state.definitions == kMaxVarDefinitions + 1) {
            MSG_out(kMsgWarn, "VAR_process_var: More than %d definitions, left out from: %s\n",
                    kMaxVarDefinitions, name.c_str());
        }
        return false;
    }
    if (VAR_base_push() < 0) {
        return false;
    }
    const int count = VAR_count();
    VAR_process(definition.data());
    VAR_base_pop();
    return VAR_count() > count;
}

void settle_name(const std::string &name, Part part, VarRec *record)
{
    if (!name.empty() && name[0] == '+') {
        record->role = role_of(part);
        VAR_name(name.c_str() + 1, record);
    } else if (part != Part::looked_up || !expand_definition(name, record)) {
        record->role = role_of(part);
        VAR_name(name.c_str(), record);
    }
}

void read_fields(std::string_view text, Part part)
{
    VarRec *record = next_record();
    if (record == nullptr) {
        report_full(text);
        return;
    }
    std::vector<std::string> fields = split_fields(text);
    // "12:500:<uwnd,vwnd>": a time and a level in front of a bracket, and no name
    const bool is_bracket = part == Part::group || part == Part::vector;
    if (is_bracket && fields.size() == 2 && VAR_trim(text).ends_with(':')) {
        fields.emplace_back();
    }
    MSG_out(kMsgDebugC, "VAR_process_var:%d:%d:%s:\n", VAR_count(), state.function_depth,
            std::string(text).c_str());
    size_t f = 0;
    const int word = word_type(field_text(fields, 0));
    if (word >= 0) {
        STR_copy(record->name, kVarNameSize, field_text(fields, 0));
        record->type = word;
        record->role = kRoleWord;
        f = 1;
    } else {
        f = settle_time_and_level(fields, record);
        settle_name(field_text(fields, f), part, record);
        ++f;
        set_units(record, field_text(fields, f));
        ++f;
    }
    const int type = VAR_plot_code(field_text(fields, f).c_str());
    if (type >= 0) {
        record->type = type;
        ++f;
    }
    set_format(record, fields, f);
}

/// Makes a record of a token that isn't empty. Returns its index, kNoRecord for none.
int add_token(std::string_view token)
{
    token = VAR_trim(token);
    if (token.empty()) {
        return kNoRecord;
    }
    const int index = VAR_count();
    read_fields(token, Part::looked_up);
    VarRec *record = next_record();
    if (record != nullptr && record->name[0] != '\0') {
        VAR_set_count(VAR_count() + 1);
    } else if (record != nullptr) { // no name, so nothing to draw
        VAR_init(record);
    }
    return index < VAR_count() ? index : kNoRecord;
}

/// The kinds of bracket that a head stands in front of.
struct Bracket {
    char open;
    char close;
    Part part;
    const char *word;
    const char *unmatched;
};
constexpr Bracket kBrackets[] = {
    {'(', ')', Part::function, "Function", "()"},
    {'{', '}', Part::group,    "Group",    "()"},
    {'<', '>', Part::vector,   "Vector",   "<>"}
};

const Bracket *find_bracket(char c)
{
    for (const Bracket &bracket : kBrackets) {
        if (bracket.open == c) {
            return &bracket;
        }
    }
    return nullptr;
}

/// A function with two results needs a record for the second.
void add_second_record(const VarRec &head)
{
    VarRec *second = next_record();
    if (second == nullptr) {
        report_full(head.name);
        return;
    }
    *second = head;
    second->role = state.function_depth * 10 + kRoleSecond;
    MSG_out(kMsgDebugC, "VECT FUNC: %s\n", head.name);
    VAR_set_count(VAR_count() + 1);
}

/// A head's record, and whether there is room for what stands inside its bracket.
struct Head {
    int index = kNoRecord;
    bool has_base = false;
};

/// Makes the record of a head and hands its settings on.
Head add_head(const Bracket &bracket, std::string_view token)
{
    const int index = VAR_count();
    read_fields(VAR_trim(token), bracket.part);
    VarRec *record = VAR_get(index);
    if (record == nullptr) {
        return {};
    }
    record->role = role_of(bracket.part);
    const bool has_base = VAR_base_push() == 0;
    VAR_set_count(index + 1);
    if (bracket.part == Part::function && GRD_is_vector_func(record->name) == 1) {
        add_second_record(*record);
    }
    return {index, has_base};
}

/// Parses what stands inside a bracket, one level deeper.
void process_inside(const Bracket &bracket, std::string inside)
{
    int &depth = bracket.part == Part::function ? state.function_depth : state.group_depth;
    ++depth;
    VAR_process(inside.data());
    --depth;
    VAR_base_pop();
}

/// Applies "units:type:format" of square brackets to a record.
void apply_parameters(int index, std::string_view inside)
{
    const std::vector<std::string> fields = split_fields(inside);
    std::string joined;
    for (const std::string &field : fields) {
        joined += (joined.empty() ? "" : ":") + field;
    }
    MSG_out(kMsgDebugC, "Parameter [ %s ]\n", joined.c_str());
    VarRec *record = VAR_get(index);
    if (state.function_depth != 0 || record == nullptr) {
        return;
    }
    size_t f = 0;
    if (record->role != kRoleWord) {
        set_units(record, field_text(fields, f++));
    }
    const int type = VAR_plot_code(field_text(fields, f).c_str());
    if (type >= 0) {
        const auto plot = static_cast<int>(PRM_get(kPrmPlotType));
        if (plot == kMissingInt || plot == kNoPlot) {
            record->type = type;
        }
        ++f;
    }
    set_format(record, fields, f);
}

/// A walk along one expression.
class Walk {
  public:
    explicit Walk(std::string_view text) : text_(text) {}

    void run()
    {
        while (place_ < text_.size() && step()) {
        }
        if (place_ >= text_.size()) {
            finish_token();
        }
    }

  private:
    std::string_view token() const { return text_.substr(start_, place_ - start_); }

    // A token within its room, else empty.
    std::string_view checked(std::string_view text) const
    {
        if (text.size() < kMaxVarToken) {
            return text;
        }
        report_too_long("VAR_process", text);
        return {};
    }

    void move_to(size_t place) { start_ = place_ = place; }

    void finish_token()
    {
        const std::string_view text = checked(token());
        if (VAR_trim(text).empty()) {
            return;
        }
        MSG_out(kMsgDebugC, "Variable %s\n", std::string(text).c_str());
        noted_ = add_token(text);
    }

    // False ends the walk: a bracket isn't closed.
    bool step()
    {
        const char c = text_[place_];
        const bool is_escaped = place_ > start_ && text_[place_ - 1] == '\\';
        const Bracket *bracket = find_bracket(c);
        if (!is_escaped && bracket != nullptr) {
            return take_bracket(*bracket);
        }
        if (!is_escaped && c == '[') {
            return take_parameters();
        }
        if (!is_escaped && c == ',') {
            finish_token();
            move_to(place_ + 1);
        } else {
            ++place_;
        }
        return true;
    }

    bool take_bracket(const Bracket &bracket)
    {
        const std::string_view head = checked(token());
        const Head made = add_head(bracket, head);
        const size_t end = find_closing(text_, place_, bracket.close);
        if (end == std::string_view::npos) {
            MSG_out(kMsgDebugC, "Unmatched %s\n", bracket.unmatched);
            if (made.has_base) {
                VAR_base_pop();
            }
            return false;
        }
        const std::string inside(checked(text_.substr(place_ + 1, end - place_ - 1)));
        MSG_out(kMsgDebugC, "%s %s %c %s %c\n", bracket.word, std::string(head).c_str(),
                bracket.open, inside.c_str(), bracket.close);
        if (made.has_base) {
            process_inside(bracket, inside);
        }
        noted_ = made.index;
        move_to(end + 1);
        return true;
    }

    bool take_parameters()
    {
        const std::string_view name = checked(token());
        if (!VAR_trim(name).empty()) {
            noted_ = add_token(name);
        }
        const size_t end = text_.find(']', place_);
        if (end == std::string_view::npos) {
            MSG_out(kMsgDebugC, "Unmatched []\n");
            return false;
        }
        const std::string_view inside = checked(text_.substr(place_ + 1, end - place_ - 1));
        apply_parameters(noted_, inside);
        move_to(end + 1);
        return true;
    }

    std::string_view text_;
    size_t start_ = 0;      // where the token begins
    size_t place_ = 0;      // where the walk stands
    int noted_ = kNoRecord; // record of the last head or variable
};

/// The settings that stand below an expression.
void start_base()
{
    VarBase base{
        static_cast<int>(PRM_get(kPrmPlotType)), kMissingInt, 0, kMissingInt, kMissingInt, 0};
    VAR_base_clear();
    base.time_class = VAR_time("", &base.time);
    base.level_class = VAR_level("", &base.level_kind, &base.level_value);
    VAR_base_add(base);
}

int has_role()
{
    for (int i = 0; i < VAR_count(); ++i) {
        if (VAR_get(i)->role >= 0) {
            return 1;
        }
    }
    return 0;
}

} // namespace

int VAR_decode(const char *file, const char *text)
{
    VAR_label_options();
    VAR_reset();
    std::string expression = text == nullptr ? "" : text;
    std::string file_name = file == nullptr ? "" : file;
    const std::string prefix = take_file(&expression);
    if (!prefix.empty()) {
        file_name = prefix;
    }
    if (!file_name.empty()) {
        VAR_open_file(file_name.c_str());
    }
    state = State{};
    start_base();
    VAR_process(expression.data());
    for (int i = 0; i < VAR_count(); ++i) {
        MSG_out(kMsgDebugC, "Var: %d -- ", i);
        VAR_print(kMsgDebugC, VAR_get(i));
    }
    VAR_base_clear();
    if (has_role() == 0) {
        MSG_out(kMsgDebugC, "Unable to determine variables\n");
        return 0;
    }
    return 1;
}

int VAR_process(char *text)
{
    ++state.recursion_depth;
    MSG_out(kMsgDebugC, "VAR_process: %d|%d|%s|\n", state.recursion_depth, VAR_count(), text);
    Walk(text).run();
    --state.recursion_depth;
    return 0;
}

int VAR_process_var(char *text, int lookup)
{
    read_fields(text, lookup != 0 ? Part::looked_up : Part::plain);
    return 0;
}
