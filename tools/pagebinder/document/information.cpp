#include "tools/pagebinder/document/information.h"

#include "tools/common/printable.h"
#include "tools/pagebinder/output/output.h"
#include "tools/pdf/page_tree.h"

#include <array>
#include <cstdio>

namespace tools {

namespace {

constexpr std::size_t longestValue = 1000;

void appendLine(std::string &text, const char *name, const std::string &value)
{
    if (!value.empty()) {
        text += name;
        text += ": ";
        text += value;
        text += '\n';
    }
}

void appendTexts(std::string &text, PdfSource &source)
{
    pdf_obj *information = source.get(source.trailer(), PDF_NAME(Info));
    for (const char *key : {"Title", "Author", "Subject", "Keywords", "Creator", "Producer",
                            "CreationDate", "ModDate"}) {
        appendLine(text, key, cleanValue(source.text(source.get(information, key))));
    }
}

void appendPageSize(std::string &text, PdfSource &source, PageTree &tree)
{
    const FoundPage first = tree.find(1);
    if (first.page == nullptr) {
        return;
    }
    pdf_obj *box = source.resolve(tree.inherited(first, PDF_NAME(CropBox)));
    if (!source.isArray(box)) {
        box = source.resolve(tree.inherited(first, PDF_NAME(MediaBox)));
    }
    std::array<float, 4> sides{};
    for (int i = 0; i < 4; ++i) {
        sides[static_cast<std::size_t>(i)] = pdf_to_real(source.context(), source.at(box, i));
    }
    const double width = sides[2] < sides[0] ? sides[0] - sides[2] : sides[2] - sides[0];
    const double height = sides[3] < sides[1] ? sides[1] - sides[3] : sides[3] - sides[1];
    const int rotation =
        pdf_to_int(source.context(), source.resolve(tree.inherited(first, PDF_NAME(Rotate))));
    const bool turned = rotation % 180 != 0;
    std::array<char, 64> line{};
    std::snprintf(line.data(), line.size(), "%.2f x %.2f pt", turned ? height : width,
                  turned ? width : height);
    appendLine(text, "PageSize", line.data());
}

const char *yesOrNo(bool value)
{
    return value ? "yes" : "no";
}

void appendNature(std::string &text, PdfSource &source)
{
    int version = 0;
    source.attempt(
        [&source, &version] { version = pdf_version(source.context(), source.document()); });
    appendLine(text, "PDFVersion",
               std::to_string(version / 10) + '.' + std::to_string(version % 10));
    pdf_document *document = source.document();
    appendLine(text, "Encrypted", yesOrNo(document->crypt != nullptr));
    appendLine(text, "CopyingAllowed",
               yesOrNo(pdf_has_permission(source.context(), document, FZ_PERMISSION_COPY) != 0));
    appendLine(text, "Repaired", yesOrNo(document->repair_attempted != 0));
    pdf_obj *catalog = source.catalog();
    appendLine(
        text, "Form",
        yesOrNo(pdf_array_len(source.context(), source.get(source.get(catalog, PDF_NAME(AcroForm)),
                                                           PDF_NAME(Fields))) > 0));
    appendLine(text, "Tagged", yesOrNo(source.isDictionary(source.get(catalog, "StructTreeRoot"))));
}

} // namespace

std::string cleanValue(const std::string &value)
{
    std::string cleaned;
    for (std::string_view rest = value; !rest.empty();) {
        const LeadingCharacter character = leadingCharacter(rest);
        cleaned += character.canBeShown ? rest.substr(0, character.bytes) : " ";
        rest.remove_prefix(character.bytes);
    }
    if (cleaned.size() > longestValue) {
        std::size_t length = longestValue;
        while (length > 0 && (static_cast<unsigned char>(cleaned[length]) & 0xc0U) == 0x80U) {
            --length;
        }
        cleaned.resize(length);
    }
    return cleaned;
}

std::string describeDocument(SourceFile &file)
{
    return readRepairing(file, [&file] {
        PdfSource source(file);
        PageTree tree(source);
        const int pages = tree.pageCount();
        if (pages <= 0) {
            throw ToolError(file.path(), "has no pages");
        }
        std::string text;
        appendLine(text, "NumberOfPages", std::to_string(pages));
        appendTexts(text, source);
        appendPageSize(text, source, tree);
        appendNature(text, source);
        return text;
    });
}

void writeInformation(SourceFile &file, const OutputPlace &output)
{
    const std::string text = describeDocument(file);
    const std::unique_ptr<Output> destination = openOutput(output);
    destination->write(text.data(), text.size());
    destination->complete();
    file.input().checkUnchanged();
    destination->publish();
}

} // namespace tools
