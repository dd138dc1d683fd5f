#include "tools/pagexport/pages/page_reader.h"

#include "tools/pagexport/picture/page_blending.h"
#include "tools/pagexport/picture/page_box.h"
#include "tools/pagexport/picture/png_writer.h"
#include "tools/pagexport/text/annotation_text.h"
#include "tools/pagexport/text/content_text.h"
#include "tools/pagexport/text/geometry.h"

#include <algorithm>
#include <array>
#include <memory>

namespace tools {

namespace {

void ignoreMessage(void * /*user*/, const char * /*message*/) {}

PdfContext &quietened(PdfContext &context, PageReader::Warnings warnings)
{
    if (warnings == PageReader::Warnings::silent) {
        fz_set_warning_callback(context.get(), ignoreMessage, nullptr);
        fz_set_error_callback(context.get(), ignoreMessage, nullptr);
    }
    return context;
}

struct DrawnPage
{
    fz_pixmap *pixmap;
    std::array<char, 256> error; ///< empty when all went well
};

void keepError(fz_context *context, DrawnPage &drawn)
{
    fz_strlcpy(drawn.error.data(), fz_caught_message(context), drawn.error.size());
}

// The page as a list of drawing steps first: the list knows what lies inside each clip, and drawing
// then works on that part only instead of on the whole page. What comes before an error is kept.
fz_display_list *newStepList(fz_context *context, pdf_page *page, DrawnPage &drawn,
                             fz_cookie &cookie)
{
    fz_display_list *list = fz_new_display_list(context, pdf_bound_page(context, page));
    fz_device *device = nullptr;
    fz_var(device);
    fz_try(context)
    {
        device = fz_new_list_device(context, list);
        pdf_run_page(context, page, device, fz_identity, &cookie);
        fz_close_device(context, device);
    }
    fz_always(context)
    {
        fz_drop_device(context, device);
    }
    fz_catch(context)
    {
        keepError(context, drawn);
    }
    return list;
}

DrawnPage draw(fz_context *context, pdf_page *page, double scale, fz_irect area, fz_cookie &cookie)
{
    DrawnPage drawn{nullptr, {}};
    fz_display_list *list = nullptr;
    fz_device *device = nullptr;
    fz_var(list);
    fz_var(device);
    fz_try(context)
    {
        list = newStepList(context, page, drawn, cookie);
        drawn.pixmap = fz_new_pixmap_with_bbox(context, fz_device_rgb(context), area, nullptr, 0);
        fz_clear_pixmap_with_value(context, drawn.pixmap, 0xff);
        device = fz_new_draw_device(context, fz_identity, drawn.pixmap);
        const auto pixelsPerPoint = static_cast<float>(scale * unitsPerPoint);
        fz_run_display_list(context, list, device, fz_scale(pixelsPerPoint, pixelsPerPoint),
                            fz_rect_from_irect(area), &cookie);
        fz_close_device(context, device);
    }
    fz_always(context)
    {
        fz_drop_device(context, device);
        fz_drop_display_list(context, list);
    }
    fz_catch(context)
    {
        keepError(context, drawn);
    }
    return drawn;
}

/// Gives a pixmap back to the library.
struct DropPixmap
{
    fz_context *context;
    void operator()(fz_pixmap *pixmap) const { fz_drop_pixmap(context, pixmap); }
};

} // namespace

PageReader::PageReader(const InputFile &input, Warnings warnings,
                       std::shared_ptr<const PageList> pages)
    : m_context("pagexport"), m_file(quietened(m_context, warnings), &input), m_loader(m_file),
      m_fonts(m_context.get())
{
    m_file.setPages(std::move(pages));
}

PageReader::~PageReader()
{
    closePage();
}

std::string PageReader::openPage(int index)
{
    closePage();
    m_fonts.trim();
    std::string reason;
    m_page = m_loader.load(index + 1, reason);
    if (m_page == nullptr) {
        return reason;
    }
    fz_try(context())
    {
        settlePageBox(context(), m_page);
        const fz_rect bounds = pdf_bound_page(context(), m_page);
        m_scale = pageScale(bounds.x1 - bounds.x0, bounds.y1 - bounds.y0);
        m_size = {(bounds.x1 - bounds.x0) * m_scale, (bounds.y1 - bounds.y0) * m_scale};
    }
    fz_catch(context())
    {
        closePage();
        return fz_caught_message(context());
    }
    return {};
}

void PageReader::closePage() noexcept
{
    if (m_page != nullptr) {
        fz_drop_page(context(), &m_page->super);
        m_page = nullptr;
    }
    m_size = {};
}

std::string PageReader::readText(TextItems &items, fz_cookie &cookie)
{
    items.clear();
    fz_rect box = fz_empty_rect;
    fz_matrix toPage = fz_identity;
    pdf_page_transform(context(), m_page, &box, &toPage);
    const fz_matrix scale = fz_scale(static_cast<float>(m_scale), static_cast<float>(m_scale));
    ItemBuilder builder(items, m_size.width, m_size.height);
    std::string error =
        readContentText(context(), m_page, fz_concat(toPage, scale), m_fonts, builder, &cookie);
    builder.endItem();
    const std::string annotationError =
        readAnnotationText(context(), m_page, scale, builder, &cookie);
    return error.empty() ? annotationError : error;
}

Picture PageReader::drawPicture(fz_cookie &cookie)
{
    const int width = std::max(1, toUnits(m_size.width));
    const int height = std::max(1, toUnits(m_size.height));
    if (m_page->transparency != 0 && !needsPageGroup(context(), m_page)) {
        m_page->transparency = 0;
    }
    const DrawnPage drawn =
        draw(context(), m_page, m_scale, fz_make_irect(0, 0, width, height), cookie);
    const std::unique_ptr<fz_pixmap, DropPixmap> pixmap(drawn.pixmap, {context()});
    Picture picture;
    picture.error = drawn.error.data();
    if (pixmap && cookie.abort == 0) {
        picture.png = encodePng({pixmap->samples, width, height});
    }
    return picture;
}

} // namespace tools
