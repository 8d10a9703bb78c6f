#include "tyr/place/domain_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/names/name_conv.h"
#include "tyr/place/city.h"
#include "tyr/place/region.h"

using namespace tyr;

namespace {

constexpr int kUnknown = -1;
constexpr int kGridWidth = 25;
constexpr int kGridHeight = 17;
constexpr float kGridSpacing = 1.2F; ///< 100 km
constexpr float kZoomSpacing = 1.0F;
constexpr int kMostNested = 8; ///< region texts that name regions
constexpr std::string_view kStationPrefix = "id:";
constexpr const char *kCityFile = "sao.cty";

enum class Field { kProj, kPlon, kClat, kClon, kNx, kNy, kDx, kDy, kRegion };
using enum Field;

/// What a form sets by itself.
enum Defaults : unsigned {
    kNothing = 0,
    kSize = 1,     ///< nx 25, ny 17
    kSquare = 2,   ///< dy = dx
    kPolar = 4,    ///< proj 1
    kSpacing = 8,  ///< dx and dy 1.2
    kByProj = 16,  ///< as the projection wants
    kOnlySize = 32 ///< of first word "size" alone
};

struct Form {
    std::vector<Field> fields;
    unsigned sets;
    const char *trace;
};

const std::vector<Form> &forms()
{
    // The form before the station's takes a station alone; the station's is left for "none".
    // clang-format off
    static const std::vector<Form> table = {
        {{kProj, kNx, kNy}, kOnlySize, "proj,nx,ny"},
        {{kProj, kPlon, kClat, kClon, kNx, kNy, kDx, kDy}, kNothing, "proj,plon,clat,clon,nx,ny,dx,dy"},
        {{kProj, kClat, kClon, kNx, kNy, kDx, kDy}, kNothing, "proj,clat,clon,nx,ny,dx,dy"},
        {{kProj, kPlon, kClat, kClon, kDx, kDy}, kSize, "proj,plon,clat,clon,dx,dy"},
        {{kProj, kClat, kClon, kNx, kNy, kDx}, kSquare, "proj,clat,clon,nx,ny,dx"},
        {{kClat, kClon, kNx, kNy, kDx, kDy}, kPolar, "clat,clon,nx,ny,dx,dy"},
        {{kProj, kClat, kClon, kDx, kDy}, kSize, "proj,clat,clon,dx,dy"},
        {{kClat, kClon, kNx, kNy, kDx}, kPolar | kSquare, "clat,clon,nx,ny,dx"},
        {{kProj, kClat, kClon, kDx}, kSize | kSquare, "proj,clat,clon,dx"},
        {{kClat, kClon, kNx, kNy}, kPolar | kSpacing, "clat,clon,nx,ny"},
        {{kClat, kClon, kDx}, kPolar | kSize | kSquare, "clat,clon,dx"},
        {{kProj, kClat, kClon}, kByProj, "proj,clat,clon"},
        {{kClat, kClon}, kPolar | kSize | kSpacing, "clat,clon"},
        {{kClat}, kPolar | kSize | kSpacing, "id:###"},
        {{kRegion}, kNothing, "reg:REG"},
    };
    // clang-format on
    return table;
}
constexpr size_t kStationForm = 13;

struct State {
    int nested = 0;
};

/// A field's text. A station is looked up once, for all forms that are tried.
struct Word {
    std::string text;
    bool is_station = false;
    bool is_found = false;
    float lat = kMissing, lon = kMissing;
};

State state;

bool is_word(const std::string &text, const char *word)
{
    return STR_casecmp(text.c_str(), word) == 0;
}

/// Splits at a separator; unlike STR_fields it keeps what is empty at the end.
std::vector<std::string> split_all(const std::string &text, char separator)
{
    std::vector<std::string> parts;
    size_t from = 0;
    for (size_t at = 0; at != std::string::npos; from = at + 1) {
        at = text.find(separator, from);
        parts.push_back(text.substr(from, at == std::string::npos ? at : at - from));
    }
    return parts;
}

bool read_real(const std::string &text, float *out)
{
    float value = 0.0F;
    if (std::sscanf(text.c_str(), "%f", &value) != 1 || !std::isfinite(value)) {
        return false;
    }
    *out = value;
    return true;
}

bool read_int(const std::string &text, int *out)
{
    return std::sscanf(text.c_str(), "%9d", out) == 1;
}

/// The parts behind a projection word: plon alone, or the parameters in order.
bool read_projection(const std::string &text, DomainRec *out)
{
    const int code = DOM_proj_code(text.c_str());
    if (code == kUnknown) {
        return false;
    }
    out->proj = code;
    const std::vector<std::string> parts = split_all(text, ':');
    if (parts.size() == 2 && !is_word(parts[1], "e")) {
        return parts[1].empty() || read_real(parts[1], &out->plon);
    }
    const std::array<float *, 6> places = {&out->plat,  &out->plon,  &out->parm1,
                                           &out->parm2, &out->parm3, &out->parm4};
    size_t place = 0;
    for (size_t i = 1; i < parts.size() && place < places.size(); ++i) {
        if (i == 1 && is_word(parts[i], "e")) {
            out->ellipsoid = 1;
            continue;
        }
        if (!parts[i].empty() && !read_real(parts[i], places[place])) {
            return false;
        }
        ++place;
    }
    return true;
}

int decode_region_text(const char *text, DomainRec *out)
{
    if (state.nested >= kMostNested) {
        MSG_out(kMsgWarn, "DOM_decode: Regions name each other: %s\n", text);
        return kUnknown;
    }
    ++state.nested;
    const int result = DOM_decode(text, out);
    --state.nested;
    return result == kDomainNumbers ? static_cast<int>(kDomainRegion) : result;
}

/// @return kDomainRegion, kUnknown for a region with a bad text, 0 where the word is no region
int read_region(const std::string &word, DomainRec *out)
{
    std::array<char, kDomainTextRoom> text = {};
    if (word.empty() || STR_has_prefix(word, kStationPrefix)) {
        return 0;
    }
    if (STR_has_prefix(word, "fi:")) {
        return DOM_region_lookup(word.c_str() + 3, nullptr, text.data()) != 0
                   ? decode_region_text(text.data(), out)
                   : 0;
    }
    const size_t colon = word.find(':');
    if (colon == std::string::npos) {
        if (DOM_region_lookup(kRegionFile, word.c_str(), text.data()) != 0) {
            return decode_region_text(text.data(), out);
        }
        if (DOM_builtin_region(word.c_str(), out) == 0) {
            DOM_warn_region(word.c_str());
            out->proj = kUnknown;
        }
        return kDomainRegion;
    }
    const std::string file = word.substr(0, colon);
    const std::string region = word.substr(colon + 1);
    if (region.empty()) {
        return DOM_read_regions(file.c_str()) != 0 ? static_cast<int>(kDomainRegion) : 0;
    }
    return DOM_region_lookup(file.c_str(), region.c_str(), text.data()) != 0
               ? decode_region_text(text.data(), out)
               : 0;
}

/// "id:station" or "id:file:station" as a place.
Word make_word(const std::string &text)
{
    Word word = {text, STR_has_prefix(text, kStationPrefix)};
    if (!word.is_station) {
        return word;
    }
    std::string station = text.substr(kStationPrefix.size());
    std::string file = kCityFile;
    if (const size_t colon = station.find(':'); colon != std::string::npos) {
        file = station.substr(0, colon);
        station.erase(0, colon + 1);
    }
    word.is_found = CTY_find_position(station.c_str(), file.c_str(), &word.lat, &word.lon) != 0;
    return word;
}

bool read_field(Field field, const std::string &word, DomainRec *out)
{
    switch (field) {
    case kProj:
        return read_projection(word, out);
    case kPlon:
        return read_real(word, &out->plon);
    case kClat:
        return read_real(word, &out->clat);
    case kClon:
        return read_real(word, &out->clon);
    case kNx:
        return read_int(word, &out->nx);
    case kNy:
        return read_int(word, &out->ny);
    case kDx:
        return read_real(word, &out->dx);
    case kDy:
        return read_real(word, &out->dy);
    case kRegion:
        return false; // has results of its own: read_region
    }
    return false;
}

/// Three fields with a projection in front: a centre, or with "size" a grid size.
void apply_projection_defaults(DomainRec *out)
{
    if (out->proj == kProjSize) {
        out->nx = static_cast<int>(out->clat);
        out->ny = static_cast<int>(out->clon);
        out->clat = kMissing;
        out->clon = kMissing;
        return;
    }
    out->dx = out->proj == kProjZoom ? kZoomSpacing : kGridSpacing;
    out->dy = out->dx;
    out->nx = kGridWidth;
    out->ny = kGridHeight;
}

void apply_defaults(unsigned sets, DomainRec *out)
{
    if ((sets & kPolar) != 0) {
        out->proj = kProjPolar;
    }
    if ((sets & kSize) != 0) {
        out->nx = kGridWidth;
        out->ny = kGridHeight;
    }
    if ((sets & kSpacing) != 0) {
        out->dx = kGridSpacing;
        out->dy = kGridSpacing;
    }
    if ((sets & kSquare) != 0) {
        out->dy = out->dx;
    }
    if ((sets & kByProj) != 0) {
        apply_projection_defaults(out);
    }
}

/// True if each word parses as its field; a station takes two, its latitude and longitude.
bool read_fields(const Form &form, const std::vector<Word> &words, DomainRec *out)
{
    size_t next = 0;
    for (size_t i = 0; i < form.fields.size(); ++i) {
        if (next >= words.size()) {
            return false;
        }
        const Word &word = words[next++];
        if (form.fields[i] == kClat && word.is_station) {
            if (!word.is_found) {
                return false;
            }
            out->clat = word.lat;
            out->clon = word.lon;
            ++i;
        } else if (!read_field(form.fields[i], word.text, out)) {
            return false;
        }
    }
    return next == words.size();
}

/// @return DomainForm of a form that fits, kUnknown for a region with a bad text, 0 if none fits
int try_form(size_t number, const std::vector<Word> &words, DomainRec *out)
{
    const Form &form = forms()[number];
    DOM_init(out);
    if ((form.sets & kOnlySize) != 0 && !is_word(words[0].text, "size")) {
        return 0;
    }
    const bool is_open = is_word(words[0].text, "none") || is_word(words[0].text, "miss");
    if (is_open && form.fields.size() == words.size()) {
        apply_defaults(form.sets, out);
        return kDomainNumbers;
    }
    if (form.fields[0] == kRegion) {
        return words.size() == 1 ? read_region(words[0].text, out) : 0;
    }
    if (number == kStationForm || !read_fields(form, words, out)) {
        return 0;
    }
    apply_defaults(form.sets, out);
    return kDomainNumbers;
}

int try_forms(const std::vector<Word> &words, DomainRec *out)
{
    for (size_t i = 0; i < forms().size() && !words.empty(); ++i) {
        const int result = try_form(i, words, out);
        if (result != 0) {
            MSG_out(kMsgDebugC, "%2d %s\n", 0, forms()[i].trace);
            return result;
        }
    }
    DOM_init(out);
    MSG_out(kMsgWarn, "DOM_decode: Invalid plot domain\n");
    return kUnknown;
}

std::string part(float value)
{
    return is_missing(value) ? ":" : STR_print(":%3.3f", static_cast<double>(value));
}

bool is_real(float value)
{
    return std::isfinite(value) && !is_missing(value);
}

} // namespace

int DOM_decode(const char *text, DomainRec *out)
{
    DOM_init(out);
    if (!text || !*text || STR_casecmp(text, "miss") == 0) {
        return kMissingInt;
    }
    const std::vector<std::string> words = STR_fields(text, ',');
    MSG_out(kMsgDebugC, "******** PARSING DOMAIN: %d %s\n", static_cast<int>(words.size()), text);
    std::vector<Word> read;
    read.reserve(words.size());
    for (const std::string &word : words) {
        read.push_back(make_word(word));
    }
    const int result = try_forms(read, out);
    PRM_set(kPrmDomainForm, result);
    FILE_set_key('r', text);
    if (out->ny != kMissingInt && is_real(out->dy)) {
        DOM_set_priority(static_cast<float>(out->ny - 1) * out->dy);
    }
    return result;
}

int DOM_from_resources(DomainRec *out, int mode)
{
    DOM_init(out);
    const char *domain = RES_get("plot_domain");
    if ((mode == 1 || mode == 3 || mode == 4) && domain) {
        return DOM_decode(domain, out);
    }
    if (const char *region = RES_get("region")) {
        return DOM_decode(region, out);
    }
    if (mode != 4) {
        return 0;
    }
    if (!DOM_has_regions()) {
        DOM_read_regions(kRegionFile);
    }
    const char *first = DOM_region_table()[1].word;
    return first ? DOM_decode(first, out) : 0;
}

bool DOM_is_usable(const DomainRec *domain)
{
    constexpr int kNameOnly[] = {kUnknown, kProjNone, kProjGnomonic, kProjXZ, kProjZoom, kProjSize};
    const DomainRec &d = *domain;
    if (std::find(std::begin(kNameOnly), std::end(kNameOnly), d.proj) != std::end(kNameOnly)) {
        return false;
    }
    if (d.proj == kProjLambert && !is_missing(d.parm1) && d.parm1 == -d.parm2) {
        return false; // a cone with opposite standard latitudes is none
    }
    const bool has_place = is_real(d.clat) && is_real(d.clon);
    const bool has_spacing = is_real(d.dx) && is_real(d.dy) && d.dx != 0.0F && d.dy != 0.0F;
    const bool is_positive = !is_map_projection(d.proj) || (d.dx > 0.0F && d.dy > 0.0F);
    return has_place && has_spacing && is_positive && d.nx > 1 && d.ny > 1;
}

void DOM_print(int mask, const DomainRec *domain)
{
    const unsigned bits = static_cast<unsigned>(mask);
    if (MSG_test(bits) == 0) {
        return;
    }
    const DomainRec &d = *domain;
    const std::string head = std::string(tyr::projection_name(d.proj)) + (d.ellipsoid ? ":e" : "") +
                             part(d.plat) + part(d.plon) + part(d.parm1) + part(d.parm2) +
                             part(d.parm3);
    MSG_out(bits, "%s,%3.3f,%3.3f,%d,%d,%4.4f,%4.4f\n", head.c_str(), static_cast<double>(d.clat),
            static_cast<double>(d.clon), d.nx, d.ny, static_cast<double>(d.dx),
            static_cast<double>(d.dy));
}
