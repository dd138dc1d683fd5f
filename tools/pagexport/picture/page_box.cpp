#include "tools/pagexport/picture/page_box.h"

#include "tools/pagexport/text/geometry.h"

#include <algorithm>
#include <cmath>

namespace tools {

namespace {

constexpr double mostPixels = 30'000'000; // Qt reads no picture beyond 33.5 million
constexpr double longestSide = 30'000;
constexpr fz_rect letterPage{0, 0, 612, 792};

fz_rect boxOf(fz_context *context, pdf_page *page, pdf_obj *key)
{
    return pdf_to_rect(context, pdf_dict_get_inheritable(context, page->obj, key));
}

bool areApart(fz_rect first, fz_rect second)
{
    return first.x1 <= second.x0 || second.x1 <= first.x0 || first.y1 <= second.y0 ||
           second.y1 <= first.y0;
}

} // namespace

void settlePageBox(fz_context *context, pdf_page *page)
{
    fz_rect media = boxOf(context, page, PDF_NAME(MediaBox));
    if (fz_is_empty_rect(media) != 0) {
        media = letterPage;
    }
    const fz_rect crop = boxOf(context, page, PDF_NAME(CropBox));
    if (fz_is_empty_rect(crop) == 0 && areApart(media, crop)) {
        pdf_dict_put_rect(context, page->obj, PDF_NAME(CropBox), media);
    }
    pdf_obj *unit = pdf_dict_get(context, page->obj, PDF_NAME(UserUnit));
    if (unit != nullptr && !(pdf_to_real(context, unit) > 0)) {
        pdf_dict_del(context, page->obj, PDF_NAME(UserUnit));
    }
}

double pageScale(double width, double height) noexcept
{
    const double pixelsWide = std::max(1.0, width * unitsPerPoint);
    const double pixelsHigh = std::max(1.0, height * unitsPerPoint);
    return std::min({1.0, longestSide / pixelsWide, longestSide / pixelsHigh,
                     std::sqrt(mostPixels / pixelsWide / pixelsHigh)});
}

} // namespace tools
