#pragma once

#include "tools/pagebinder/copying/object_copier.h"

#include <string>
#include <string_view>

namespace tools {

/// Keeps the encryption of a document whose owner forbids copying: every part then opens without a
/// password, as the whole did, and is bound by the same permissions. Documents that may be copied
/// are written without encryption.
class OutputEncryption : public ObjectCipher
{
public:
    explicit OutputEncryption(PdfSource &source) : m_source(source) {}

    /// Whether the output has to be encrypted.
    bool isNeeded();

    /// Whether the document's way of encryption can be kept.
    bool isPossible();

    /// Whether the document's metadata stay readable.
    bool leavesMetadata();

    std::string encrypt(int object, std::string_view bytes) override;

    /// Writes the encryption dictionary. @returns its number
    int write(ObjectCopier &copier);

private:
    pdf_obj *dictionary();
    void writeKeys(PdfWriter &writer);

    PdfSource &m_source;
};

} // namespace tools
