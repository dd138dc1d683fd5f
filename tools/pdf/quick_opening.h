#pragma once

#include "tools/pdf/xref_table.h"

#include <mupdf/pdf.h>

#include <string>
#include <vector>

namespace tools {

/// Reads the cross-reference table of a well-formed file, and opens the file with it.
///
/// The library's own reading of the table makes up most of the time that one output of a long file
/// costs, and there are tables that it takes wrongly: those of files that list objects in a stream
/// beside the table, for readers that know streams (hybrid files, ISO 32000-1, 7.5.8.4), and those
/// that begin with object 0 and state 1. The library repairs or misses what others find there.
///
/// The library either sees the file with an empty cross-reference section appended, and then gets
/// the table that was read here; or it sees the whole table appended.
class QuickOpening : private XrefTarget
{
public:
    /// What is done about objects that the table places in streams which are none.
    enum class LostObjects {
        refused, ///< the table is left to the library, which looks for them all over the file
        left     ///< they are left out, and tables that have no such objects are refused
    };

    QuickOpening(fz_context *context, const InputFile &input,
                 LostObjects lost = LostObjects::refused);
    ~QuickOpening() override;
    QuickOpening(const QuickOpening &) = delete;
    QuickOpening &operator=(const QuickOpening &) = delete;

    /// Opens a file that is not encrypted, past the library's own reading. @returns the document,
    /// owned by the caller; null when it is none to be opened here, which says nothing about its
    /// being readable
    pdf_document *open();

    /// Opens a file whose table the library would take wrongly. @returns the document, owned by the
    /// caller, which may need a password; null for all other files
    pdf_document *openMisreadTable();

private:
    enum class State { unread, read, failed };

    bool expect(int first, int count) override;
    bool place(int number, const XrefEntry &entry) override;

    bool read();
    bool readTable();
    bool readSection(std::int64_t offset, std::int64_t &previous);
    bool readClassicSection(std::int64_t offset, std::int64_t &previous);
    bool readHiddenObjects(pdf_obj *offset);
    pdf_obj *parseTrailer(const std::string &text);
    bool takeTrailer(pdf_obj *trailer, std::int64_t &previous);
    bool hasWholeTable() const;
    bool hasLost() const;
    void leaveLost();
    bool isLost(const pdf_xref_entry &entry) const;
    pdf_document *openWithUpdate(const std::string &update);
    bool giveTable();
    std::string tableAsUpdate();
    std::string trailerEntries();
    void closeHost();

    fz_context *m_context;
    FileWindow m_file;
    LostObjects m_lost;
    State m_state = State::unread;
    pdf_document *m_host = nullptr;      ///< shows the file with an empty table
    pdf_xref_entry *m_entries = nullptr; ///< allocated by the library, which takes them over
    int m_count = 0;
    int m_stated = 0; ///< objects that the newest trailer promises
    pdf_obj *m_trailer = nullptr;
    std::vector<int> m_freed; ///< objects that the section being read calls free
    bool m_isReadingHidden = false;
    bool m_isMisread = false; ///< by the library
};

} // namespace tools
