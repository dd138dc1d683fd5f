#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tools {

/// Where an object begins in a file.
struct ObjectHeader
{
    std::int64_t offset = 0; ///< of its number
    int generation = 0;
};

/// Finds everything in a file that begins an object, "NUMBER GENERATION obj", whatever stands
/// around it. Of objects with the same number the last one counts, as it does when a file without a
/// usable cross-reference table is read.
class ObjectHeaderScan
{
public:
    /// @param count numbers from this one on are no object's
    explicit ObjectHeaderScan(int count) : m_count(count) {}

    /// Takes the next bytes of the file.
    void feed(std::string_view bytes);
    /// Must be called after the last bytes. @returns the objects by number
    const std::unordered_map<int, ObjectHeader> &finish();

private:
    void scan(std::size_t end);
    void take(std::size_t word);

    int m_count;
    std::int64_t m_offset = 0; ///< of m_bytes in the file
    std::string m_bytes;
    std::unordered_map<int, ObjectHeader> m_found;
};

} // namespace tools
