#pragma once

#include "tools/pagebinder/opening/kept_object.h"
#include "tools/pagebinder/opening/source_file.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tools {

/// Thrown when the library had to rebuild the cross-reference table while objects were being read:
/// whatever was read so far may be stale, the work starts again.
struct FileRepaired
{
};

/// The children of a node of the page tree: an array of the document, or numbers that were read
/// without it.
struct PageKids
{
    pdf_obj *array = nullptr;
    const std::vector<int> *numbers = nullptr;
};

/// Reading access to a document. Every call of the library that can fail is made here and ends in a
/// null object, a false or a C++ exception, so that no jump of the library ever passes a caller's
/// frame. Objects that are handed out belong to the document and live as long as it does, or until
/// dropUnused() unless they are kept.
///
/// Callers resolve references only through this class; the library's own accessors are then safe on
/// what it returns, because they fail on nothing but references.
class PdfSource
{
public:
    explicit PdfSource(SourceFile &file)
        : m_file(file), m_context(file.context()), m_document(file.document())
    {
    }

    fz_context *context() const noexcept { return m_context; }
    pdf_document *document() const noexcept { return m_document; }

    /// The object behind @p object, which itself when it is no reference; null when it cannot be
    /// loaded. @throws FileRepaired, std::bad_alloc
    pdf_obj *resolve(pdf_obj *object);

    /// The resolved value of @p key, null where @p dictionary (or what it refers to) has none.
    pdf_obj *get(pdf_obj *dictionary, pdf_obj *key);
    pdf_obj *get(pdf_obj *dictionary, const char *key);
    /// The resolved element, null beyond the end.
    pdf_obj *at(pdf_obj *array, int index);
    /// The value of @p key as it stands, a reference perhaps; @p dictionary must be resolved.
    pdf_obj *raw(pdf_obj *dictionary, pdf_obj *key) const;

    pdf_obj *trailer() const;
    pdf_obj *catalog();
    int objectCount() const;

    using Kids = PageKids;
    /// The children of a node of the page tree, which must be resolved.
    Kids kids(pdf_obj *node);
    int countOf(const Kids &kids) const;
    /// A child, resolved; null where it cannot be loaded.
    pdf_obj *kidAt(const Kids &kids, int index);
    /// Its object number, 0 where it stands in the list itself.
    int kidNumber(const Kids &kids, int index);

    /// Keeps an object, or the children of a node, for as long as this source lives.
    void hold(pdf_obj *object) { m_held.emplace_back(m_context, object); }
    void holdKids(const Kids &kids) { hold(kids.array); }
    /// Lets the document forget the objects it has read that nobody keeps. It reads them again when
    /// they are asked for.
    void dropUnused();

    bool isDictionary(pdf_obj *resolved) const;
    bool isArray(pdf_obj *resolved) const;
    bool isName(pdf_obj *resolved, pdf_obj *name) const;
    /// Number of the object that a reference finally leads to; 0 when @p object is no reference.
    int numberOf(pdf_obj *object);
    /// Whether the object @p number is a stream.
    bool isStream(int number);

    /// Hands the bytes of stream @p number over in pieces, until @p take returns false.
    /// @param decoded whether its filters are undone; if not, the bytes are as they stand in the
    ///     file, but decrypted
    /// @returns false when reading failed on the way; the pieces before that have been handed over
    bool readStream(int number, bool decoded,
                    const std::function<bool(const unsigned char *, std::size_t)> &take);

    /// A text string as UTF-8; empty for anything else.
    std::string text(pdf_obj *string);
    /// The bytes of a string.
    static std::string bytes(fz_context *context, pdf_obj *string);

    /// Runs @p work, calls of the library, and catches what it throws. @p work must hold no object
    /// with a destructor and throw no C++ exception.
    /// @returns false on failure. @throws FileRepaired, std::bad_alloc
    template <typename Work> bool attempt(Work &&work)
    {
        return run(
            [](void *argument) { (*static_cast<std::remove_reference_t<Work> *>(argument))(); },
            &work);
    }

private:
    pdf_obj *load(int number);
    bool run(void (*call)(void *), void *argument);

    const SourceFile &m_file;
    fz_context *m_context;
    pdf_document *m_document;
    std::vector<KeptObject> m_held;
};

} // namespace tools
