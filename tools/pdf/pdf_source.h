#pragma once

#include "tools/pdf/kept_object.h"
#include "tools/pdf/library_internals.h"
#include "tools/pdf/object_headers.h"
#include "tools/pdf/source_file.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tools {

struct MendedObject;

/// Thrown when the library had to rebuild the cross-reference table while objects were being read:
/// whatever was read so far may be stale, the work starts again.
struct FileRepaired
{
};

/// How the reading of a stream ended.
enum class StreamEnd {
    whole,   ///< as it should, or because nobody wanted more
    damaged, ///< something is wrong with the data: more of it may be missing than the end
    failed   ///< it cannot be opened
};

/// Reading access to a document. Every call of the library that can fail is made here and ends in a
/// null object, a false or a C++ exception, so that no jump of the library ever passes a caller's
/// frame. Objects that are handed out belong to the document and live as long as it does, or until
/// dropUnused() unless they are kept.
///
/// An object whose syntax the library refuses is read the way tolerant readers do.
///
/// Callers resolve references only through this class; the library's own accessors are then safe on
/// what it returns, because they fail on nothing but references.
class PdfSource
{
public:
    explicit PdfSource(SourceFile &file)
        : m_file(file), m_context(file.context()), m_document(file.document()),
          m_wasRepaired(isRepaired())
    {
    }

    SourceFile &file() noexcept { return m_file; }
    const InputFile &input() const noexcept { return m_file.input(); }
    const std::string &path() const noexcept { return m_file.path(); }
    fz_context *context() const noexcept { return m_context; }
    pdf_document *document() const noexcept { return m_document; }

    /// The object behind @p object, which itself when it is no reference; null when it cannot be
    /// loaded. @throws FileRepaired, std::bad_alloc
    pdf_obj *resolve(pdf_obj *object);

    /// Object @p number as it stands, a reference perhaps; null when it cannot be loaded.
    /// @throws FileRepaired, std::bad_alloc
    pdf_obj *load(int number);

    /// The resolved value of @p key, null where @p dictionary (or what it refers to) has none.
    pdf_obj *get(pdf_obj *dictionary, pdf_obj *key);
    pdf_obj *get(pdf_obj *dictionary, const char *key);
    /// The resolved element, null beyond the end.
    pdf_obj *at(pdf_obj *array, int index);
    /// The value of @p key as it stands, a reference perhaps; @p dictionary must be resolved.
    pdf_obj *raw(pdf_obj *dictionary, pdf_obj *key) const;
    pdf_obj *raw(pdf_obj *dictionary, const char *key) const;

    pdf_obj *trailer() const;
    pdf_obj *catalog();
    int objectCount() const;

    /// The object @p number, resolved; null when it cannot be loaded.
    pdf_obj *object(int number);
    /// Where objects stand; "unknown" those that the library must be asked for.
    ObjectPlace placeOf(int number) const noexcept
    {
        return tools::placeOf(m_context, m_document, number);
    }
    std::vector<ObjectPlace> placesOf(const std::vector<int> &numbers) const
    {
        return tools::placesOf(m_context, m_document, numbers);
    }

    /// Keeps an object for as long as this source lives.
    void hold(pdf_obj *object) { m_held.emplace_back(m_context, object); }
    /// Lets the document forget the objects it has read that nobody keeps. It reads them again when
    /// they are asked for.
    void dropUnused();
    /// Whether object @p number is among the /Kids of @p parent, a node of the page tree or of any
    /// other, as it stands.
    bool listsKid(pdf_obj *parent, int number);

    bool isDictionary(pdf_obj *resolved) const;
    bool isArray(pdf_obj *resolved) const;
    bool isName(pdf_obj *resolved, pdf_obj *name) const;
    /// An integer, 0 for anything else.
    int integer(pdf_obj *resolved) const;
    /// Number of the object that a reference finally leads to; 0 when @p object is no reference.
    int numberOf(pdf_obj *object);
    /// The number in a reference; 0 when @p object is none.
    int directNumber(pdf_obj *object) const;
    /// @p number, or the one that the object leads to which is itself a reference.
    int finalNumber(int number);
    /// Whether the object @p number is a stream.
    bool isStream(int number);

    /// Whether the library has had to rebuild the cross-reference table.
    bool isRepaired() const;

    /// The bytes of stream @p number, its filters undone. @returns false when that fails
    bool loadStream(int number, std::string &bytes);

    /// Makes the node of a page tree that stands in @p text object @p number, its list of children
    /// empty. Nothing happens where the library loads the object better itself.
    void adoptNode(int number, const std::string &text);

    /// The value that is written as @p text; null when that makes no sense.
    KeptObject parse(std::string_view text);

    /// Hands the bytes of stream @p number over in pieces, until @p take returns false.
    /// @param decoded whether its filters are undone; if not, the bytes are as they stand in the
    ///     file, but decrypted
    /// @returns how reading ended; the pieces before that have been handed over
    StreamEnd readStream(int number, bool decoded,
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
    pdf_obj *loadUnrepaired(int number);
    bool isReadableMetadata(int number);
    bool findLost(int number);
    pdf_obj *adopt(int number, const MendedObject &mended);
    std::string sourceOf(int number);
    bool run(void (*call)(void *), void *argument);

    SourceFile &m_file;
    fz_context *m_context;
    pdf_document *m_document;
    std::vector<KeptObject> m_held;
    bool m_wasRepaired;
    std::unordered_set<int> m_odd;             ///< objects that the library has refused
    std::optional<ObjectHeaderScan> m_headers; ///< of the file, once an object was not found
    int m_kidsOf = 0;                          ///< node that was asked for its kids last
    std::unordered_set<int> m_kids;
};

/// Does @p work, and once more when the library has had to repair @p file on the way.
/// @throws ToolError when even that does not help, and what @p work throws
template <typename Work> auto readRepairing(const SourceFile &file, Work &&work)
{
    constexpr int mostAttempts = 3;
    for (int attempt = 1;; ++attempt) {
        try {
            return work();
        } catch (const FileRepaired &) {
            if (attempt == mostAttempts) {
                throw ToolError(file.path(), "is too damaged");
            }
        }
    }
}

} // namespace tools
