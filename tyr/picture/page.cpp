#include <bit>
#include <cerrno>
#include <cmath>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <numbers>

#include <png.h>

#include "tyr/base/date.h"
#include "tyr/base/str.h"
#include "tyr/base/whole_file.h"
#include "tyr/picture/page_private.h"

using namespace tyr;

namespace {

/// The least that cairo draws at all; on a screen it is nothing.
constexpr double kUnseen = 0.0041;

cairo_status_t write_to_stream(void *stream, const unsigned char *bytes, unsigned length)
{
    return std::fwrite(bytes, 1, length, static_cast<std::FILE *>(stream)) == length
               ? CAIRO_STATUS_SUCCESS
               : CAIRO_STATUS_WRITE_ERROR;
}

cairo_status_t write_to_text(void *text, const unsigned char *bytes, unsigned length)
{
    static_cast<std::string *>(text)->append(reinterpret_cast<const char *>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

/// What libpng holds while it writes.
struct PngWork {
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, end_writing, pass_over);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;

    PngWork() = default;
    PngWork(const PngWork &) = delete;
    PngWork &operator=(const PngWork &) = delete;
    ~PngWork() { png_destroy_write_struct(&png, &info); }

    static void end_writing(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void pass_over(png_structp, png_const_charp) {}
};

/// Rows as cairo has them: pixels of 32 bits in the machine's order, the highest 8 unused. Filters
/// and higher levels take longer and make the even areas of a plot larger, if anything.
void write_rows(const PngWork &work, unsigned char *pixels, size_t stride, png_uint_32 width,
                png_uint_32 height)
{
    constexpr int kFastest = 1;
    constexpr size_t kOutput = 1U << 16U;
    png_set_IHDR(work.png, work.info, width, height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(work.png, kFastest);
    png_set_compression_buffer_size(work.png, kOutput);
    png_set_filter(work.png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_write_info(work.png, work.info);
    constexpr bool is_little = std::endian::native == std::endian::little;
    png_set_filler(work.png, 0, is_little ? PNG_FILLER_AFTER : PNG_FILLER_BEFORE);
    if (is_little) {
        png_set_bgr(work.png);
    }
    for (png_uint_32 y = 0; y < height; ++y) {
        png_write_row(work.png, pixels + y * stride);
    }
    png_write_end(work.png, nullptr);
}

/// An opaque picture. @return false with errno where it didn't go out
bool write_opaque_png(cairo_surface_t *surface, std::FILE *stream)
{
    cairo().surface_flush(surface);
    const PngWork work;
    if (work.info == nullptr || setjmp(png_jmpbuf(work.png)) != 0) {
        return false;
    }
    png_init_io(work.png, stream);
    write_rows(work, cairo().image_surface_get_data(surface),
               static_cast<size_t>(cairo().image_surface_get_stride(surface)),
               static_cast<png_uint_32>(cairo().image_surface_get_width(surface)),
               static_cast<png_uint_32>(cairo().image_surface_get_height(surface)));
    return std::ferror(stream) == 0;
}

cairo_status_t write_png(const Page &page, std::FILE *stream)
{
    cairo_surface_t *surface = page.surface.get();
    if (cairo().surface_get_content(surface) == CAIRO_CONTENT_COLOR) {
        return write_opaque_png(surface, stream) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
    }
    return cairo().surface_write_to_png_stream(surface, write_to_stream, stream);
}

void paint(cairo_t *context, const Page &page)
{
    cairo().set_source_surface(context, page.surface.get(), 0.0, 0.0);
    cairo().paint(context);
}

/// Text that readers find, in the box of its strokes.
void show_hidden(cairo_t *context, const HiddenText &hidden)
{
    cairo().save(context);
    cairo().translate(context, hidden.x, hidden.y);
    cairo().rotate(context, hidden.turn);
    cairo().set_font_size(context, hidden.height);
    cairo_text_extents_t extents;
    cairo().text_extents(context, hidden.text.c_str(), &extents);
    if (extents.x_advance > 0.0 && hidden.width > 0.0) {
        cairo().scale(context, hidden.width / extents.x_advance, 1.0);
    }
    cairo().set_source_rgba(context, 1.0, 1.0, 1.0, kUnseen);
    cairo().move_to(context, 0.0, 0.0);
    cairo().show_text(context, hidden.text.c_str());
    cairo().restore(context);
}

cairo_status_t write_pdf(const std::vector<Page> &pages, std::FILE *stream)
{
    const CairoSurface surface(cairo().pdf_surface_create_for_stream(
        write_to_stream, stream, pages[0].width, pages[0].height));
    const char *epoch = std::getenv("SOURCE_DATE_EPOCH");
    if (epoch != nullptr) { // else the clock
        const std::time_t time = std::atoll(epoch);
        std::tm parts{};
        char text[40] = "";
        if (gmtime_r(&time, &parts) != nullptr) {
            std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
        }
        cairo().pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, text);
    }
    {
        const CairoContext context(cairo().create(surface.get()));
        for (const Page &page : pages) {
            cairo().pdf_surface_set_size(surface.get(), page.width, page.height);
            paint(context.get(), page);
            for (const HiddenText &text : page.texts) {
                show_hidden(context.get(), text);
            }
            cairo().show_page(context.get());
        }
    }
    cairo().surface_finish(surface.get());
    return cairo().surface_status(surface.get());
}

std::string escaped(const std::string &text)
{
    std::string out;
    for (const char c : text) {
        const bool is_plain = static_cast<unsigned char>(c) >= ' ' && c != '<' && c != '&';
        out += is_plain ? std::string(1, c) : c == '<' ? "&lt;" : c == '&' ? "&amp;" : " ";
    }
    return out;
}

/// cairo makes outlines of text; so texts are put in by hand, before the end.
cairo_status_t write_svg(const Page &page, std::FILE *stream)
{
    std::string svg;
    const CairoSurface surface(
        cairo().svg_surface_create_for_stream(write_to_text, &svg, page.width, page.height));
    {
        const CairoContext context(cairo().create(surface.get()));
        paint(context.get(), page);
    }
    cairo().surface_finish(surface.get());
    const cairo_status_t status = cairo().surface_status(surface.get());
    std::string texts = "<g fill-opacity=\"0\" font-family=\"sans-serif\">\n";
    for (const HiddenText &text : page.texts) {
        texts += STR_print("<text transform=\"translate(%.2f,%.2f) rotate(%.2f)\" "
                           "font-size=\"%.2f\" textLength=\"%.2f\" "
                           "lengthAdjust=\"spacingAndGlyphs\">%s</text>\n",
                           text.x, text.y, text.turn * 180.0 / std::numbers::pi, text.height,
                           text.width, escaped(text.text).c_str());
    }
    texts += "</g>\n";
    const size_t end = svg.rfind("</svg>");
    svg.insert(end == std::string::npos ? svg.size() : end, texts);
    const bool is_out = std::fwrite(svg.data(), 1, svg.size(), stream) == svg.size();
    return is_out ? status : CAIRO_STATUS_WRITE_ERROR;
}

} // namespace

std::string tyr::write_pages(PictureForm form, const std::vector<Page> &pages,
                             const std::string &path)
{
    WholeFile file;
    errno = 0;
    if (!file.open(path.c_str())) {
        return std::strerror(errno);
    }
    cairo_status_t status = CAIRO_STATUS_SUCCESS;
    switch (form) {
    case PictureForm::png:
        status = write_png(pages.back(), file.stream());
        break;
    case PictureForm::svg:
        status = write_svg(pages.back(), file.stream());
        break;
    case PictureForm::pdf:
        status = write_pdf(pages, file.stream());
        break;
    }
    if (status != CAIRO_STATUS_SUCCESS) {
        std::string why = errno != 0 ? std::strerror(errno) : cairo().status_to_string(status);
        file.drop();
        return why;
    }
    return file.keep() == 0 ? "" : std::strerror(errno);
}
