#pragma once

#include "tools/pagexport/output/output_folder.h"
#include "tools/pagexport/output/page_sink.h"

#include <vector>

namespace tools {

/// Writes a file for every page, and its picture where there is one, and remembers what the index
/// says about it.
class PageFiles : public PageSink
{
public:
    explicit PageFiles(const OutputFolder &folder) : m_folder(folder) {}

    void begin(int first, int count) override;
    void take(const ExportedPage &page) override;

    /// The index file's content, once all pages are there.
    std::string index() const;

private:
    struct Record
    {
        int width = 0; ///< in units
        int height = 0;
        int items = 0;
        bool hasPicture = false;
        bool isComplete = true;
    };

    const OutputFolder &m_folder;
    int m_first = 0; ///< number in the document of the first page exported
    std::vector<Record> m_records;
};

} // namespace tools
