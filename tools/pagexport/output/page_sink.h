#pragma once

#include "tools/pagexport/text/text_items.h"

#include <string>

namespace tools {

/// How much of a page could be read.
enum class PageState {
    whole,
    partial,   ///< there was a warning; some of its text or of its picture is missing
    unreadable ///< the page could not be loaded at all; it has no size and no items
};

/// An exported page.
struct ExportedPage
{
    int position = 0; ///< counted from 0 among the pages exported
    int width = 0;    ///< in units
    int height = 0;
    PageState state = PageState::whole;
    TextItems items;
    std::string picture; ///< a PNG file; empty for none

    void clear()
    {
        width = 0;
        height = 0;
        state = PageState::whole;
        items.clear();
        picture.clear();
    }
};

/// Where exported pages go. All functions but begin() are called by several threads.
class PageSink
{
public:
    PageSink() = default;
    virtual ~PageSink() = default;
    PageSink(const PageSink &) = delete;
    PageSink &operator=(const PageSink &) = delete;

    /// Called once, before any page: @p count pages come, the first one is page @p first of the
    /// document (counted from 1).
    virtual void begin(int first, int count) = 0;

    /// Called before a page is read: waits until the sink has room for it. The page that is due
    /// next never waits.
    virtual void await(int /*position*/) {}

    /// Takes a page. The pages come in any order, each once. Never waits for another page.
    /// @throws ToolError when it cannot be written
    virtual void take(const ExportedPage &page) = 0;

    /// Some pages will not come: nobody must wait for them any longer.
    virtual void abandon() noexcept {}
};

} // namespace tools
