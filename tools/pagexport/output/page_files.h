#pragma once

#include "tools/pagexport/output/output_folder.h"
#include "tools/pagexport/output/page_sink.h"

#include <string>
#include <utility>
#include <vector>

namespace tools {

/// Writes a file for every page, and its picture where there is one, and remembers what the index
/// says about it.
class PageFiles : public PageSink
{
public:
    /// @param input path of the input, for messages
    PageFiles(const OutputFolder &folder, std::string input)
        : m_folder(folder), m_input(std::move(input))
    {
    }

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
    const std::string m_input;
    int m_first = 0; ///< number in the document of the first page exported
    std::vector<Record> m_records;
};

} // namespace tools
