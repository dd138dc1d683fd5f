#pragma once

#include "tools/pagebinder/opening/xref_table.h"

#include <mupdf/pdf.h>

#include <string>
#include <vector>

namespace tools {

/// Opens a well-formed file without the library's own reading of the cross-reference table and of
/// the root's list of pages, which make up most of the time that one output of a long file costs.
///
/// The library is shown the file with a cross-reference section of no objects behind its end, and
/// is then given the table that was read here. Encrypted files, files with tables of both kinds in
/// one section, and all that are not exactly as the standard wants them, are left to the library.
class QuickOpening : private XrefTarget
{
public:
    QuickOpening(fz_context *context, const InputFile &input);
    ~QuickOpening() override;
    QuickOpening(const QuickOpening &) = delete;
    QuickOpening &operator=(const QuickOpening &) = delete;

    /// Opens the file. @returns the document, owned by the caller; null when it is none to be
    /// opened here, which says nothing about its being readable
    pdf_document *open();

    /// Reads the /Kids of the root of the page tree of the document that open() returned, and puts
    /// the root into it with empty /Kids.
    /// @returns the root; null when its /Kids are left to the library
    pdf_obj *readKids(std::vector<int> &kids);

private:
    bool expect(int first, int count) override;
    bool place(int number, const XrefEntry &entry) override;

    bool readTable();
    bool readSection(std::int64_t offset, std::int64_t &previous);
    bool readTrailer(const std::string &text, std::int64_t &previous);
    bool takeTrailer(pdf_obj *trailer, std::int64_t &previous);
    bool hasWholeTable() const;
    void openDocument();
    bool setTable();
    std::int64_t rootOffset();
    bool readReferences(std::int64_t position, std::vector<int> &kids, std::int64_t &end);
    pdf_obj *parseRoot(const std::string &text);

    fz_context *m_context;
    FileWindow m_file;
    pdf_document *m_document = nullptr;
    pdf_xref_entry *m_entries = nullptr; ///< allocated by the library, which takes them over
    int m_count = 0;
    int m_stated = 0; ///< objects that the newest trailer promises
    pdf_obj *m_trailer = nullptr;
    int m_root = 0; ///< object number of the page tree's root
};

} // namespace tools
