#pragma once

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace quorlin::test {

inline std::string reference(int object)
{
    return std::to_string(object) + " 0 R";
}

/// What a page has besides its content, as entries of its dictionary.
struct PdfPage
{
    std::string mediaBox = "[0 0 595 842]";
    std::string entries = {};   ///< "/Rotate 90 /Annots[9 0 R]"
    std::string resources = {}; ///< "/XObject<</X 9 0 R>>"; fonts go into "fonts"
    std::string fonts = {};     ///< "/F9 9 0 R"
};

/// Writes small PDF files for tests: objects as text, the cross-reference table right. Object 1 is
/// the catalogue, object 2 the page tree, 3, 4 and 5 are the fonts F1 (Helvetica), F2 (Helvetica
/// bold) and F3 (Courier), which every page has.
class PdfBuilder
{
public:
    using Page = PdfPage;

    PdfBuilder()
    {
        m_objects.resize(2);
        for (const char *font : {"Helvetica", "Helvetica-Bold", "Courier"}) {
            add(std::string("<</Type/Font/Subtype/Type1/Encoding/WinAnsiEncoding/BaseFont/") +
                font + ">>");
        }
    }

    /// Adds an object and gives its number.
    int add(std::string object)
    {
        m_objects.push_back(std::move(object));
        return static_cast<int>(m_objects.size());
    }
    int addStream(const std::string &entries, const std::string &data)
    {
        return add("<<" + entries + "/Length " + std::to_string(data.size()) + ">>stream\n" + data +
                   "\nendstream");
    }
    /// Adds a page with @p content and gives its object number.
    int addPage(const std::string &content, const Page &page = {})
    {
        return addPageWithContents(addStream({}, content), page);
    }
    int addPageWithContents(int contents, const Page &page = {})
    {
        const int number =
            add("<</Type/Page/Parent 2 0 R/MediaBox" + page.mediaBox + "/Resources<</Font<<" +
                "/F1 3 0 R/F2 4 0 R/F3 5 0 R" + page.fonts + ">>" + page.resources +
                ">>/Contents " + std::to_string(contents) + " 0 R" + page.entries + ">>");
        m_pages.push_back(number);
        return number;
    }
    /// Replaces an object that was added, for objects that refer to each other.
    void set(int number, std::string object)
    {
        m_objects[static_cast<std::size_t>(number) - 1] = std::move(object);
    }
    /// Further entries of the catalogue: "/AcroForm<<...>>".
    void setCatalogEntries(std::string entries) { m_catalogEntries = std::move(entries); }
    /// The page tree's object as it stands, in place of one made from the pages.
    void setPageTree(std::string object) { m_pageTree = std::move(object); }

    std::string build() const
    {
        std::vector<std::string> objects = m_objects;
        objects[0] = "<</Type/Catalog/Pages 2 0 R" + m_catalogEntries + ">>";
        objects[1] = m_pageTree.empty() ? pageTree() : m_pageTree;
        std::string file = "%PDF-1.7\n";
        std::string table = "0000000000 65535 f \n";
        int number = 0;
        for (const std::string &object : objects) {
            char entry[32];
            std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", file.size());
            table += entry;
            file += std::to_string(++number) + " 0 obj\n" + object + "\nendobj\n";
        }
        const std::string size = std::to_string(objects.size() + 1);
        const std::size_t start = file.size();
        file += "xref\n0 " + size + "\n" + table + "trailer\n<</Size " + size +
                "/Root 1 0 R>>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
        return file;
    }
    /// Writes the file; false when that fails.
    bool save(const std::string &path) const
    {
        std::FILE *file = std::fopen(path.c_str(), "wb");
        if (file == nullptr) {
            return false;
        }
        const std::string bytes = build();
        const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
        return std::fclose(file) == 0 && written;
    }

private:
    std::string pageTree() const
    {
        std::string kids;
        for (const int page : m_pages) {
            kids += std::to_string(page) + " 0 R ";
        }
        return "<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(m_pages.size()) + ">>";
    }

    std::vector<std::string> m_objects;
    std::vector<int> m_pages;
    std::string m_catalogEntries;
    std::string m_pageTree;
};

} // namespace quorlin::test
