// Page trees of any shape: the pages that are found by looking at bytes, by way of the table that
// is read here, are those of a plain walk that asks the library for every kid, in the same order;
// and each page's text is that of the page which the walk has found.

#include "fuzz/scratch_file.h"
#include "tools/pdf/page_loader.h"
#include "tools/pdf/page_tree.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::size_t mostPages = 2000;
constexpr int mostTexts = 4;

/// A place in the tree: the page's object number, 0 for one that has none, and whether it is there.
struct Place
{
    int number = 0;
    bool isReadable = false;
    bool isAbsent = false;
    bool isLoop = false;
    bool operator==(const Place &other) const
    {
        return number == other.number && isReadable == other.isReadable;
    }
};

/// The tree from left to right, every kid loaded by the library.
class PlainWalk
{
public:
    explicit PlainWalk(tools::PdfSource &source) : m_source(source) {}

    std::vector<Place> walk()
    {
        pdf_obj *stated = m_source.raw(m_source.catalog(), PDF_NAME(Pages));
        pdf_obj *reference = stated;
        for (int step = 0; step < 100; ++step) {
            pdf_obj *root = m_source.resolve(reference);
            if (!m_source.isDictionary(root)) {
                break;
            }
            if (m_source.isArray(m_source.get(root, PDF_NAME(Kids)))) {
                descend(root, m_source.numberOf(reference));
                const double count =
                    pdf_to_real(m_source.context(), m_source.get(root, PDF_NAME(Count)));
                if (count <= 0) {
                    return {};
                }
                settle(count);
                break;
            }
            reference = m_source.raw(root, PDF_NAME(Parent));
        }
        if (std::any_of(places.begin(), places.end(),
                        [](const Place &p) { return p.isReadable || p.isLoop; })) {
            return places;
        }
        pdf_obj *page = m_source.resolve(stated);
        const bool isPage =
            m_source.isDictionary(page) && !m_source.isArray(m_source.get(page, PDF_NAME(Kids))) &&
            (isCalledPage(page) || m_source.get(page, PDF_NAME(Contents)) != nullptr);
        return isPage ? std::vector<Place>{{m_source.numberOf(stated), true, false}}
                      : std::vector<Place>();
    }

    bool isTooLarge() const { return places.size() > mostPages || m_steps > 20 * mostPages; }

private:
    bool isCalledPage(pdf_obj *page)
    {
        return m_source.isName(m_source.get(page, PDF_NAME(Type)), PDF_NAME(Page));
    }

    void descend(pdf_obj *node, int number)
    {
        if (number != 0 && !m_above.insert(number).second) {
            places.push_back({0, false, false, true});
            return;
        }
        pdf_obj *kids = m_source.get(node, PDF_NAME(Kids));
        const int length = pdf_array_len(m_source.context(), kids);
        for (int i = 0; i < length && !isTooLarge(); ++i) {
            ++m_steps;
            take(pdf_array_get(m_source.context(), kids, i));
        }
        m_above.erase(number);
    }

    void take(pdf_obj *reference)
    {
        pdf_obj *kid = m_source.resolve(reference);
        const bool isReference = pdf_is_indirect(m_source.context(), reference) != 0;
        const int number = m_source.numberOf(reference);
        if (!m_source.isDictionary(kid)) {
            const bool isThere =
                isReference && kid == nullptr && number > 0 && number < m_source.objectCount();
            places.push_back({isThere ? number : 0, false, !isThere});
            return;
        }
        if (isReference && m_source.isStream(number) && !isCalledPage(kid)) {
            places.push_back({0, false, true});
            return;
        }
        const bool hasContents = m_source.get(kid, PDF_NAME(Contents)) != nullptr;
        pdf_obj *kids = m_source.raw(kid, PDF_NAME(Kids));
        if (m_source.isArray(m_source.resolve(kids)) && !(isCalledPage(kid) && hasContents)) {
            descend(kid, number);
            return;
        }
        const bool isLost = kids != nullptr && !isCalledPage(kid) && !hasContents &&
                            !m_source.isArray(m_source.resolve(kids));
        places.push_back({number, !isLost, false});
    }

    /// Leaves out the loops and the places where nothing stands if the root does not count them.
    void settle(double stated)
    {
        if (stated != static_cast<double>(places.size())) {
            std::erase_if(places, [](const Place &p) { return p.isLoop; });
        }
        const auto absent = static_cast<std::size_t>(
            std::count_if(places.begin(), places.end(), [](const Place &p) { return p.isAbsent; }));
        if (stated == static_cast<double>(places.size() - absent)) {
            std::erase_if(places, [](const Place &p) { return p.isAbsent; });
        }
    }

    tools::PdfSource &m_source;
    std::vector<Place> places;
    std::set<int> m_above;
    std::size_t m_steps = 0;
};

/// The pages of a file as a walk through the library has them; nothing when there are too many.
std::optional<std::vector<Place>> plainPages(tools::SourceFile &file)
{
    return tools::readRepairing(file, [&file]() -> std::optional<std::vector<Place>> {
        tools::PdfSource source(file);
        PlainWalk walk(source);
        std::vector<Place> pages = walk.walk();
        return walk.isTooLarge() ? std::nullopt : std::optional(std::move(pages));
    });
}

std::vector<Place> placesOf(const tools::PageList &list)
{
    std::vector<Place> places;
    for (const tools::PageList::Page &page : list.pages) {
        places.push_back({page.number, page.isReadable, false});
    }
    return places;
}

/// The same, and each page that is taken for readable at a glance is tried.
std::vector<Place> triedPlaces(tools::SourceFile &file, const tools::PageList &list)
{
    return tools::readRepairing(file, [&file, &list] {
        tools::PdfSource source(file);
        std::vector<Place> places = placesOf(list);
        for (Place &place : places) {
            place.isReadable =
                place.isReadable &&
                (place.number <= 0 || source.isDictionary(source.object(place.number)));
        }
        return places;
    });
}

std::string textOf(fz_context *context, pdf_page *page)
{
    fz_buffer *buffer = nullptr;
    std::string text;
    fz_var(buffer);
    fz_try(context)
    {
        fz_stext_options options{};
        buffer = fz_new_buffer_from_page(context, &page->super, &options);
    }
    fz_catch(context)
    {
        return "no text";
    }
    unsigned char *data = nullptr;
    const std::size_t length = fz_buffer_storage(context, buffer, &data);
    text.assign(reinterpret_cast<const char *>(data), length);
    fz_drop_buffer(context, buffer);
    return text;
}

/// The text of page @p page, opened one way or the other; and its object's number in front.
std::string pageText(const std::string &path, tools::SourceFile::Opening opening,
                     const std::shared_ptr<const tools::PageList> &pages, int page)
{
    tools::PdfContext context("page_order");
    tools::SourceFile file(context, path, opening);
    file.setPages(pages);
    tools::PageLoader loader(file);
    std::string reason;
    pdf_page *loaded = loader.load(page, reason);
    if (loaded == nullptr) {
        return "none";
    }
    const std::string text = textOf(context.get(), loaded);
    fz_drop_page(context.get(), &loaded->super);
    return text;
}

std::shared_ptr<const tools::PageList> foundPages(const std::string &path,
                                                  tools::SourceFile::Opening opening)
{
    tools::PdfContext context("page_order");
    tools::SourceFile file(context, path, opening);
    return tools::PageLoader(file).pages();
}

void compare(const std::string &path)
{
    using Opening = tools::SourceFile::Opening;
    const auto quick = foundPages(path, Opening::quick);
    const auto slow = foundPages(path, Opening::byLibrary);
    if (placesOf(*quick) != placesOf(*slow)) {
        std::abort(); // how a file is opened must not change its pages
    }
    if (quick->pages.size() > mostPages) {
        return;
    }
    tools::PdfContext context("page_order");
    tools::SourceFile file(context, path, Opening::byLibrary);
    file.readAs(quick->reading);
    const auto plain = plainPages(file);
    if (plain && *plain != triedPlaces(file, *quick)) {
        std::abort();
    }
    const int last = std::min(static_cast<int>(quick->pages.size()), mostTexts);
    for (int page = 1; page <= last; ++page) {
        const std::string shared = pageText(path, Opening::quick, quick, page);
        const std::string own = pageText(path, Opening::byLibrary, nullptr, page);
        if (shared != own) {
            std::fprintf(stderr, "page %d: \"%s\" and \"%s\"\n", page, shared.c_str(), own.c_str());
            std::abort();
        }
    }
}

} // namespace

// The library keeps a reference to some pages for good, which ends with the process.
extern "C" int __lsan_is_turned_off() // NOLINT(bugprone-reserved-identifier)
{
    return 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const fuzz::ScratchFile scratch;
    scratch.write(data, size);
    try {
        compare(scratch.input());
    } catch (const tools::ToolError &) {
        return 0;
    } catch (const std::bad_alloc &) {
        return 0;
    }
    return 0;
}
