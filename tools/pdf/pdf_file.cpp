#include "tools/pdf/pdf_file.h"

#include "tools/common/memory_budget.h"
#include "tools/common/report.h"
#include "tools/pdf/file_stream.h"

#include <new>

namespace tools {

namespace {

constexpr int maximumWarnings = 5;

} // namespace

PdfContext::PdfContext(const char *tool)
    : m_context(fz_new_context(budgetedMemory(), nullptr, cacheBudget())), m_tool(tool)
{
    if (m_context == nullptr) {
        throw std::bad_alloc();
    }
    fz_set_warning_callback(m_context, printWarning, this);
    fz_set_error_callback(m_context, printWarning, this);
}

PdfContext::~PdfContext()
{
    fz_drop_context(m_context);
}

void PdfContext::printWarning(void *user, const char *message)
{
    auto *self = static_cast<PdfContext *>(user);
    ++self->m_warnings;
    if (self->m_warnings <= maximumWarnings) {
        reportLine(self->m_tool, "", std::string("warning: ") + message);
    } else if (self->m_warnings == maximumWarnings + 1) {
        reportLine(self->m_tool, "", "warning: more of them are left out");
    }
}

PdfFile::PdfFile(PdfContext &context, const InputFile &input)
    : m_context(context.get()), m_path(input.path())
{
    fz_stream *stream = nullptr;
    fz_var(stream);
    fz_try(m_context)
    {
        stream = openFileStream(m_context, input.descriptor(), input.size());
        m_document = pdf_open_document_with_stream(m_context, stream);
    }
    fz_always(m_context)
    {
        fz_drop_stream(m_context, stream);
    }
    fz_catch(m_context)
    {
        throw ToolError(m_path,
                        std::string("cannot be read as PDF: ") + fz_caught_message(m_context));
    }
    if (pdf_needs_password(m_context, m_document)) {
        pdf_drop_document(m_context, m_document);
        throw ToolError(m_path, "needs a password");
    }
}

PdfFile::~PdfFile()
{
    pdf_drop_document(m_context, m_document);
}

} // namespace tools
