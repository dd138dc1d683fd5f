#include "locked_pdf.h"

#include "tests/support/pdf_builder.h"

#include <QCryptographicHash>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace {

QByteArray md5(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Md5);
}

/// RC4, whose encryption is its decryption.
QByteArray rc4(const QByteArray &key, QByteArray bytes)
{
    std::array<unsigned char, 256> state{};
    std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
    unsigned char j = 0;
    for (int i = 0; i < 256; ++i) {
        const auto place = static_cast<std::size_t>(i);
        j = static_cast<unsigned char>(j + state[place] +
                                       static_cast<unsigned char>(key[i % key.size()]));
        std::swap(state[place], state[j]);
    }
    unsigned char i = 0;
    j = 0;
    for (char &byte : bytes) {
        ++i;
        j = static_cast<unsigned char>(j + state[i]);
        std::swap(state[i], state[j]);
        const auto mixed = static_cast<unsigned char>(state[i] + state[j]);
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ state[mixed]);
    }
    return bytes;
}

/// The nineteen further rounds of revision 3.
QByteArray furtherRounds(const QByteArray &key, QByteArray bytes)
{
    for (char round = 1; round < 20; ++round) {
        QByteArray changed = key;
        for (char &byte : changed) {
            byte = static_cast<char>(byte ^ round);
        }
        bytes = rc4(changed, bytes);
    }
    return bytes;
}

QByteArray littleEndian(int number, int bytes)
{
    QByteArray result;
    for (int i = 0; i < bytes; ++i) {
        result +=
            static_cast<char>(static_cast<unsigned>(number) >> (8U * static_cast<unsigned>(i)));
    }
    return result;
}

const QByteArray identifier = "0123456789abcdef";

/// The values of an encryption dictionary, by the rules of ISO 32000-1, 7.6.3.
class Handler
{
public:
    explicit Handler(const Lock &lock) : m_lock(lock), m_length(lock.revision == 2 ? 5 : 16)
    {
        const QByteArray padding =
            QByteArray::fromHex("28bf4e5e4e758a4164004e56fffa01082e2e00b6d0683e802f0ca9fe6453697a");
        const QByteArray ownerKey = digest((lock.owner + padding).left(32));
        const QByteArray user = (lock.user + padding).left(32);
        const bool isOld = lock.revision == 2;
        m_o = isOld ? rc4(ownerKey, user) : furtherRounds(ownerKey, rc4(ownerKey, user));
        m_key = digest(user + m_o + littleEndian(lock.permissions, 4) + identifier +
                       (lock.encryptsMetadata ? QByteArray() : QByteArray(4, '\xff')));
        m_u = isOld ? rc4(m_key, padding)
                    : furtherRounds(m_key, rc4(m_key, md5(padding + identifier))) +
                          QByteArray(16, '\0');
    }

    /// @p bytes as object @p number holds them.
    std::string encrypted(int number, const QByteArray &bytes) const
    {
        const QByteArray key = md5(m_key + littleEndian(number, 3) + littleEndian(0, 2));
        return rc4(key.left(std::min(m_length + 5, 16)), bytes).toStdString();
    }

    std::string dictionary() const
    {
        QByteArray entries = "/Filter/Standard/V " + QByteArray::number(version()) + "/R " +
                             QByteArray::number(m_lock.revision) + "/Length " +
                             QByteArray::number(8 * m_length) + "/P " +
                             QByteArray::number(m_lock.permissions) + "/O<" + m_o.toHex() + ">/U<" +
                             m_u.toHex() + ">";
        if (m_lock.revision == 4) {
            entries += "/CF<</StdCF<</CFM/V2/AuthEvent/DocOpen/Length 16>>>>/StmF/" +
                       m_lock.streams + "/StrF/" + m_lock.strings + "/EncryptMetadata " +
                       (m_lock.encryptsMetadata ? "true" : "false");
        }
        return "/Encrypt<<" + entries.toStdString() + ">>/ID[<" + identifier.toHex().toStdString() +
               "><" + identifier.toHex().toStdString() + ">]";
    }

private:
    int version() const { return m_lock.revision == 4 ? 4 : m_lock.revision - 1; }
    QByteArray digest(const QByteArray &bytes) const
    {
        QByteArray result = md5(bytes);
        for (int i = 0; m_lock.revision > 2 && i < 50; ++i) {
            result = md5(result.left(m_length));
        }
        return result.left(m_length);
    }

    Lock m_lock;
    int m_length;
    QByteArray m_o;
    QByteArray m_key;
    QByteArray m_u;
};

} // namespace

std::string lockedFile(const Lock &lock, const QByteArray &comment)
{
    constexpr int content = 6;
    constexpr int metadata = 8;
    constexpr int information = 9;
    const Handler handler(lock);
    const auto stream = [&](int number, const QByteArray &bytes) {
        return lock.streams == "StdCF" ? handler.encrypted(number, bytes) : bytes.toStdString();
    };
    quorlin::test::PdfBuilder pdf;
    const int page =
        pdf.addPage(stream(content, comment + "BT /F1 12 Tf 72 700 Td (Secret) Tj ET"));
    if (lock.hasMissingPage) {
        pdf.setPageTree("<</Type/Pages/Kids[" + std::to_string(page) + " 0 R 99 0 R]/Count 2>>");
    }
    const QByteArray packet = "<x>Hidden metadata</x>";
    pdf.addStream("/Type/Metadata/Subtype/XML",
                  lock.encryptsMetadata ? stream(metadata, packet) : packet.toStdString());
    const QByteArray title = "Hidden title";
    const QByteArray text = QByteArray::fromStdString(
        lock.strings == "StdCF" ? handler.encrypted(information, title) : title.toStdString());
    pdf.add("<</Title<" + text.toHex().toStdString() + ">>>");
    pdf.setCatalogEntries("/Metadata " + std::to_string(metadata) + " 0 R");
    std::string file = pdf.build();
    const std::string root = "/Root 1 0 R";
    return file.replace(file.rfind(root), root.size(),
                        root + "/Info " + std::to_string(information) + " 0 R" +
                            handler.dictionary());
}
