#include "tools/pagebinder/split.h"

#include "tools/common/report.h"
#include "tools/common/standard_output.h"

#include <new>

namespace tools {

namespace {

constexpr char lowerHexDigits[] = "0123456789abcdef";

void appendHexadecimal(std::string &text, std::string_view bytes)
{
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += "\\x";
        text += lowerHexDigits[byte >> 4U];
        text += lowerHexDigits[byte & 15U];
    }
}

/// Writes one output after another.
class Split
{
public:
    Split(SourceFile &file, const OutputPlaces &places)
        : m_file(file), m_places(places), m_merger(file)
    {
    }

    void write(std::size_t index, const SplitEntry &entry);
    void finish();
    ExitStatus status() const noexcept { return m_status; }

private:
    void merge(std::size_t index, const SplitEntry &entry);
    void fail(std::size_t index, const ToolError &error);

    SourceFile &m_file;
    const OutputPlaces &m_places;
    PageMerger m_merger;
    ExitStatus m_status = exitSuccess;
    std::string m_change; ///< how the input was found to have changed; empty as long as it has not
};

void Split::write(std::size_t index, const SplitEntry &entry)
{
    if (!m_change.empty()) {
        writeStandardOutput(failedLine(index, m_change));
        return;
    }
    try {
        merge(index, entry);
    } catch (const InputChanged &error) {
        m_change = error.what();
        fail(index, error);
    } catch (const ToolError &error) {
        fail(index, error);
    } catch (const std::bad_alloc &) {
        fail(index, ToolError(m_file.path(), "needs too much memory"));
    }
}

void Split::merge(std::size_t index, const SplitEntry &entry)
{
    const std::unique_ptr<Output> output = openOutput(m_places.at(index - 1));
    const MergeResult result = m_merger.merge(entry.ranges, *output);
    if (!result.standIns.empty() && m_status == exitSuccess) {
        m_status = exitStandIns;
    }
    writeStandardOutput(doneLine(index, result, output->path()));
}

void Split::fail(std::size_t index, const ToolError &error)
{
    m_status = exitInputError;
    reportError("pagebinder", error);
    writeStandardOutput(failedLine(index, error.what()));
}

void Split::finish()
{
    if (!m_change.empty()) {
        writeStandardOutput("changed\n");
    }
}

} // namespace

std::string escapedPath(std::string_view path)
{
    std::string escaped;
    while (!path.empty()) {
        const LeadingCharacter character = leadingCharacter(path);
        const std::string_view bytes = path.substr(0, character.bytes);
        if (bytes == "\\") {
            escaped += "\\\\";
        } else if (character.canBeShown) {
            escaped += bytes;
        } else {
            appendHexadecimal(escaped, bytes);
        }
        path.remove_prefix(character.bytes);
    }
    return escaped;
}

std::string doneLine(std::size_t index, const MergeResult &result, std::string_view path)
{
    std::string line = result.standIns.empty() ? "done\t" : "standin\t";
    line += std::to_string(index);
    line += '\t';
    line += std::to_string(result.bytes);
    char before = '\t';
    for (const int page : result.standIns) {
        line += before;
        line += std::to_string(page);
        before = ' ';
    }
    line += '\t';
    line += escapedPath(path);
    line += '\n';
    return line;
}

std::string failedLine(std::size_t index, std::string_view reason)
{
    return "failed\t" + std::to_string(index) + '\t' + printable(reason) + '\n';
}

ExitStatus splitPages(SourceFile &file, const std::vector<SplitEntry> &entries,
                      const OutputPlaces &places)
{
    Split split(file, places);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        split.write(i + 1, entries[i]);
    }
    split.finish();
    return split.status();
}

} // namespace tools
