#include "tools/pdf/library_internals.h"

namespace tools {

#if QUORLIN_KNOWS_LIBRARY

void adoptTable(fz_context *context, pdf_document *document, pdf_xref_entry *entries, int count,
                pdf_obj *trailer)
{
    pdf_replace_xref(context, document, entries, count);
    pdf_set_populating_xref_trailer(context, document, trailer);
}

void adoptObject(fz_context *context, pdf_document *document, int number, pdf_obj *object)
{
    pdf_xref_entry *entry = pdf_get_xref_entry(context, document, number);
    if (entry->obj != nullptr) {
        fz_throw(context, FZ_ERROR_GENERIC, "object %d has been loaded before", number);
    }
    pdf_set_obj_parent(context, object, number);
    entry->obj = pdf_keep_obj(context, object);
}

pdf_obj *loadWithoutRepair(fz_context *context, pdf_document *document, int number)
{
    if (number >= pdf_xref_len(context, document)) {
        return nullptr;
    }
    const pdf_xref_entry *const entry = pdf_get_xref_entry_no_null(context, document, number);
    if (entry->obj != nullptr) {
        return entry->obj;
    }
    const pdf_xref_entry before = *entry;
    const int repairs = document->repair_attempted;
    pdf_obj *object = nullptr;
    fz_var(object);
    document->repair_attempted = 1;
    fz_try(context)
    {
        object = pdf_cache_object(context, document, number)->obj;
    }
    fz_always(context)
    {
        document->repair_attempted = repairs;
    }
    fz_catch(context)
    {
        if (fz_caught(context) == FZ_ERROR_MEMORY) {
            fz_rethrow(context);
        }
        object = nullptr;
    }
    if (object == nullptr) {
        // The library forgets where an object should be when it finds another one there.
        pdf_xref_entry *const after = pdf_get_xref_entry_no_null(context, document, number);
        pdf_drop_obj(context, after->obj);
        *after = before;
    }
    return object;
}

void adoptPlace(fz_context *context, pdf_document *document, int number, std::int64_t offset,
                int generation)
{
    pdf_xref_entry *const entry = pdf_get_xref_entry_no_null(context, document, number);
    entry->type = 'n';
    entry->ofs = offset;
    entry->stm_ofs = 0;
    entry->gen = static_cast<unsigned short>(generation);
    entry->num = number;
}

void adoptMended(fz_context *context, pdf_document *document, int number, pdf_obj *object,
                 std::size_t stream)
{
    pdf_xref_entry *const entry = pdf_get_xref_entry(context, document, number);
    entry->stm_ofs = stream == 0 ? 0 : entry->ofs + static_cast<std::int64_t>(stream);
    entry->obj = object;
    pdf_set_obj_parent(context, object, number);
    if (document->crypt != nullptr) {
        pdf_crypt_obj(context, document->crypt, object, number, entry->gen);
    }
}

// The library looks a page up by its number through this map when it is there, and else through
// every page before it; and so for each link on the page. One entry, the page wanted, is enough.
pdf_page *loadPageObject(fz_context *context, pdf_document *document, int number)
{
    if (document->fwd_page_map == nullptr) {
        document->fwd_page_map = static_cast<int *>(fz_calloc(context, 1, sizeof(int)));
        document->page_map_nesting = 1;
    }
    if (document->rev_page_map == nullptr) {
        document->rev_page_map =
            static_cast<pdf_rev_page_map *>(fz_calloc(context, 1, sizeof(pdf_rev_page_map)));
    }
    document->map_page_count = 1;
    document->fwd_page_map[0] = number;
    document->rev_page_map[0] = {0, number};
    // The library refuses what lies beyond the count that the root states, which may be a lie.
    document->linear_page_count = 1;
    pdf_page *page = pdf_load_page(context, document, 0);
    // Looked up through the map the page's object is owned twice, and given back once only.
    pdf_drop_obj(context, page->obj);
    return page;
}

void dropPageMap(fz_context *context, pdf_document *document) noexcept
{
    fz_free(context, document->fwd_page_map);
    fz_free(context, document->rev_page_map);
    document->fwd_page_map = nullptr;
    document->rev_page_map = nullptr;
    document->map_page_count = 0;
    document->page_map_nesting = 0;
    document->linear_page_count = 0;
}

namespace {

void lookUp(fz_context *context, pdf_document *document, int number, ObjectPlace &place)
{
    const pdf_xref_entry *entry = pdf_get_xref_entry(context, document, number);
    if (entry == nullptr || entry->obj != nullptr) {
        return;
    }
    if (entry->type == 'n') {
        place.kind = ObjectPlace::Kind::inFile;
        place.offset = entry->ofs;
    } else if (entry->type == 'o') {
        place.kind = ObjectPlace::Kind::inStream;
        place.stream = static_cast<int>(entry->ofs);
    }
}

} // namespace

ObjectPlace placeOf(fz_context *context, pdf_document *document, int number) noexcept
{
    ObjectPlace place;
    if (number > 0 && number < pdf_xref_len(context, document)) {
        fz_try(context)
        {
            lookUp(context, document, number, place);
        }
        fz_catch(context)
        {
            place = {};
        }
    }
    return place;
}

std::vector<ObjectPlace> placesOf(fz_context *context, pdf_document *document,
                                  const std::vector<int> &numbers)
{
    std::vector<ObjectPlace> places(numbers.size());
    const int count = pdf_xref_len(context, document);
    fz_try(context)
    {
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            if (numbers[i] > 0 && numbers[i] < count) {
                lookUp(context, document, numbers[i], places[i]);
            }
        }
    }
    fz_catch(context)
    {
        // What has not been looked up stays unknown.
    }
    return places;
}

#else

void adoptTable(fz_context *context, pdf_document *, pdf_xref_entry *, int, pdf_obj *)
{
    fz_throw(context, FZ_ERROR_GENERIC, "this version of the library reads its tables itself");
}

void adoptObject(fz_context *context, pdf_document *, int, pdf_obj *)
{
    fz_throw(context, FZ_ERROR_GENERIC, "this version of the library reads its objects itself");
}

pdf_obj *loadWithoutRepair(fz_context *context, pdf_document *, int)
{
    fz_throw(context, FZ_ERROR_GENERIC, "this version of the library reads its objects itself");
}

void adoptPlace(fz_context *context, pdf_document *, int, std::int64_t, int)
{
    fz_throw(context, FZ_ERROR_GENERIC, "this version of the library finds its objects itself");
}

void adoptMended(fz_context *context, pdf_document *, int, pdf_obj *, std::size_t)
{
    fz_throw(context, FZ_ERROR_GENERIC, "this version of the library reads its objects itself");
}

pdf_page *loadPageObject(fz_context *context, pdf_document *, int)
{
    fz_throw(context, FZ_ERROR_GENERIC, "this version of the library finds its pages itself");
}

void dropPageMap(fz_context *, pdf_document *) noexcept {}

ObjectPlace placeOf(fz_context *, pdf_document *, int) noexcept
{
    return {};
}

std::vector<ObjectPlace> placesOf(fz_context *, pdf_document *, const std::vector<int> &numbers)
{
    return std::vector<ObjectPlace>(numbers.size());
}

#endif

fz_stream *fileOf(pdf_document *document) noexcept
{
    return document->file;
}

pdf_crypt *cryptOf(pdf_document *document) noexcept
{
    return document->crypt;
}

fz_stream *openUnencryptedStream(fz_context *context, pdf_document *document, int number,
                                 bool decoded)
{
    pdf_crypt *const crypt = document->crypt;
    fz_stream *stream = nullptr;
    fz_var(stream);
    document->crypt = nullptr;
    fz_try(context)
    {
        stream = decoded ? pdf_open_stream_number(context, document, number)
                         : pdf_open_raw_stream_number(context, document, number);
    }
    fz_always(context)
    {
        document->crypt = crypt;
    }
    fz_catch(context)
    {
        fz_rethrow(context);
    }
    return stream;
}

} // namespace tools
