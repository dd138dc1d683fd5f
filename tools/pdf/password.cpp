#include "tools/pdf/password.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tools {

namespace {

constexpr std::size_t blockLength = 16;
constexpr int longestKey = 16; // of the old encryptions, in bytes
constexpr int lastRound = 19;

using Block = std::array<unsigned char, blockLength>;

/// What fills a short password up (ISO 32000-1, 7.6.3.3).
constexpr std::array<unsigned char, 32> padding = {
    0x28, 0xbf, 0x4e, 0x5e, 0x4e, 0x75, 0x8a, 0x41, 0x64, 0x00, 0x4e, 0x56, 0xff, 0xfa, 0x01, 0x08,
    0x2e, 0x2e, 0x00, 0xb6, 0xd0, 0x68, 0x3e, 0x80, 0x2f, 0x0c, 0xa9, 0xfe, 0x64, 0x53, 0x69, 0x7a};

/// Whether the key that the library has found decrypts the permissions (ISO 32000-2, 7.6.4.4.10).
bool decryptsPermissions(PdfSource &source, pdf_crypt *crypt)
{
    const std::string permissions = encryptionString(source, "Perms");
    fz_aes aes;
    if (permissions.size() < blockLength ||
        fz_aes_setkey_dec(&aes, pdf_crypt_key(source.context(), crypt), 256) != 0) {
        return false;
    }
    Block start{};
    Block plain{};
    fz_aes_crypt_cbc(&aes, FZ_AES_DECRYPT, plain.size(), start.data(),
                     reinterpret_cast<const unsigned char *>(permissions.data()), plain.data());
    const auto stated = static_cast<std::uint32_t>(pdf_crypt_permissions(source.context(), crypt));
    bool isSame = std::memcmp(plain.data() + 9, "adb", 3) == 0;
    for (unsigned i = 0; i < 4; ++i) {
        isSame = isSame && plain[i] == (stated >> 8U * i & 0xffU);
    }
    return isSame;
}

/// Whether the key that the library has found makes the file's check of the user's password (ISO
/// 32000-1, 7.6.3.4).
bool makesUserCheck(fz_context *context, pdf_crypt *crypt, const std::string &identifier)
{
    const int length = std::clamp(pdf_crypt_length(context, crypt) / 8, 0, longestKey);
    const unsigned char *key = pdf_crypt_key(context, crypt);
    const unsigned char *check = pdf_crypt_user_password(context, crypt);
    fz_arc4 cipher;
    if (pdf_crypt_revision(context, crypt) == 2) {
        std::array<unsigned char, padding.size()> made{};
        fz_arc4_init(&cipher, key, static_cast<std::size_t>(length));
        fz_arc4_encrypt(&cipher, made.data(), padding.data(), padding.size());
        return std::memcmp(made.data(), check, made.size()) == 0;
    }
    Block made{};
    fz_md5 digest;
    fz_md5_init(&digest);
    fz_md5_update(&digest, padding.data(), padding.size());
    fz_md5_update(&digest, reinterpret_cast<const unsigned char *>(identifier.data()),
                  identifier.size());
    fz_md5_final(&digest, made.data());
    for (int round = 0; round <= lastRound; ++round) {
        std::array<unsigned char, longestKey> changed{};
        for (int i = 0; i < length; ++i) {
            changed[static_cast<std::size_t>(i)] =
                static_cast<unsigned char>(key[i] ^ static_cast<unsigned>(round));
        }
        fz_arc4_init(&cipher, changed.data(), static_cast<std::size_t>(length));
        fz_arc4_encrypt(&cipher, made.data(), made.data(), made.size());
    }
    return std::memcmp(made.data(), check, made.size()) == 0;
}

/// The library refuses an empty password that is the owner's alone, but has made its key then.
bool hasKey(PdfSource &source, pdf_crypt *crypt)
{
    fz_context *context = source.context();
    if (pdf_crypt_revision(context, crypt) >= 5) {
        return decryptsPermissions(source, crypt);
    }
    const std::string identifier =
        PdfSource::bytes(context, source.at(source.get(source.trailer(), PDF_NAME(ID)), 0));
    return makesUserCheck(context, crypt, identifier);
}

/// Whether streams and strings are left as they are.
bool encryptsAttachmentsOnly(PdfSource &source)
{
    pdf_obj *encryption = source.get(source.trailer(), PDF_NAME(Encrypt));
    const auto isLeft = [&source, encryption](pdf_obj *key) {
        pdf_obj *filter = source.get(encryption, key);
        return filter == nullptr || source.isName(filter, PDF_NAME(Identity));
    };
    return source.integer(source.get(encryption, PDF_NAME(V))) >= 4 && isLeft(PDF_NAME(StmF)) &&
           isLeft(PDF_NAME(StrF));
}

} // namespace

std::string encryptionString(PdfSource &source, const char *key)
{
    fz_context *context = source.context();
    pdf_obj *dictionary = source.raw(source.trailer(), PDF_NAME(Encrypt));
    pdf_obj *loaded = nullptr;
    if (pdf_is_indirect(context, dictionary) != 0) {
        static_cast<void>(source.attempt([&source, context, dictionary, &loaded] {
            loaded = pdf_load_unencrypted_object(context, source.file().document(),
                                                 pdf_to_num(context, dictionary));
        }));
        dictionary = loaded;
    }
    std::string bytes =
        PdfSource::bytes(context, source.resolve(pdf_dict_gets(context, dictionary, key)));
    pdf_drop_obj(context, loaded);
    return bytes;
}

bool opensWithoutPassword(PdfSource &source)
{
    pdf_document *document = source.file().document();
    return pdf_needs_password(source.context(), document) == 0 || encryptsAttachmentsOnly(source) ||
           hasKey(source, cryptOf(document));
}

bool opensWith(PdfSource &source, const std::string &password)
{
    bool opens = false;
    const char *text = password.c_str();
    static_cast<void>(source.attempt([&source, text, &opens] {
        opens = pdf_authenticate_password(source.context(), source.file().document(), text) != 0;
    }));
    return opens;
}

} // namespace tools
