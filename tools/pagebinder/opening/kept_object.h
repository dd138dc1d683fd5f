#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <utility>

namespace tools {

/// Keeps an object of a document alive when the document itself lets go of it.
class KeptObject
{
public:
    KeptObject() = default;
    KeptObject(fz_context *context, pdf_obj *object)
        : m_context(context), m_object(pdf_keep_obj(context, object))
    {
    }
    KeptObject(KeptObject &&other) noexcept
        : m_context(other.m_context), m_object(std::exchange(other.m_object, nullptr))
    {
    }
    KeptObject &operator=(KeptObject &&other) noexcept
    {
        std::swap(m_context, other.m_context);
        std::swap(m_object, other.m_object);
        return *this;
    }
    KeptObject(const KeptObject &) = delete;
    KeptObject &operator=(const KeptObject &) = delete;
    ~KeptObject()
    {
        if (m_object != nullptr) {
            pdf_drop_obj(m_context, m_object);
        }
    }

    pdf_obj *get() const noexcept { return m_object; }

private:
    fz_context *m_context = nullptr;
    pdf_obj *m_object = nullptr;
};

} // namespace tools
