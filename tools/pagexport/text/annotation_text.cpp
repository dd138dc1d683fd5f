#include "tools/pagexport/text/annotation_text.h"

#include <new>

namespace tools {

namespace {

/// Appearances go through the library's own interpreter, which knows how they are placed and which
/// of them are shown; this device takes the text from it and nothing else.
struct TextDevice
{
    fz_device base;
    ItemBuilder *builder;
};

Glyph glyphOf(fz_context *context, const fz_text_span &span, const fz_text_item &item,
              fz_matrix toPage, const TextStyle &style)
{
    Glyph glyph;
    const fz_point origin = fz_transform_point_xy(item.x, item.y, toPage);
    glyph.x = origin.x;
    glyph.y = origin.y;
    const bool vertical = span.wmode != 0;
    const double width =
        item.gid >= 0 ? fz_advance_glyph(context, span.font, item.gid, span.wmode) : 0;
    glyph.advance = width * style.em;
    if (vertical) { // from the glyph's own origin to the pen, in the middle above it
        glyph.x += 0.5 * style.size * -style.upX - 0.88 * style.em * style.alongX;
        glyph.y += 0.5 * style.size * -style.upY - 0.88 * style.em * style.alongY;
    }
    return glyph;
}

void addSpan(fz_context *context, ItemBuilder &builder, const fz_text_span &span, fz_matrix toPage)
{
    fz_matrix matrix = span.trm;
    matrix.e = 0;
    matrix.f = 0;
    matrix = fz_concat(matrix, toPage);
    const TextStyle style =
        TextStyle::fromMatrix(matrix.a, matrix.b, matrix.c, matrix.d, span.wmode != 0);
    builder.setStyle(style);
    for (int i = 0; i < span.len;) {
        Glyph glyph = glyphOf(context, span, span.items[i], toPage, style);
        std::array<int, PDF_MRANGE_CAP> codes{};
        codes[0] = span.items[i].ucs;
        int count = 1;
        for (++i; i < span.len && span.items[i].gid < 0; ++i) {
            if (count < static_cast<int>(codes.size())) {
                codes[static_cast<std::size_t>(count++)] = span.items[i].ucs;
            }
        }
        const Letters letters = Letters::of(codes.data(), count);
        glyph.letters = &letters;
        builder.add(glyph);
    }
}

void addText(fz_context *context, fz_device *device, const fz_text *text, fz_matrix toPage)
{
    ItemBuilder &builder = *reinterpret_cast<TextDevice *>(device)->builder;
    bool failed = false;
    try {
        for (const fz_text_span *span = text->head; span != nullptr; span = span->next) {
            addSpan(context, builder, *span, toPage);
        }
    } catch (const std::bad_alloc &) {
        failed = true;
    }
    if (failed) {
        fz_throw(context, FZ_ERROR_MEMORY, "out of memory while reading text");
    }
}

void fillText(fz_context *context, fz_device *device, const fz_text *text, fz_matrix toPage,
              fz_colorspace * /*space*/, const float * /*color*/, float /*alpha*/,
              fz_color_params /*parameters*/)
{
    addText(context, device, text, toPage);
}

void strokeText(fz_context *context, fz_device *device, const fz_text *text,
                const fz_stroke_state * /*stroke*/, fz_matrix toPage, fz_colorspace * /*space*/,
                const float * /*color*/, float /*alpha*/, fz_color_params /*parameters*/)
{
    addText(context, device, text, toPage);
}

void clipText(fz_context *context, fz_device *device, const fz_text *text, fz_matrix toPage,
              fz_rect /*scissor*/)
{
    addText(context, device, text, toPage);
}

void clipStrokeText(fz_context *context, fz_device *device, const fz_text *text,
                    const fz_stroke_state * /*stroke*/, fz_matrix toPage, fz_rect /*scissor*/)
{
    addText(context, device, text, toPage);
}

fz_device *newTextDevice(fz_context *context, ItemBuilder &builder)
{
    auto *device =
        reinterpret_cast<TextDevice *>(fz_new_device_of_size(context, sizeof(TextDevice)));
    device->base.fill_text = fillText;
    device->base.stroke_text = strokeText;
    device->base.clip_text = clipText;
    device->base.clip_stroke_text = clipStrokeText;
    device->base.ignore_text = addText;
    device->builder = &builder;
    return &device->base;
}

std::string readOne(fz_context *context, pdf_annot *annotation, fz_matrix scale,
                    ItemBuilder &builder, fz_cookie *cookie)
{
    fz_device *device = nullptr;
    fz_var(device);
    fz_try(context)
    {
        device = newTextDevice(context, builder);
        pdf_run_annot(context, annotation, device, scale, cookie);
        fz_close_device(context, device);
    }
    fz_always(context)
    {
        fz_drop_device(context, device);
    }
    fz_catch(context)
    {
        return fz_caught_message(context);
    }
    return {};
}

} // namespace

std::string readAnnotationText(fz_context *context, pdf_page *page, fz_matrix scale,
                               ItemBuilder &builder, fz_cookie *cookie)
{
    std::string error;
    for (pdf_annot *first : {pdf_first_annot(context, page), pdf_first_widget(context, page)}) {
        for (pdf_annot *annotation = first; annotation != nullptr;
             annotation = pdf_next_annot(context, annotation)) {
            if (cookie->abort != 0) {
                return error;
            }
            builder.endItem();
            const std::string failure = readOne(context, annotation, scale, builder, cookie);
            if (!failure.empty()) {
                error = failure;
            }
        }
    }
    builder.endItem();
    return error;
}

} // namespace tools
