#include <bit>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/str.h"
#include "tyr/grid/text_grids_private.h"

namespace tyr {

namespace {

/// A number as "%f" where that gives the same float back, else with all its digits.
std::string real(float value)
{
    const double wide = value;
    std::string text = STR_print("%f", wide);
    return std::strtof(text.c_str(), nullptr) == value ? text : STR_print("%.9g", wide);
}

std::string one_line(const char *text)
{
    std::string line = text;
    for (char &c : line) {
        c = c == '\n' || c == '\r' ? ' ' : c;
    }
    return line;
}

/// The word; empty for a projection that the form has none for.
std::string projection(const DomainRec &domain)
{
    const bool has_pole = !is_missing(domain.plon) && domain.plon != domain.clon;
    switch (domain.proj) {
    case kProjLatLon:
        return has_pole ? "LL:" + real(domain.plon) : "LL";
    case kProjMercator:
        return "ME";
    case kProjPolar:
        return has_pole ? "PS:" + real(domain.plon) : "PS";
    case kProjLambert:
        if (!is_missing(domain.parm1)) {
            return "LC:" + real(domain.plat) + ":" + real(domain.plon) + ":" + real(domain.parm1) +
                   ":" + real(domain.parm2) + ":" + real(domain.parm3);
        }
        return is_missing(domain.plon) ? "LC" : "LC:" + real(domain.plon);
    default:
        return "";
    }
}

void write_binary(std::FILE *stream, const GridRec &grid)
{
    const size_t nx = static_cast<size_t>(grid.domain.nx);
    std::vector<uint32_t> row(nx);
    for (int y = 0; y < grid.domain.ny; ++y) {
        for (size_t x = 0; x < nx; ++x) {
            const float value = grid.values[static_cast<size_t>(y) * nx + x];
            row[x] = std::bit_cast<uint32_t>(value);
            if constexpr (std::endian::native == std::endian::little) {
                row[x] = __builtin_bswap32(row[x]);
            }
        }
        std::fwrite(row.data(), sizeof row[0], nx, stream);
    }
    std::fputc('\n', stream);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral" // checked by GRD_set_number_format
void write_text(std::FILE *stream, const GridRec &grid, const char *format)
{
    const size_t count = static_cast<size_t>(grid.domain.nx) * static_cast<size_t>(grid.domain.ny);
    for (size_t i = 0; i < count; ++i) {
        std::fprintf(stream, format, static_cast<double>(grid.values[i]));
    }
}
#pragma GCC diagnostic pop

} // namespace

const char *write_text_grid(std::FILE *stream, const GridRec &grid, bool is_binary,
                            const char *format)
{
    const DomainRec &domain = grid.domain;
    const std::string word = projection(domain);
    if (word.empty() || domain.nx < 1 || domain.ny < 1) {
        return "text grids have no word for the projection, or there are no points";
    }
    std::string units = one_line(grid.units);
    STR_replace_char(units.data(), ' ', '_');
    const std::string date = one_line(grid.date);
    std::fprintf(stream, "%s\n%d-%s\n", date.empty() ? " " : date.c_str(),
                 is_binary ? kBinaryForm : kTextForm, one_line(grid.info).c_str());
    std::fprintf(stream, "%d %d %d %d %d %d %d %d%s%s\n", grid.source, grid.version, grid.model,
                 grid.grid_id, grid.ltype, grid.level, grid.time, grid.var,
                 units.empty() ? "" : ":", units.c_str());
    const float clon = grid.version == 1 ? -domain.clon : domain.clon;
    std::fprintf(stream, "%s %s %s %s %s %d %d\n", word.c_str(), real(domain.clat).c_str(),
                 real(clon).c_str(), real(domain.dx).c_str(), real(domain.dy).c_str(), domain.nx,
                 domain.ny);
    if (is_binary) {
        write_binary(stream, grid);
    } else {
        write_text(stream, grid, format);
    }
    return std::fflush(stream) == 0 && std::ferror(stream) == 0 ? nullptr : "writing failed";
}

} // namespace tyr
