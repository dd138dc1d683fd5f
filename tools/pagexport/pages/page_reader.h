#pragma once

#include "tools/pagexport/text/font_cache.h"
#include "tools/pagexport/text/text_items.h"
#include "tools/pdf/page_loader.h"

#include <string>

namespace tools {

/// A page's size as exported: as shown, in points, or smaller where the page is too large.
struct PageSize
{
    double width = 0;
    double height = 0;
};

/// A page's picture as a PNG file. Part of a page may be there in spite of an error.
struct Picture
{
    std::string png;   ///< empty when there is none
    std::string error; ///< empty when the picture is whole
};

/// One open document with what is kept from page to page. Belongs to one thread.
class PageReader
{
public:
    /// Whether the library's own warnings about the file are printed.
    enum class Warnings { shown, silent };

    /// @param input the PDF file; several readers may share it
    /// @param pages of the document, when another reader has found them already
    /// @throws ToolError when it cannot be read
    PageReader(const InputFile &input, Warnings warnings,
               std::shared_ptr<const PageList> pages = nullptr);
    ~PageReader();
    PageReader(const PageReader &) = delete;
    PageReader &operator=(const PageReader &) = delete;

    /// Shows the library's warnings, unless they are silent (see PdfContext).
    void showWarnings() { m_context.showWarnings(); }

    /// The pages of the document. @throws ToolError when its tree cannot be read
    std::shared_ptr<const PageList> pages() { return m_loader.pages(); }

    /// Opens page @p index (0-based). The page open before is closed.
    /// @return empty, or why the page cannot be loaded
    std::string openPage(int index);
    void closePage() noexcept;

    bool hasPage() const noexcept { return m_page != nullptr; }
    /// Size of the open page.
    PageSize pageSize() const noexcept { return m_size; }
    /// Replaces @p items by the open page's text items.
    /// @return empty, or why something of the page could not be read; the rest is there
    std::string readText(TextItems &items, fz_cookie &cookie);
    /// Draws the open page, one pixel per unit.
    Picture drawPicture(fz_cookie &cookie);

private:
    fz_context *context() const noexcept { return m_context.get(); }

    PdfContext m_context;
    SourceFile m_file;
    PageLoader m_loader;
    FontCache m_fonts;
    pdf_page *m_page = nullptr;
    double m_scale = 1; ///< of the export; below 1 for pages too large for a picture
    PageSize m_size;
};

} // namespace tools
