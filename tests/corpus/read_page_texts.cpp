// Writes the texts of the pages of PDF files, as the PDF library reads them by itself. A program of
// its own, because this takes three times as long under the sanitizers, which have nothing to find
// in it. For each file: the number of its pages and the text of each, all ended by NUL; 0 for a
// file that cannot be read, an empty text for such a page.

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <cstdio>

namespace {

/// Text of page @p number; a page that cannot be read has none. The buffer is the caller's.
fz_buffer *readPage(fz_context *context, fz_document *document, int number)
{
    fz_buffer *buffer = nullptr;
    fz_var(buffer);
    fz_try(context)
    {
        buffer = fz_new_buffer_from_page_number(context, document, number, nullptr);
    }
    fz_catch(context)
    {
        buffer = nullptr;
    }
    return buffer;
}

fz_document *openPdf(fz_context *context, const char *path, int *count)
{
    fz_document *document = nullptr;
    fz_var(document);
    fz_try(context)
    {
        document = reinterpret_cast<fz_document *>(pdf_open_document(context, path));
        *count = fz_count_pages(context, document);
    }
    fz_catch(context)
    {
        fz_drop_document(context, document);
        document = nullptr;
        *count = 0;
    }
    return document;
}

void writeTexts(fz_context *context, const char *path)
{
    int count = 0;
    fz_document *document = openPdf(context, path, &count);
    std::printf("%d%c", count, '\0');
    for (int number = 0; number < count; ++number) {
        fz_buffer *buffer = readPage(context, document, number);
        if (buffer != nullptr) {
            std::fputs(fz_string_from_buffer(context, buffer), stdout);
        }
        std::putchar('\0');
        fz_drop_buffer(context, buffer);
    }
    fz_drop_document(context, document);
}

} // namespace

int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        // A context of its own, so that nothing of one file is taken for another's.
        fz_context *context = fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT);
        fz_set_warning_callback(
            context, [](void *, const char *) {}, nullptr);
        fz_set_error_callback(
            context, [](void *, const char *) {}, nullptr);
        writeTexts(context, argv[i]);
        fz_drop_context(context);
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}
