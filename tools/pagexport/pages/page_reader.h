#pragma once

#include "tools/pagexport/pages/page_tree.h"
#include "tools/pagexport/text/font_cache.h"
#include "tools/pagexport/text/page_items.h"
#include "tools/pdf/pdf_file.h"

#include <string>

namespace tools {

/// A page's size as shown, in points.
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
    /// @throws ToolError when it cannot be read
    PageReader(const InputFile &input, Warnings warnings);
    ~PageReader();
    PageReader(const PageReader &) = delete;
    PageReader &operator=(const PageReader &) = delete;

    /// Number of pages; may be far too large in a file that lies.
    int pageCount() { return countPages(m_file); }
    /// Number of objects the document may have; it cannot have many more pages.
    int objectCount();
    /// The objects of @p count pages from page @p first (0-based) on.
    PageObjects findPageObjects(int first, int count)
    {
        return tools::findPageObjects(m_file, first, count);
    }

    /// Opens page @p index (0-based); @p object as findPageObjects() gives it. The page open before
    /// is closed.
    /// @return empty, or why the page cannot be loaded
    std::string openPage(int index, int object);
    void closePage() noexcept;

    bool hasPage() const noexcept { return m_page != nullptr; }
    /// Size of the open page.
    PageSize pageSize() const noexcept { return m_size; }
    /// Replaces @p items by the open page's text items.
    /// @return empty, or why something of the page could not be read; the rest is there
    std::string readText(PageItems &items, fz_cookie &cookie);
    /// Draws the open page, one pixel per unit.
    Picture drawPicture(fz_cookie &cookie);

private:
    fz_context *context() const noexcept { return m_context.get(); }
    pdf_document *document() const noexcept { return m_file.document(); }

    PdfContext m_context;
    PdfFile m_file;
    FontCache m_fonts;
    pdf_page *m_page = nullptr;
    PageSize m_size;
};

} // namespace tools
