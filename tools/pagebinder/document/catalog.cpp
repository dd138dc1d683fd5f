#include "tools/pagebinder/document/catalog.h"

#include "tools/pagebinder/document/conformance_claims.h"

namespace tools {

namespace {

constexpr std::size_t largestMetadata = std::size_t{4} << 20U;
constexpr std::int64_t smallProfile = 16384;

bool isPlainCatalogKey(std::string_view key)
{
    return key == "Lang" || key == "PageLayout" || key == "Extensions" || key == "URI";
}

} // namespace

void Catalog::writeEntries(bool hasBookmarks)
{
    m_copier.writePlainEntries(m_source.catalog(), isPlainCatalogKey);
    m_copier.writeEntry("OCProperties", m_source.raw(m_source.catalog(), PDF_NAME(OCProperties)),
                        Role::layer);
    m_tags.writeCatalogEntries();
    writePageMode(hasBookmarks);
    writeViewerPreferences();
    writeMetadata();
    writeOutputIntents();
}

void Catalog::writePageMode(bool hasBookmarks)
{
    fz_context *context = m_source.context();
    pdf_obj *mode = m_source.get(m_source.catalog(), PDF_NAME(PageMode));
    const std::string_view name = pdf_is_name(context, mode) ? pdf_to_name(context, mode) : "";
    const bool bookmarks = name == "UseOutlines" && hasBookmarks;
    if (bookmarks || name == "UseNone" || name == "UseThumbs" || name == "UseOC" ||
        name == "FullScreen") {
        m_copier.writeEntry("PageMode", mode, Role::plain);
    }
}

void Catalog::writeViewerPreferences()
{
    pdf_obj *value = pdf_dict_gets(m_source.context(), m_source.catalog(), "ViewerPreferences");
    pdf_obj *preferences = m_source.resolve(value);
    if (!m_source.isDictionary(preferences) ||
        m_copier.isForeign(preferences, m_source.numberOf(value), Role::plain)) {
        return;
    }
    // Ranges of pages to print are meant for the whole document.
    const KeyFilter kept = [](std::string_view key) { return key != "PrintPageRange"; };
    m_copier.writer().key("ViewerPreferences").beginDictionary();
    m_copier.writePlainEntries(preferences, kept);
    m_copier.writer().endDictionary();
}

std::string Catalog::loadMetadata(int number)
{
    std::string xmp;
    const StreamEnd end =
        m_source.readStream(number, true, [&xmp](const unsigned char *data, std::size_t size) {
            xmp.append(reinterpret_cast<const char *>(data), size);
            return xmp.size() <= largestMetadata;
        });
    return end != StreamEnd::failed && xmp.size() <= largestMetadata ? xmp : std::string();
}

/// Takes back in @p xmp what does not hold for the output. @returns whether anything had to change
bool Catalog::adaptClaims(std::string &xmp)
{
    bool isChanged = removeInvoiceClaim(xmp);
    if (claimsLevelA(xmp) && !m_tags.isWhole()) {
        isChanged = lowerLevel(xmp);
    }
    if (claimsUniversalAccess(xmp) && !m_tags.isAccessible()) {
        isChanged = removeUniversalAccess(xmp) || isChanged;
    }
    return isChanged;
}

void Catalog::writeMetadata()
{
    pdf_obj *metadata = m_source.raw(m_source.catalog(), PDF_NAME(Metadata));
    const int number = m_source.numberOf(metadata);
    if (number <= 0 || !m_source.isStream(number)) {
        return;
    }
    std::string xmp = loadMetadata(number);
    m_claimsPdfA = claimsPdfA(xmp);
    if (!adaptClaims(xmp)) {
        m_copier.writeEntry("Metadata", metadata, Role::content);
        return;
    }
    m_copier.writer().key("Metadata").appendReference(m_copier.addStream(xmp, "Metadata", "XML"));
}

bool Catalog::areSmall(pdf_obj *intents)
{
    fz_context *context = m_source.context();
    const int length = pdf_array_len(context, intents);
    std::int64_t size = 0;
    for (int i = 0; i < length; ++i) {
        pdf_obj *profile = m_source.get(m_source.at(intents, i), PDF_NAME(DestOutputProfile));
        size += pdf_to_int64(context, m_source.get(profile, PDF_NAME(Length)));
    }
    return size <= smallProfile;
}

void Catalog::writeOutputIntents()
{
    pdf_obj *intents = m_source.raw(m_source.catalog(), PDF_NAME(OutputIntents));
    if (intents == nullptr) {
        return;
    }
    // Profiles of a megabyte in every part are the price of a claim only.
    pdf_obj *information = m_source.get(m_source.trailer(), PDF_NAME(Info));
    const bool claimsPrinting = m_source.get(information, "GTS_PDFXVersion") != nullptr;
    if (m_claimsPdfA || claimsPrinting || areSmall(m_source.resolve(intents))) {
        m_copier.writeEntry("OutputIntents", intents, Role::outputIntent);
    }
}

int Catalog::writeInformation()
{
    fz_context *context = m_source.context();
    pdf_obj *information = m_source.get(m_source.trailer(), PDF_NAME(Info));
    const int length = pdf_dict_len(context, information);
    if (length == 0) {
        return 0;
    }
    const int target = m_copier.writer().allocate();
    m_copier.writer().beginDictionaryObject(target);
    for (int i = 0; i < length; ++i) {
        pdf_obj *value = m_source.resolve(pdf_dict_get_val(context, information, i));
        if (value != nullptr && !m_source.isArray(value) && !m_source.isDictionary(value)) {
            m_copier.writeEntry(pdf_to_name(context, pdf_dict_get_key(context, information, i)),
                                value, Role::plain);
        }
    }
    m_copier.writer().endDictionaryObject();
    return target;
}

} // namespace tools
