#include "tyr/grid_math/evaluate.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/grid_math/grid_math.h"
#include "tyr/grid_math/grid_operands.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/grid_units.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/expression.h"
#include "tyr/var/label.h"
#include "tyr/var/level.h"
#include "tyr/var/time_range.h"
#include "tyr/var/type_words.h"
#include "tyr/var/var_name.h"

using namespace tyr;

namespace {

using tyr::OwnGrid;

constexpr size_t kEntries = tyr::kMaxOperands + 2; // results and operands

/// What a part of an expression comes to: one grid, two, or a number.
struct Value {
    std::unique_ptr<OwnGrid> first;
    std::unique_ptr<OwnGrid> second;
    float constant = kMissing;
};

class Evaluator {
  public:
    Evaluator(const tyr::GridFinder &find, const std::string &where, int first)
        : find_(find), where_(where), next_(first)
    {
    }

    /// The item that begins at the next record of the list; false after a message.
    bool item(Value *value)
    {
        if (next_ >= VAR_count())
            return fail("an operand is left out");
        const VarRec record = *VAR_get(next_++);
        if (record.type == kTypeConst) {
            char *end = nullptr;
            value->constant = std::strtof(record.name + 1, &end);
            return end != record.name + 1 || fail("a constant that is no number");
        }
        switch (record.role % 10) {
        case kRoleFunction:
            // two groups deep a variable has the role of a function's head, but nothing in it
            if (!is_inside(record) && GRD_is_vector_func(record.name) == 0)
                return variable(level_in_front(record), value);
            return function(record, value);
        case kRoleVector:
            return vector(record, value);
        case kRoleGroup:
        case kRoleWord:
            return fail("a group has no value");
        default:
            return variable(level_in_front(record), value);
        }
    }

    int next() const { return next_; }
    bool is_at_end() const { return next_ >= VAR_count(); }

    /// Moves what an item came to into the caller's records. @return number of grids
    static int hand_out(Value *value, GridRec out[2])
    {
        std::swap(out[0], value->first->rec);
        if (value->second == nullptr)
            return 1;
        std::swap(out[1], value->second->rec);
        return 2;
    }

    bool fail(const char *reason) const
    {
        MSG_out(kMsgWarn, "GRD_evaluate: %s\n", reason);
        return false;
    }

  private:
    /// "500:uwnd", which reads as a variable number and a unit, told apart by the unit's being no
    /// unit but a variable of the catalogue.
    static VarRec level_in_front(const VarRec &record)
    {
        int kind = kMissingInt;
        int level = kMissingInt;
        if (record.units[0] == '\0' || VAR_find_abbr(record.units) == nullptr ||
            VAR_find_abbr(record.name) != nullptr)
            return record;
        VAR_level(record.name, &kind, &level);
        if (kind == kMissingInt)
            return record;
        VarRec turned = record;
        turned.level_kind = kind;
        turned.level_value = level;
        turned.var_number = kMissingInt;
        turned.units[0] = '\0';
        VAR_name(record.units, &turned);
        return turned;
    }

    bool variable(const VarRec &record, Value *value)
    {
        auto grid = std::make_unique<OwnGrid>();
        if (!find_(record, &grid->rec) || grid->rec.values == nullptr) {
            std::array<char, kDatatypeSize> level{};
            VAR_make_datatype(record.time, record.level_kind, record.level_value, level.data());
            // a range stands in that text, a plain hour doesn't
            const bool is_hour = record.time >= 0 && record.time < kRangeUnit;
            std::string place = is_hour ? STR_print("%d h", record.time) : "";
            place += std::string(is_hour && level[0] != '\0' ? " " : "") + level.data();
            MSG_out(kMsgWarn, "GRD_evaluate: No grid of %s%s%s in %s\n", record.name,
                    place.empty() ? "" : " at ", place.c_str(), where_.c_str());
            return false;
        }
        // a grid that is there can be an operand, whatever centre it names
        if (grid->rec.source == 0)
            grid->rec.source = 1;
        value->first = std::move(grid);
        return units(record, value);
    }

    /// The records behind a head that stand deeper in the expression.
    bool is_inside(const VarRec &head) const
    {
        return next_ < VAR_count() && VAR_get(next_)->role / 10 > head.role / 10;
    }

    bool function(const VarRec &head, Value *value)
    {
        const bool is_vector = GRD_is_vector_func(head.name) == 1;
        if (is_vector)
            ++next_; // the head's second record
        std::vector<Value> operands;
        while (is_inside(head)) {
            operands.emplace_back();
            if (!item(&operands.back()))
                return false;
        }
        if (is_pair(head))
            return pair(&operands, value) && units(head, value);
        return calculate(head, is_vector, operands, value);
    }

    /// "wind" and its like only tell how to draw their two operands.
    static bool is_pair(const VarRec &head)
    {
        const int type = GRD_func_type(head.name);
        return type == kTypeWind || type == kTypeVector || type == kTypeStream;
    }

    bool pair(std::vector<Value> *parts, Value *value) const
    {
        std::vector<std::unique_ptr<OwnGrid>> grids;
        for (Value &part : *parts)
            for (std::unique_ptr<OwnGrid> *grid : {&part.first, &part.second})
                if (*grid != nullptr)
                    grids.push_back(std::move(*grid));
        if (grids.size() != 2)
            return fail("a vector has two parts");
        value->first = std::move(grids[0]);
        value->second = std::move(grids[1]);
        return true;
    }

    bool calculate(const VarRec &head, bool is_vector, const std::vector<Value> &operands,
                   Value *value) const
    {
        std::array<GridRec *, kEntries> grids{};
        std::array<float, kEntries> constants{};
        constants.fill(kMissing);
        const size_t results = is_vector ? 2 : 1;
        size_t place = results;
        const GridRec *first = nullptr;
        for (const Value &operand : operands) {
            if (place + 2 > kEntries)
                return fail("a function of more than 20 operands");
            constants[place] = operand.constant;
            grids[place++] = operand.first ? &operand.first->rec : nullptr;
            if (operand.second)
                grids[place++] = &operand.second->rec;
            if (first == nullptr && operand.first)
                first = &operand.first->rec;
        }
        if (first == nullptr)
            return fail("a function of no grid");
        for (size_t i = 0; i < results; ++i) {
            std::unique_ptr<OwnGrid> &own = i == 0 ? value->first : value->second;
            own = std::make_unique<OwnGrid>();
            grids[i] = &own->rec;
            GRD_copy_layout(grids[i], first); // a constant may stand first
            grids[i]->ltype = first->ltype;
            grids[i]->level = first->level;
            grids[i]->time = first->time;
        }
        return GRD_math(head.name, grids.data(), constants.data()) == 1 &&
               finish(head, *first, value);
    }

    static bool finish(const VarRec &head, const GridRec &first, Value *value)
    {
        for (const std::unique_ptr<OwnGrid> *own : {&value->first, &value->second}) {
            if (*own == nullptr)
                continue;
            GridRec &grid = (*own)->rec;
            // an operation that makes no label is named in it
            if (grid.info[0] == '\0')
                GRD_label(&grid, &first, head.name);
            if (head.units[0] != '\0')
                GRD_units(&grid, head.units);
        }
        return true;
    }

    bool vector(const VarRec &head, Value *value)
    {
        std::vector<Value> parts(2);
        if (!item(&parts[0]) || !item(&parts[1]) || !pair(&parts, value))
            return false;
        return units(head, value);
    }

    static bool units(const VarRec &record, Value *value)
    {
        if (record.units[0] == '\0')
            return true;
        GRD_units(&value->first->rec, record.units);
        if (value->second)
            GRD_units(&value->second->rec, record.units);
        return true;
    }

    const tyr::GridFinder &find_;
    const std::string &where_;
    int next_;
};

} // namespace

int GRD_evaluate(const char *expression, const tyr::GridFinder &find, const std::string &where,
                 GridRec out[2])
{
    GRD_init(&out[0]);
    GRD_init(&out[1]);
    Evaluator evaluator(find, where, 0);
    if (VAR_decode(nullptr, expression) == 0) {
        evaluator.fail("no variable in the expression");
        return 0;
    }
    Value value;
    if (!evaluator.item(&value))
        return 0;
    if (!evaluator.is_at_end() || value.first == nullptr) {
        evaluator.fail(value.first ? "an expression of more than one item" : "a constant alone");
        return 0;
    }
    return Evaluator::hand_out(&value, out);
}

int GRD_evaluate_item(int *index, const tyr::GridFinder &find, const std::string &where,
                      GridRec out[2])
{
    GRD_init(&out[0]);
    GRD_init(&out[1]);
    const int role = *index >= 0 && *index < VAR_count() ? VAR_get(*index)->role % 10 : kRolePlain;
    if (role == kRoleGroup || role == kRoleWord) {
        ++*index;
        return -1;
    }
    Evaluator evaluator(find, where, *index);
    Value value;
    if (!evaluator.item(&value))
        return 0;
    *index = evaluator.next();
    if (value.first == nullptr) {
        evaluator.fail("a constant alone");
        return 0;
    }
    return Evaluator::hand_out(&value, out);
}
