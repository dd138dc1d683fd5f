#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <cstddef>
#include <cstdint>
#include <vector>

// What is done to the library's own data, beyond what its interface promises. It holds for the
// versions that have been looked into; with all others the library is left to do its own work,
// which is slower; only objects that break the syntax are not mended then.
// QUORLIN_PUBLIC_LIBRARY_ONLY asks for that with known ones.
#if FZ_VERSION_MAJOR == 1 && FZ_VERSION_MINOR == 21 && !defined(QUORLIN_PUBLIC_LIBRARY_ONLY)
#define QUORLIN_KNOWS_LIBRARY 1
#else
#define QUORLIN_KNOWS_LIBRARY 0
#endif

namespace tools {

/// Whether the functions below may be called that say so.
constexpr bool knowsLibrary = QUORLIN_KNOWS_LIBRARY != 0;

/// Gives @p document the cross-reference table @p entries, allocated by the library and taken over
/// on success, with @p trailer. Only where knowsLibrary. @throws the library's error
void adoptTable(fz_context *context, pdf_document *document, pdf_xref_entry *entries, int count,
                pdf_obj *trailer);

/// Puts @p object into @p document as object @p number, which has not been loaded yet. Only where
/// knowsLibrary. @throws the library's error
void adoptObject(fz_context *context, pdf_document *document, int number, pdf_obj *object);

/// Object @p number, loaded without the repair of the whole table that the library would begin for
/// one object that it cannot read; null for such an object. Only where knowsLibrary.
/// @throws the library's error
pdf_obj *loadWithoutRepair(fz_context *context, pdf_document *document, int number);

/// Tells @p document, which has rebuilt its table, where object @p number stands that it has not
/// found. Only where knowsLibrary. @throws the library's error
void adoptPlace(fz_context *context, pdf_document *document, int number, std::int64_t offset,
                int generation);

/// Gives @p document an object in place of @p number, which it could not read; takes it over.
/// @param stream where the data of a stream begins, from the object's place on; 0: no stream
/// Only where knowsLibrary. @throws the library's error
void adoptMended(fz_context *context, pdf_document *document, int number, pdf_obj *object,
                 std::size_t stream);

/// Loads the page whose dictionary is the object @p number, without a walk through the page tree.
/// Links on it that lead to other pages are not resolved. Only where knowsLibrary.
/// @throws the library's error
pdf_page *loadPageObject(fz_context *context, pdf_document *document, int number);

/// Gives back what loadPageObject() has left with the document; before it is closed.
void dropPageMap(fz_context *context, pdf_document *document) noexcept;

/// Where an object stands, as the document's table has it.
struct ObjectPlace
{
    enum class Kind { unknown, inFile, inStream };
    Kind kind = Kind::unknown; ///< unknown, too, when it has been loaded
    std::int64_t offset = 0;   ///< in the file
    int stream = 0;            ///< number of the object stream
};

/// Where object @p number stands. Never throws the library's errors.
ObjectPlace placeOf(fz_context *context, pdf_document *document, int number) noexcept;

/// The same for each of @p numbers.
std::vector<ObjectPlace> placesOf(fz_context *context, pdf_document *document,
                                  const std::vector<int> &numbers);

/// The bytes that the document is read from.
fz_stream *fileOf(pdf_document *document) noexcept;

/// How the document is encrypted; null when it is not.
pdf_crypt *cryptOf(pdf_document *document) noexcept;

/// Opens the stream of object @p number, whose bytes are not encrypted though the document is.
/// @param decoded whether its filters are applied
/// Throws the library's errors.
fz_stream *openUnencryptedStream(fz_context *context, pdf_document *document, int number,
                                 bool decoded);

} // namespace tools
