#include "tools/pagebinder/document/destinations.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tools {

namespace {

constexpr int longestActionChain = 16;
constexpr int mostActions = 64;

/// Scripts, actions that reach into other documents' insides or into the parts of this one that do
/// not come along.
constexpr std::array<const char *, 5> droppedActions = {"JavaScript", "ImportData", "Thread",
                                                        "GoToE", "GoToDp"};

} // namespace

void Destinations::addPages(const std::vector<OutputPage> &pages)
{
    for (const OutputPage &page : pages) {
        if (page.found.number != 0) {
            m_byObject.try_emplace(page.found.number, page.target);
        }
        m_byPage.try_emplace(page.sourcePage, page.target);
    }
}

int Destinations::pageOf(pdf_obj *destination)
{
    pdf_obj *array = m_names.arrayOf(destination);
    return array == nullptr ? 0 : pageOfArray(array);
}

int Destinations::pageOfArray(pdf_obj *array)
{
    const DestinationPage page = m_names.pageOf(array);
    const auto byObject = m_byObject.find(page.object);
    if (byObject != m_byObject.end()) {
        return byObject->second;
    }
    const auto byNumber = m_byPage.find(page.number);
    return byNumber == m_byPage.end() ? 0 : byNumber->second;
}

void Destinations::write(pdf_obj *destination)
{
    fz_context *context = m_source.context();
    pdf_obj *array = m_names.arrayOf(destination);
    const int length = std::min(pdf_array_len(context, array), 8);
    PdfWriter &writer = m_copier.writer();
    writer.beginArray().appendReference(pageOfArray(array));
    for (int i = 1; i < length; ++i) {
        writer.appendBlank();
        if (!m_copier.writeScalar(m_source.at(array, i))) {
            writer.appendNull();
        }
    }
    if (length < 2) {
        writer.appendName("Fit");
    }
    writer.endArray();
}

bool Destinations::leadsOutside(pdf_obj *owner)
{
    pdf_obj *destination = m_source.raw(owner, PDF_NAME(Dest));
    if (destination != nullptr) {
        return pageOf(destination) == 0;
    }
    pdf_obj *action = m_source.get(owner, PDF_NAME(A));
    return m_source.isDictionary(action) &&
           m_source.isName(m_source.get(action, PDF_NAME(S)), PDF_NAME(GoTo)) && !isKept(action);
}

bool Destinations::isKept(pdf_obj *action)
{
    pdf_obj *kind = m_source.get(action, PDF_NAME(S));
    if (!pdf_is_name(m_source.context(), kind)) {
        return false;
    }
    if (m_source.isName(kind, PDF_NAME(GoTo))) {
        return pageOf(m_source.raw(action, PDF_NAME(D))) != 0;
    }
    const char *name = pdf_to_name(m_source.context(), kind);
    return std::none_of(droppedActions.begin(), droppedActions.end(),
                        [name](const char *dropped) { return std::strcmp(dropped, name) == 0; });
}

void Destinations::writeAction(std::string_view key, pdf_obj *action)
{
    pdf_obj *resolved = m_source.resolve(action);
    if (m_source.isDictionary(resolved) && isKept(resolved)) {
        m_copier.writer().key(key);
        writeActionValue(resolved, 0);
    }
}

bool Destinations::writeActionValue(pdf_obj *action, int depth)
{
    if (!m_source.isDictionary(action) || !isKept(action)) {
        return false;
    }
    const KeyFilter kept = [](std::string_view key) {
        return key != "Next" && key != "D" && key != "SD" && key != "JS";
    };
    m_copier.writer().beginDictionary();
    m_copier.writeEntries(action, Role::action, kept);
    pdf_obj *destination = m_source.raw(action, PDF_NAME(D));
    if (m_source.isName(m_source.get(action, PDF_NAME(S)), PDF_NAME(GoTo))) {
        m_copier.writer().key("D");
        write(destination);
    } else {
        m_copier.writeEntry("D", destination, Role::link);
    }
    writeNext(m_source.get(action, PDF_NAME(Next)), depth + 1);
    m_copier.writer().endDictionary();
    return true;
}

void Destinations::writeNext(pdf_obj *next, int depth)
{
    if (next == nullptr || depth > longestActionChain) {
        return;
    }
    m_copier.writer().key("Next").beginArray();
    if (m_source.isArray(next)) {
        const int length = std::min(pdf_array_len(m_source.context(), next), mostActions);
        for (int i = 0; i < length; ++i) {
            // One long chain is taken whole; of branches within branches only the first level.
            writeActionValue(m_source.at(next, i), depth + longestActionChain);
        }
    } else {
        writeActionValue(next, depth);
    }
    m_copier.writer().endArray();
}

} // namespace tools
