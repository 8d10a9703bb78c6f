#include "tyr/grid_math/grid_math_file.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grid_math/grid_operands.h"
#include "tyr/grid_math/grid_places.h"

using namespace tyr;

namespace {

using tyr::OwnGrid;

/// The result of an operation over files so far.
struct Running {
    GridRec *out;
    std::vector<int> seen; ///< files in which a point isn't Missing
    int files = 0;
};

enum class FileOp { largest, smallest, sum, average };

void add_file(FileOp op, const GridRec &grid, Running *running)
{
    float *total = running->out->values;
    for (size_t i = 0; i < running->seen.size(); ++i) {
        const float value = grid.values[i];
        if (value == kMissing)
            continue;
        const bool is_first = running->seen[i]++ == 0;
        if (is_first)
            total[i] = value;
        else if (op == FileOp::largest)
            total[i] = std::max(total[i], value);
        else if (op == FileOp::smallest)
            total[i] = std::min(total[i], value);
        else
            total[i] += value;
    }
    ++running->files;
}

void finish_files(FileOp op, Running *running)
{
    float *total = running->out->values;
    for (size_t i = 0; i < running->seen.size(); ++i) {
        if (op == FileOp::average)
            total[i] = running->seen[i] == running->files
                           ? total[i] / static_cast<float>(running->files)
                           : kMissing;
        else if (running->seen[i] == 0)
            total[i] = op == FileOp::sum ? 0.0F : kMissing;
    }
}

bool find_file_op(const char *name, FileOp *op)
{
    constexpr std::array<std::pair<const char *, FileOp>, 4> kOps{
        {{"max", FileOp::largest},
         {"min", FileOp::smallest},
         {"sum", FileOp::sum},
         {"avg", FileOp::average}}
    };
    for (const auto &[word, known] : kOps)
        if (std::string(name) == word) {
            *op = known;
            return true;
        }
    return false;
}

/// Takes one file in; false, told, where it doesn't fit.
bool take_file(FileOp op, const std::string &path, const tyr::GridReader &read, Running *running)
{
    OwnGrid grid;
    if (!read(path, &grid.rec) || grid.rec.values == nullptr) {
        MSG_out(kMsgWarn, "GRD_math_file: No grid in %s\n", path.c_str());
        return false;
    }
    GridRec &out = *running->out;
    if (out.values == nullptr) {
        GRD_copy(&out, &grid.rec);
        out.values = nullptr;
        if (GRD_alloc(&out) == 0)
            return false;
        std::fill_n(out.values, tyr::point_count(out.domain), kMissing);
        running->seen.assign(tyr::point_count(out.domain), 0);
    } else if (DOM_equal(&out.domain, &grid.rec.domain) == 0) {
        MSG_out(kMsgWarn, "GRD_math_file: %s is on another domain\n", path.c_str());
        return false;
    }
    add_file(op, grid.rec, running);
    return true;
}

} // namespace

int GRD_math_file(const char *name, const std::vector<std::string> &paths,
                  const tyr::GridReader &read, GridRec *out)
{
    GRD_init(out);
    FileOp op = FileOp::sum;
    Running running{out, {}};
    if (find_file_op(name, &op))
        for (const std::string &path : paths)
            take_file(op, path, read, &running);
    if (running.files == 0) {
        MSG_out(kMsgWarn, "GRD_math_file: Invalid grids\n");
        return 0;
    }
    finish_files(op, &running);
    return running.files;
}
