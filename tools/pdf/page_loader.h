#pragma once

#include "tools/pdf/source_file.h"

#include <memory>
#include <string>
#include <unordered_set>

namespace tools {

class PageTree;
class PdfSource;
struct FoundPage;

/// Loads pages for the library to draw: those that PageTree finds by their numbers, with what they
/// take over from the nodes above them, whatever the library itself makes of the tree. Objects
/// whose syntax the library refuses are mended for it.
class PageLoader
{
public:
    /// @param file must outlive the loader
    explicit PageLoader(SourceFile &file) : m_file(file) {}
    ~PageLoader();
    PageLoader(const PageLoader &) = delete;
    PageLoader &operator=(const PageLoader &) = delete;

    /// The pages of the file, to be given to others who have it open with setPages().
    /// @throws ToolError when the tree cannot be read
    std::shared_ptr<const PageList> pages();

    /// Loads page @p page, counted from 1. Links on it that lead to other pages may stay
    /// unresolved.
    /// @param reason set to why it cannot be loaded
    /// @returns the page, owned by the caller; null when it cannot be loaded
    pdf_page *load(int page, std::string &reason);

private:
    pdf_page *loadFound(PageTree &tree, const FoundPage &found, std::string &reason);
    void mendPage(PdfSource &source, PageTree &tree, const FoundPage &page);
    void mendResources(PdfSource &source, pdf_obj *resources, int depth);
    void mend(PdfSource &source, pdf_obj *object, int depth);

    SourceFile &m_file;
    std::unordered_set<int> m_mended; ///< objects that have been looked at
    bool m_wasRepaired = false;
};

} // namespace tools
