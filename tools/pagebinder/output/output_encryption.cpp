#include "tools/pagebinder/output/output_encryption.h"

#include "tools/common/tool_error.h"
#include "tools/pdf/password.h"

#include <new>

namespace tools {

namespace {

/// Bytes that an encryption adds at most: its first block and its filled-up last one.
constexpr std::size_t longestPadding = 64;

void appendBytes(fz_context *, void *text, const unsigned char *data, std::size_t size)
{
    // Room has been made before, so nothing is thrown through the library's frames.
    static_cast<std::string *>(text)->append(reinterpret_cast<const char *>(data), size);
}

bool isPlainEncryptionKey(std::string_view key)
{
    return key != "O" && key != "U" && key != "OE" && key != "UE" && key != "Perms";
}

void writeBytes(PdfWriter &writer, std::string_view name, const unsigned char *bytes,
                std::size_t size)
{
    writer.key(name).appendString({reinterpret_cast<const char *>(bytes), size});
}

} // namespace

pdf_obj *OutputEncryption::dictionary()
{
    return m_source.get(m_source.trailer(), PDF_NAME(Encrypt));
}

bool OutputEncryption::isNeeded()
{
    return pdf_has_permission(m_source.context(), m_source.document(), FZ_PERMISSION_COPY) == 0;
}

bool OutputEncryption::isPossible()
{
    fz_context *context = m_source.context();
    pdf_obj *encryption = dictionary();
    if (!m_source.isDictionary(encryption)) {
        return false; // a repair has not found it again
    }
    if (pdf_to_int(context, m_source.get(encryption, PDF_NAME(V))) < 4) {
        return true;
    }
    pdf_obj *strings = m_source.get(encryption, PDF_NAME(StrF));
    pdf_obj *streams = m_source.get(encryption, PDF_NAME(StmF));
    return pdf_is_name(context, strings) != 0 && pdf_name_eq(context, strings, streams) != 0 &&
           !m_source.isName(strings, PDF_NAME(Identity));
}

bool OutputEncryption::leavesMetadata()
{
    pdf_obj *encrypted = m_source.get(dictionary(), PDF_NAME(EncryptMetadata));
    return pdf_is_bool(m_source.context(), encrypted) != 0 &&
           pdf_to_bool(m_source.context(), encrypted) == 0;
}

std::string OutputEncryption::encrypt(int object, std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size() + longestPadding);
    const auto *data = reinterpret_cast<const unsigned char *>(bytes.data());
    const std::size_t size = bytes.size();
    if (!m_source.attempt([this, object, data, size, &text] {
            pdf_encrypt_data(m_source.context(), m_source.document()->crypt, object, 0, appendBytes,
                             &text, data, size);
        })) {
        throw ToolError("", "the output cannot be encrypted");
    }
    return text;
}

void OutputEncryption::writeKeys(PdfWriter &writer)
{
    // Not from the dictionary: after a repair the library reads it again, and decrypts its strings.
    fz_context *context = m_source.context();
    pdf_crypt *crypt = m_source.document()->crypt;
    const bool isLong = pdf_crypt_revision(context, crypt) >= 5;
    writeBytes(writer, "O", pdf_crypt_owner_password(context, crypt), isLong ? 48 : 32);
    writeBytes(writer, "U", pdf_crypt_user_password(context, crypt), isLong ? 48 : 32);
    if (isLong) {
        writeBytes(writer, "OE", pdf_crypt_owner_encryption(context, crypt), 32);
        writeBytes(writer, "UE", pdf_crypt_user_encryption(context, crypt), 32);
        // The library knows it of encryptions that it makes itself only.
        writer.key("Perms").appendString(encryptionString(m_source, "Perms"));
    }
}

int OutputEncryption::write(ObjectCopier &copier)
{
    PdfWriter &writer = copier.writer();
    const int target = writer.allocate();
    writer.beginObject(target, true);
    writer.beginDictionary();
    copier.writeEntries(dictionary(), Role::encryption, isPlainEncryptionKey);
    writeKeys(writer);
    writer.endDictionaryObject();
    return target;
}

} // namespace tools
