#include "encrypted_pdf.h"

#include <QFile>

#include <mupdf/pdf.h>

namespace {

int methodOf(Encryption::Method method)
{
    switch (method) {
    case Encryption::Method::Rc4:
        return PDF_ENCRYPT_RC4_128;
    case Encryption::Method::Aes128:
        return PDF_ENCRYPT_AES_128;
    case Encryption::Method::Aes256:
        break;
    }
    return PDF_ENCRYPT_AES_256;
}

} // namespace

bool writeEncrypted(const std::string &source, const QString &target, const Encryption &encryption)
{
    fz_context *context = fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT);
    const QByteArray path = QFile::encodeName(target);
    pdf_write_options options = pdf_default_write_options;
    options.do_encrypt = methodOf(encryption.method);
    options.permissions = encryption.mayBeCopied ? ~0 : ~PDF_PERM_COPY;
    qstrncpy(options.upwd_utf8, encryption.user.c_str(), sizeof options.upwd_utf8);
    qstrncpy(options.opwd_utf8, encryption.owner.c_str(), sizeof options.opwd_utf8);
    fz_stream *stream = nullptr;
    pdf_document *document = nullptr;
    bool isWritten = true;
    fz_var(stream);
    fz_var(document);
    fz_try(context)
    {
        stream = fz_open_memory(context, reinterpret_cast<const unsigned char *>(source.data()),
                                source.size());
        document = pdf_open_document_with_stream(context, stream);
        pdf_save_document(context, document, path.constData(), &options);
    }
    fz_always(context)
    {
        pdf_drop_document(context, document);
        fz_drop_stream(context, stream);
    }
    fz_catch(context)
    {
        isWritten = false;
    }
    fz_drop_context(context);
    return isWritten;
}
