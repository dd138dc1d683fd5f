#pragma once

#include <mupdf/fitz.h>

namespace tools {

/// Keeps the library's messages back for its lifetime: where they matter the library reads the
/// same once more and says them then.
class QuietLibrary
{
public:
    explicit QuietLibrary(fz_context *context)
        : m_context(context), m_warn(fz_warning_callback(context, &m_warnUser)),
          m_error(fz_error_callback(context, &m_errorUser))
    {
        fz_flush_warnings(m_context);
        fz_set_warning_callback(
            context, [](void *, const char *) {}, nullptr);
        fz_set_error_callback(
            context, [](void *, const char *) {}, nullptr);
    }
    ~QuietLibrary()
    {
        fz_flush_warnings(m_context);
        fz_set_warning_callback(m_context, m_warn, m_warnUser);
        fz_set_error_callback(m_context, m_error, m_errorUser);
    }
    QuietLibrary(const QuietLibrary &) = delete;
    QuietLibrary &operator=(const QuietLibrary &) = delete;

private:
    fz_context *m_context;
    void *m_warnUser = nullptr;
    void *m_errorUser = nullptr;
    fz_warning_cb *m_warn;
    fz_error_cb *m_error;
};

} // namespace tools
