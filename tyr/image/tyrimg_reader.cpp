#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>

#include <zlib.h>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/image/palette_private.h"
#include "tyr/image/tyrimg_private.h"
#include "tyr/paper/output_private.h"
#include "tyr/place/domain_text.h"
#include "tyr/place/region.h"

using namespace tyr;

namespace {

constexpr int kSource = 50;
constexpr int kOldVersion = 3;
constexpr int kDomainVersion = 4;
constexpr int kGreyDepth = 8;
constexpr int kLineLength = 160;
constexpr size_t kExtraHeader = 1024;
constexpr int kTries = 10;
constexpr float kTryInterval = 1.0F; ///< seconds

std::string read_line(std::FILE *file)
{
    std::array<char, kLineLength + 1> line = {};
    STR_read_cut_line(file, line.data(), kLineLength);
    return line.data();
}

/// The letters behind the magic word.
struct Options {
    bool has_domain_line = false;
    bool is_elsewhere = false;
    bool is_deflated = false;
    bool has_extra_header = false;
    bool has_counts = false;
};

Options read_options(std::string_view letters)
{
    const auto has = [letters](char c) { return letters.find(c) != std::string_view::npos; };
    return {has('4'), has('*'), has('Z'), has('V'), has('C')};
}

/// A domain line may neither name a file, a command or a stream, nor ask the user.
bool is_plain_domain(std::string line)
{
    STR_lower(line.data());
    if (line.find('|') != std::string::npos || line.find("id:") != std::string::npos) {
        return false;
    }
    const std::vector<std::string> words = STR_fields(line, ',');
    return words.size() > 1 || (words.size() == 1 && words[0] != kVariableRegion &&
                                words[0].find(':') == std::string::npos);
}

bool read_domain_line(const std::string &line, DomainRec *domain)
{
    return is_plain_domain(line) && DOM_decode(line.c_str(), domain) > 0;
}

/// Cuts a real off the front of a text.
bool take_real(const char *&text, float *out)
{
    int count = 0;
    if (std::sscanf(text, "%f%n", out, &count) != 1 || !std::isfinite(*out)) {
        return false;
    }
    text += count;
    return true;
}

/// The numbers behind a projection word, each with a colon in front, up to the blank.
bool read_parameters(const char *&text, DomainRec *domain)
{
    DomainRec &d = *domain;
    std::vector<float> values;
    while (*text == ':') {
        float value = 0.0F;
        if (!take_real(++text, &value)) {
            return false;
        }
        values.push_back(value);
    }
    const size_t count = values.size();
    const auto assign = [&values](std::initializer_list<float *> places) {
        auto value = values.begin();
        for (float *place : places) {
            *place = *value++;
        }
        return true;
    };
    switch (d.proj) {
    case kProjPolar:
        return count == 0 || (count == 1 && assign({&d.parm1}));
    case kProjLambert:
        return count == 0 || (count == 1 && assign({&d.parm1})) ||
               (count == 5 && assign({&d.plat, &d.plon, &d.parm1, &d.parm2, &d.parm3}));
    case kProjSatellite:
        return (count == 2 && assign({&d.plat, &d.plon})) ||
               (count == 3 && assign({&d.plat, &d.plon, &d.parm1}));
    default:
        return count == 0;
    }
}

struct ProjectionWord {
    std::string_view word;
    int proj;
};

constexpr ProjectionWord kWords[] = {
    {"LL",  kProjLatLon   },
    {"ME",  kProjMercator },
    {"PS",  kProjPolar    },
    {"LC",  kProjLambert  },
    {"SAT", kProjSatellite},
};

/// "word numbers clat clon dx dy nx ny"
bool read_geometry(const std::string &line, DomainRec *domain)
{
    const size_t length = std::min(line.find_first_of(": "), line.size());
    const auto row =
        std::find_if(std::begin(kWords), std::end(kWords), [&](const ProjectionWord &w) {
            return w.word == std::string_view(line).substr(0, length);
        });
    if (row == std::end(kWords)) {
        return false;
    }
    domain->proj = row->proj;
    const char *text = line.c_str() + length;
    return read_parameters(text, domain) && take_real(text, &domain->clat) &&
           take_real(text, &domain->clon) && take_real(text, &domain->dx) &&
           take_real(text, &domain->dy) &&
           std::sscanf(text, "%9d %9d", &domain->nx, &domain->ny) == 2;
}

bool read_place(const std::string &line, bool is_domain, DomainRec *domain)
{
    if (is_domain) {
        return read_domain_line(line, domain);
    }
    return std::sscanf(line.c_str(), "%9d %9d", &domain->nx, &domain->ny) == 2 ||
           read_geometry(line, domain);
}

void take_size(ImageRec *image)
{
    image->width = image->domain.nx;
    image->height = image->domain.ny;
    image->depth = kGreyDepth;
    image->bits_per_pixel = kGreyDepth;
    image->bytes_per_line = image->width;
}

bool read_header(std::FILE *file, ImageRec *image, Options &options)
{
    const std::string first = read_line(file);
    if (std::string_view(first).substr(0, kMagic.size()) != kMagic) {
        MSG_out(kMsgWarn, "IMG_read_tyr: Invalid image type\n");
        return false;
    }
    options = read_options(std::string_view(first).substr(kMagic.size()));
    image->version = options.has_domain_line ? kDomainVersion : kOldVersion;
    image->source = kSource;
    STR_copy(image->date_text, kImageDateRoom, read_line(file));
    STR_copy(image->info, kImageInfoRoom, read_line(file));
    TIME_parse(image->date_text, &image->date);
    const std::string place = read_line(file);
    std::getc(file); // the line's end
    if (!read_place(place, options.has_domain_line, &image->domain)) {
        MSG_out(kMsgWarn, "IMG_read_tyr: Invalid place or size: %s\n", place.c_str());
        return false;
    }
    take_size(image);
    return image_fits("IMG_read_tyr", *image);
}

void skip_bytes(std::FILE *file, size_t count)
{
    while (count > 0 && std::getc(file) != EOF) {
        --count;
    }
}

void skip_extras(std::FILE *file, const Options &options)
{
    if (options.has_extra_header) {
        skip_bytes(file, kExtraHeader);
    }
    if (options.has_counts) {
        skip_bytes(file, 2);
        std::array<unsigned char, 2> count = {}; // the low byte first
        if (std::fread(count.data(), 1, count.size(), file) == count.size()) {
            skip_bytes(file, 2 * (count[0] + (size_t{count[1]} << 8)));
        }
    }
}

/// A run of zlib streams, inflated one after the other into one buffer.
class Inflater {
  public:
    Inflater(unsigned char *out, size_t size) : out_(out), left_(size) {}
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;
    ~Inflater() { end(); }

    bool is_full() const { return left_ == 0; }

    /// Takes a piece of the file. False for data that isn't deflated.
    bool take(unsigned char *bytes, size_t size)
    {
        stream_.next_in = bytes;
        stream_.avail_in = static_cast<uInt>(size);
        while (stream_.avail_in > 0 && !is_full()) {
            if (!is_live_ && inflateInit(&stream_) != Z_OK) {
                return false;
            }
            is_live_ = true;
            if (!inflate_some()) {
                return false;
            }
        }
        return true;
    }

  private:
    bool inflate_some()
    {
        std::array<unsigned char, kPieceBuffer> buffer;
        stream_.next_out = buffer.data();
        stream_.avail_out = static_cast<uInt>(buffer.size());
        const uInt before = stream_.avail_in;
        const int status = inflate(&stream_, Z_SYNC_FLUSH);
        const size_t made = buffer.size() - stream_.avail_out;
        MSG_out(kMsgDebugC, "Inflate+ %d = %d %d = %d %d - %d %d\n", status,
                static_cast<int>(before), static_cast<int>(stream_.avail_in),
                static_cast<int>(buffer.size()), static_cast<int>(stream_.avail_out),
                static_cast<int>(made), static_cast<int>(left_));
        const size_t taken = std::min(made, left_);
        std::memcpy(out_, buffer.data(), taken);
        out_ += taken;
        left_ -= taken;
        if (status == Z_STREAM_END) {
            end();
        }
        return status >= 0 && status != Z_NEED_DICT;
    }

    void end()
    {
        if (is_live_) {
            inflateEnd(&stream_);
            is_live_ = false;
        }
    }

    z_stream stream_ = {};
    bool is_live_ = false;
    unsigned char *out_;
    size_t left_;
};

void read_deflated(std::FILE *file, unsigned char *out, size_t size, int most_tries)
{
    Inflater inflater(out, size);
    std::array<unsigned char, kPiece> piece;
    int tries = 0;
    while (!inflater.is_full()) {
        const size_t count = std::fread(piece.data(), 1, piece.size(), file);
        if (count > 0) {
            if (!inflater.take(piece.data(), count)) {
                return;
            }
        } else if (++tries >= most_tries) {
            return;
        } else {
            std::clearerr(file); // it may have grown
            SYS_sleep(kTryInterval);
        }
    }
}

/// Whether more of a file may come: a plain one that was written to a moment ago.
bool may_grow(std::FILE *file)
{
    constexpr std::time_t kMoment = 10; // seconds
    struct stat about = {};
    return fstat(fileno(file), &about) == 0 && S_ISREG(about.st_mode) &&
           std::time(nullptr) - about.st_mtime <= kMoment;
}

/// Opens the file whose name stands in the place of the data: a plain file only.
FilePtr open_named(std::FILE *file)
{
    std::string name;
    int c = std::getc(file);
    while (c == ' ' || c == '\n') {
        c = std::getc(file);
    }
    for (; c > ' ' && name.size() < kFileNameRoom; c = std::getc(file)) {
        name += static_cast<char>(c);
    }
    const bool is_plain =
        !FILE_is_std(name.c_str()) && name[0] != '|' && FILE_is_regular(name.c_str());
    FilePtr other(is_plain ? FILE_open(name.c_str(), "rb") : nullptr);
    if (!other) {
        MSG_out(kMsgWarn, "Unable to open: %s\n", name.c_str());
    }
    return other;
}

int read_data(FilePtr file, const Options &options, int most_tries, ImageRec *image)
{
    skip_extras(file.get(), options);
    if (options.is_elsewhere) {
        file = open_named(file.get());
        if (!file) {
            return -1;
        }
    }
    if (!image_allocate(image)) {
        MSG_out(kMsgWarn, "Unable to allocate data buffer.\n");
        return 0;
    }
    const size_t size = static_cast<size_t>(image->width) * static_cast<size_t>(image->height);
    if (options.is_deflated) {
        read_deflated(file.get(), image->data, size, may_grow(file.get()) ? most_tries : 1);
    } else {
        std::fread(image->data, 1, size, file.get());
    }
    return 1;
}

} // namespace

int IMG_read_tyr(const char *path, ImageRec *image, int header_only)
{
    return tyr_read(path, image, header_only, kTries);
}

int tyr::tyr_read(const char *path, ImageRec *image, int header_only, int most_tries)
{
    FilePtr file = image_open(path);
    if (!file) {
        MSG_out(kMsgWarn, "Unable to open: %s\n", path);
        return -1;
    }
    IMG_init(image);
    Options options;
    if (!read_header(file.get(), image, options)) {
        return -1;
    }
    return header_only ? 1 : read_data(std::move(file), options, most_tries, image);
}
