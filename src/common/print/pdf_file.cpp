// The PDF form of a report, drawn with Cairo and laid out with Pango.

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "paper.h"
#include "report_files.h"

namespace {

constexpr const char* kFontFamily = "Monospace";
constexpr double kLargestFontSize = 10.0;
constexpr double kLeadingFactor = 1.2;  // line pitch over font size

// The output file behind the PDF stream, remembering the first write error.
struct PdfSink {
    std::FILE* file = nullptr;
    int error = 0;
};

cairo_status_t WriteToSink(void* closure, const unsigned char* data, unsigned int length) {
    auto* sink = static_cast<PdfSink*>(closure);
    if (std::fwrite(data, 1, length, sink->file) == length) return CAIRO_STATUS_SUCCESS;
    if (sink->error == 0) sink->error = errno ? errno : EIO;
    return CAIRO_STATUS_WRITE_ERROR;
}

// Pango takes UTF-8; a line that isn't is read as Latin-1, byte by byte.
std::string ToUtf8(const std::string& line) {
    if (g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr)) return line;
    std::string out;
    for (const char ch : line) {
        const auto byte = static_cast<unsigned char>(ch);
        if (byte < 0x80) {
            out += ch;
        } else {
            out += static_cast<char>(0xC0 | (byte >> 6));
            out += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return out;
}

struct SurfaceCloser {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct ContextCloser {
    void operator()(cairo_t* cr) const { cairo_destroy(cr); }
};
struct ObjectCloser {
    void operator()(void* object) const { g_object_unref(object); }
};
struct FontCloser {
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};

// The advance of one character of the font at 1 point, measured on a run of
// characters so that rounding doesn't count.
double AdvancePerPoint(PangoLayout* layout, PangoFontDescription* font) {
    constexpr int kSample = 100;
    pango_font_description_set_size(font, static_cast<int>(kLargestFontSize * PANGO_SCALE));
    pango_layout_set_font_description(layout, font);
    pango_layout_set_text(layout, std::string(kSample, 'M').c_str(), -1);
    PangoRectangle logical{};
    pango_layout_get_extents(layout, nullptr, &logical);
    return static_cast<double>(logical.width) / PANGO_SCALE / kSample / kLargestFontSize;
}

void DrawPages(cairo_t* cr, const xp_print_def& def, const std::vector<xpPage>& pages) {
    const xpPaper paper = xpPaperFor(def);
    const std::unique_ptr<PangoLayout, ObjectCloser> layout(pango_cairo_create_layout(cr));
    const std::unique_ptr<PangoFontDescription, FontCloser> font(pango_font_description_from_string(kFontFamily));
    const double advance = AdvancePerPoint(layout.get(), font.get());
    const double textWidth = paper.width - 2 * kPrintMargin;
    const double pitch = std::min(kLargestFontSize * kLeadingFactor, (paper.height - 2 * kPrintMargin) / def.page_lines);
    const double size = std::min({kLargestFontSize, pitch / kLeadingFactor, textWidth / (def.width * advance)});
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font.get());
    for (const xpPage& page : pages) {
        for (std::size_t i = 0; i < page.lines.size(); ++i) {
            if (page.lines[i].empty()) continue;
            cairo_move_to(cr, kPrintMargin, kPrintMargin + static_cast<double>(i) * pitch);
            pango_layout_set_text(layout.get(), ToUtf8(page.lines[i]).c_str(), -1);
            pango_cairo_show_layout(cr, layout.get());
        }
        cairo_show_page(cr);
    }
}

}  // namespace

std::string xpWritePdf(const std::string& path, const xp_print_def& def, const std::vector<xpPage>& pages) {
    errno = 0;
    PdfSink sink;
    sink.file = std::fopen(path.c_str(), "wb");
    if (sink.file == nullptr) return errno ? std::strerror(errno) : "the file could not be opened";
    const xpPaper paper = xpPaperFor(def);
    cairo_status_t status;
    {
        const std::unique_ptr<cairo_surface_t, SurfaceCloser> surface(
            cairo_pdf_surface_create_for_stream(WriteToSink, &sink, paper.width, paper.height));
        {
            const std::unique_ptr<cairo_t, ContextCloser> cr(cairo_create(surface.get()));
            DrawPages(cr.get(), def, pages);
        }
        cairo_surface_finish(surface.get());
        status = cairo_surface_status(surface.get());
    }
    const bool closed = std::fclose(sink.file) == 0;
    if (sink.error != 0) return std::strerror(sink.error);
    if (status != CAIRO_STATUS_SUCCESS) return cairo_status_to_string(status);
    if (!closed) return std::strerror(errno ? errno : EIO);
    return {};
}
