#include <array>
#include <charconv>
#include <cstdio>

#include "tyr/base/missing.h"
#include "tyr/base/str.h"
#include "tyr/grid/text_grids_private.h"
#include "tyr/place/domain_text.h"

// What stands in front of the values of a text grid.

namespace tyr {

namespace {

constexpr int kNewestForm = kIndirectForm;
constexpr size_t kLongestDomainText = 900;

struct ProjectionWord {
    const char *word;
    int proj;
};
constexpr ProjectionWord kProjectionWords[] = {
    {"LL", kProjLatLon  },
    {"ME", kProjMercator},
    {"PS", kProjPolar   },
    {"LC", kProjLambert },
};

void take_units(std::string text, GridRec *grid)
{
    STR_replace_char(text.data(), '_', ' ');
    STR_copy(grid->units, sizeof grid->units, text.c_str());
}

/// Splits "V-text"; a line without a known version in front is all info.
int split_info(const std::string &line, GridRec *grid)
{
    int form = 0;
    const auto [stop, error] = std::from_chars(line.data(), line.data() + line.size(), form);
    const size_t digits = static_cast<size_t>(stop - line.data());
    if (error != std::errc() || digits >= line.size() || line[digits] != '-' || form < 0 ||
        form > kNewestForm) {
        STR_copy(grid->info, sizeof grid->info, line);
        return 0;
    }
    STR_copy(grid->info, sizeof grid->info, line.substr(digits + 1));
    return form;
}

bool read_numbers(const std::string &line, GridRec *grid)
{
    constexpr int kNumbers = 8;
    int used = 0;
    if (std::sscanf(line.c_str(), "%d %d %d %d %d %d %d %d%n", &grid->source, &grid->version,
                    &grid->model, &grid->grid_id, &grid->ltype, &grid->level, &grid->time,
                    &grid->var, &used) != kNumbers) {
        return false;
    }
    if (static_cast<size_t>(used) < line.size() && line[static_cast<size_t>(used)] == ':') {
        std::string units = line.substr(static_cast<size_t>(used) + 1);
        take_units(units.substr(0, units.find_first_of(" \t")), grid);
    }
    return true;
}

/// @return the count of numbers behind the word's colon; -1 for a word that isn't known
int read_word(const std::string &word, DomainRec *domain)
{
    for (const ProjectionWord &known : kProjectionWords) {
        if (word.compare(0, 2, known.word) != 0 || (word.size() > 2 && word[2] != ':')) {
            continue;
        }
        domain->proj = known.proj;
        if (word.size() == 2) {
            return 0;
        }
        std::array<float, 5> n{};
        const int count =
            std::sscanf(word.c_str() + 2, ":%f:%f:%f:%f:%f", &n[0], &n[1], &n[2], &n[3], &n[4]);
        if (count == 5 && known.proj == kProjLambert) {
            domain->plat = n[0];
            domain->plon = n[1];
            domain->parm1 = n[2];
            domain->parm2 = n[3];
            domain->parm3 = n[4];
        } else if (count >= 1) {
            domain->plon = n[0];
        }
        return count;
    }
    return -1;
}

bool read_size(ByteReader *in, int *size)
{
    std::string word;
    if (!in->word(&word)) {
        return false;
    }
    const auto [stop, error] = std::from_chars(word.data(), word.data() + word.size(), *size);
    return error == std::errc() && stop == word.data() + word.size();
}

/// The numbers of a domain; the old form has no dy.
bool read_places(ByteReader *in, DomainRec *domain, bool is_old)
{
    const bool has_place = (is_old || in->number(&domain->clat)) && in->number(&domain->clon) &&
                           in->number(&domain->dx);
    domain->dy = domain->dx;
    return has_place && (is_old || in->number(&domain->dy)) && read_size(in, &domain->nx) &&
           read_size(in, &domain->ny);
}

void settle_longitudes(GridRec *grid)
{
    DomainRec &domain = grid->domain;
    if (grid->version == 1) {
        domain.clon = -domain.clon;
    }
    if (is_missing(domain.plon) && (domain.proj == kProjLatLon || domain.proj == kProjPolar)) {
        domain.plon = domain.clon;
    }
}

} // namespace

const char *TextGrids::read_head(GridRec *grid, int *form)
{
    std::string line;
    if (!in_.line(&line)) {
        return "it ends behind the date";
    }
    *form = split_info(line, grid);
    if (kind_ == 4) {
        *form = is_binary_ ? kBinaryForm : 0;
    }
    grid->source = grid->model = 1;
    grid->version = *form;
    if (*form >= kTextForm && (!in_.line(&line) || !read_numbers(line, grid))) {
        return "no line of eight numbers behind the info";
    }
    return nullptr;
}

const char *TextGrids::read_projection(GridRec *grid)
{
    DOM_init(&grid->domain);
    std::string word;
    if (!in_.word(&word)) {
        return "it ends before the projection";
    }
    if (word[0] == ':') {
        take_units(word.substr(1), grid);
        in_.word(&word);
    }
    bool is_old = false;
    if (read_word(word, &grid->domain) < 0) {
        DomainRec &domain = grid->domain;
        const auto [stop, error] =
            std::from_chars(word.data(), word.data() + word.size(), domain.clat);
        if (error != std::errc() || stop != word.data() + word.size()) {
            return "a projection that isn't known";
        }
        is_old = true;
        domain.proj = kProjPolar;
    }
    if (!read_places(&in_, &grid->domain, is_old)) {
        return "no numbers of the projection";
    }
    settle_longitudes(grid);
    return nullptr;
}

const char *TextGrids::read_domain_text(GridRec *grid)
{
    std::string word;
    if (in_.word(&word) && word[0] == ':') {
        take_units(word.substr(1), grid);
        in_.word(&word);
    }
    if (in_.peek() == '\r') {
        in_.get();
    }
    in_.get(); // one character parts the text from the values
    if (word.empty() || word.size() > kLongestDomainText ||
        DOM_decode(word.c_str(), &grid->domain) < 0 || grid->domain.proj < 0) {
        return "no domain that is known";
    }
    settle_longitudes(grid);
    return nullptr;
}

} // namespace tyr
