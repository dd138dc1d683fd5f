#include "tools/pdf/pdf_context.h"

#include "tools/common/report.h"
#include "tools/pdf/memory_budget.h"

#include <cstring>
#include <new>
#include <utility>

namespace tools {

namespace {

constexpr int maximumWarnings = 5;
constexpr const char *wrongLength = "PDF stream Length incorrect";

} // namespace

PdfContext::PdfContext(const char *tool)
    : m_context(fz_new_context(budgetedMemory(), nullptr, cacheBudget())), m_tool(tool)
{
    if (m_context == nullptr) {
        throw std::bad_alloc();
    }
    fz_set_warning_callback(m_context, takeWarning, this);
    fz_set_error_callback(m_context, takeWarning, this);
}

PdfContext::~PdfContext()
{
    fz_drop_context(m_context);
}

int PdfContext::complaints()
{
    // A warning like the one before is held back until another one comes.
    fz_flush_warnings(m_context);
    return m_complaints;
}

void PdfContext::showWarnings()
{
    // A warning like the one before is held back until another one comes.
    fz_flush_warnings(m_context);
    m_areShown = true;
    for (const std::string &warning : std::exchange(m_heldBack, {})) {
        reportLine(m_tool, "", warning);
    }
}

void PdfContext::takeWarning(void *user, const char *message)
{
    auto *self = static_cast<PdfContext *>(user);
    ++self->m_warnings;
    self->m_complaints += std::strcmp(message, wrongLength) == 0 ? 0 : 1;
    if (self->m_warnings <= maximumWarnings) {
        self->say(std::string("warning: ") + message);
    } else if (self->m_warnings == maximumWarnings + 1) {
        self->say("warning: further warnings are left out");
    }
}

void PdfContext::say(std::string warning)
{
    if (m_areShown) {
        reportLine(m_tool, "", warning);
    } else {
        m_heldBack.push_back(std::move(warning));
    }
}

} // namespace tools
