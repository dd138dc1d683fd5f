#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// A folder of this process for one input file and what is made of it, in memory where the system
/// has such a place; removed at exit.
class ScratchFile
{
public:
    ScratchFile();
    ~ScratchFile();
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    /// Replaces the input file's content.
    void write(const std::uint8_t *data, std::size_t size) const;
    /// The input file.
    std::string input() const { return folder + "/input.pdf"; }
    /// Path of another file in the folder.
    std::string path(const std::string &name) const { return folder + '/' + name; }
    /// Removes everything but the input file. @returns the number of files removed
    std::size_t clear() const;

private:
    std::string folder;
};

} // namespace fuzz
