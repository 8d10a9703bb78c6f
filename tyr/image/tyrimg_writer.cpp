#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <zlib.h>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/geo/projection_words.h"
#include "tyr/image/palette_private.h"
#include "tyr/image/tyrimg_private.h"
#include "tyr/paper/output_private.h"
#include "tyr/place/domain_text.h"
#include "tyr/place/region.h"

using namespace tyr;

namespace {

constexpr size_t kLineLength = 160; ///< of a line that is read

std::string real(float value)
{
    return STR_print("%f", static_cast<double>(value));
}

std::string reals(std::initializer_list<float> values)
{
    std::string text;
    for (const float value : values) {
        text += ":" + real(value);
    }
    return text;
}

/// The projection's word with its numbers; empty for one without a word.
std::string projection_text(const DomainRec &d)
{
    switch (d.proj) {
    case kProjLatLon:
        return "LL";
    case kProjMercator:
        return "ME";
    case kProjPolar:
        return "PS" + (is_missing(d.parm1) || d.parm1 == d.clat ? "" : reals({d.parm1}));
    case kProjLambert:
        if (!is_missing(d.parm3)) {
            return "LC" + reals({d.plat, d.plon, d.parm1, d.parm2, d.parm3});
        }
        return "LC" + (is_missing(d.parm1) ? "" : reals({d.parm1}));
    case kProjSatellite:
        return "SAT" + reals({d.plat, d.plon}) + (is_missing(d.parm1) ? "" : reals({d.parm1}));
    default:
        return "";
    }
}

/// A domain without a word of the old form, as a line that DOM_decode reads; empty where it has no
/// place, or the line would be cut when it is read.
std::string domain_line(const DomainRec &d)
{
    if (!DOM_is_usable(&d)) {
        return "";
    }
    const auto number = [](float value) { return STR_print("%.7g", static_cast<double>(value)); };
    // the name of the azimuthal map reads as the conic one's
    const char *word = d.proj == kProjLambertAzimuthal ? "la" : projection_name(d.proj);
    std::string line = std::string(word) + (d.ellipsoid != 0 ? ":e" : "");
    for (const float value : {d.plat, d.plon, d.parm1, d.parm2, d.parm3, d.parm4}) {
        line += ":" + (is_missing(value) ? "" : number(value));
    }
    line += "," + number(d.clat) + "," + number(d.clon) + STR_print(",%d,%d,", d.nx, d.ny) +
            number(d.dx) + "," + number(d.dy);
    return line.size() < kLineLength ? line + "\n" : "";
}

/// The line that tells the place, and what it makes of the first line's letters.
struct PlaceLine {
    std::string text;
    const char *letter = "";
};

PlaceLine place_line(const ImageRec &image)
{
    DomainRec d = image.domain;
    PlaceLine size = {STR_print("%d %d\n", image.width, image.height)};
    if (d.proj == kMissingInt) {
        return size;
    }
    image_fit_domain(&d, image.width, image.height);
    if (const std::string word = projection_text(d); !word.empty()) {
        return {word + " " + real(d.clat) + " " + real(d.clon) + " " + real(d.dx) + " " +
                real(d.dy) + STR_print(" %d %d\n", d.nx, d.ny)};
    }
    const std::string line = is_map_projection(d.proj) ? domain_line(d) : "";
    return line.empty() ? size : PlaceLine{line, "4"};
}

unsigned grey_of(std::uint32_t pixel, int bits)
{
    if (bits == 32) {
        return ((pixel & 0xFFU) + (pixel >> 8 & 0xFFU) + (pixel >> 16 & 0xFFU)) / 3;
    }
    return pixel & 0xFFU;
}

std::vector<unsigned char> grey_bytes(const ImageRec &image)
{
    std::vector<unsigned char> bytes;
    bytes.reserve(static_cast<size_t>(image.width) * static_cast<size_t>(image.height));
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            bytes.push_back(static_cast<unsigned char>(
                grey_of(image_pixel(image, x, y), image.bits_per_pixel)));
        }
    }
    return bytes;
}

/// Writes one piece as a zlib stream of its own.
bool write_piece(std::FILE *file, unsigned char *bytes, size_t size)
{
    std::array<unsigned char, kPieceBuffer> buffer;
    z_stream stream = {};
    if (deflateInit(&stream, Z_DEFAULT_COMPRESSION) != Z_OK) {
        return false;
    }
    stream.next_in = bytes;
    stream.avail_in = static_cast<uInt>(size);
    stream.next_out = buffer.data();
    stream.avail_out = static_cast<uInt>(buffer.size());
    const int status = deflate(&stream, Z_FINISH);
    MSG_out(kMsgDebugC, "Deflate+ %d = %d %d = %d %d\n", status, static_cast<int>(size),
            static_cast<int>(stream.avail_in), static_cast<int>(buffer.size()),
            static_cast<int>(stream.avail_out));
    deflateEnd(&stream);
    return status == Z_STREAM_END && std::fwrite(buffer.data(), 1, buffer.size() - stream.avail_out,
                                                 file) == buffer.size() - stream.avail_out;
}

bool write_data(std::FILE *file, std::vector<unsigned char> bytes, bool compress)
{
    if (!compress) {
        return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    }
    for (size_t place = 0; place < bytes.size(); place += kPiece) {
        if (!write_piece(file, &bytes[place], std::min(kPiece, bytes.size() - place))) {
            return false;
        }
    }
    return true;
}

} // namespace

int IMG_write_tyr(const char *path, ImageRec *image, int compress)
{
    if (!image_fits("IMG_write_tyr", *image)) {
        return 0;
    }
    WholeFile file;
    if (!file.open(path)) {
        MSG_out(kMsgWarn, "Unable to open: %s\n", path);
        return 0;
    }
    const bool deflates = compress == 1;
    const PlaceLine place = place_line(*image);
    const std::string head = std::string(kMagic) + place.letter + (deflates ? "Z" : "") + "\n" +
                             comment_text(image->date_text) + "\n" + comment_text(image->info) +
                             "\n" + place.text;
    std::fwrite(head.data(), 1, head.size(), file.stream());
    const bool is_out = write_data(file.stream(), grey_bytes(*image), deflates);
    return is_out && image_close("IMG_write_tyr", path, file) ? 1 : 0;
}

void tyr::image_fit_domain(DomainRec *domain, int width, int height)
{
    if (domain->nx == width && domain->ny == height) {
        return;
    }
    if (width > 1 && domain->nx > 1) {
        domain->dx *= static_cast<float>(domain->nx - 1) / static_cast<float>(width - 1);
    }
    if (height > 1 && domain->ny > 1) {
        domain->dy *= static_cast<float>(domain->ny - 1) / static_cast<float>(height - 1);
    }
    domain->nx = width;
    domain->ny = height;
}
