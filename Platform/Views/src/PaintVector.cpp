#include <Views/Painters.h>

#include "TreePainter.h"

#include <stdexcept>

#include <cairo-pdf.h>
#include <cairo-svg.h>

namespace platform {

namespace {

cairo_status_t append(void* text, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

void paintAndFinish(cairo_surface_t* surface, const LaidOutTree& tree) {
    cairo_t* cairo = cairo_create(surface);
    paintTree(cairo, tree, {.scale = 1, .isVector = true});
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    const cairo_status_t status = cairo_surface_status(surface);
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

}  // namespace

std::string paintSvg(const LaidOutTree& tree) {
    std::string bytes;
    cairo_surface_t* surface =
        cairo_svg_surface_create_for_stream(append, &bytes, tree.size.width, tree.size.height);
    cairo_svg_surface_set_document_unit(surface, CAIRO_SVG_UNIT_PX);
    paintAndFinish(surface, tree);
    return bytes;
}

std::string paintPdf(const LaidOutTree& tree) {
    std::string bytes;
    paintAndFinish(cairo_pdf_surface_create_for_stream(append, &bytes, tree.size.width, tree.size.height),
                   tree);
    return bytes;
}

}  // namespace platform
