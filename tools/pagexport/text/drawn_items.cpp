#include "tools/pagexport/text/drawn_items.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace tools {

namespace {

constexpr double cellSize = 4.0; // points; the tolerance must stay below half of it
constexpr double largestTolerance = 1.9;
constexpr double toleranceRatio = 0.15;
constexpr std::size_t firstTableSize = 256;
constexpr std::size_t multiplier = 0x9e3779b97f4a7c15ULL;

std::size_t cellHash(std::size_t textHash, long long column, long long row)
{
    std::size_t hash = textHash;
    hash = (hash ^ static_cast<std::size_t>(column)) * multiplier;
    hash = (hash ^ (hash >> 29) ^ static_cast<std::size_t>(row)) * multiplier;
    hash ^= hash >> 32;
    return hash == 0 ? 1 : hash;
}

} // namespace

bool DrawnItems::isRepeated(std::string_view text, double x, double y, double em)
{
    const double tolerance = std::min(toleranceRatio * em, largestTolerance);
    const std::size_t textHash = std::hash<std::string_view>()(text);
    const auto column = static_cast<long long>(std::floor(x / cellSize));
    const auto row = static_cast<long long>(std::floor(y / cellSize));
    const long long otherColumn = x - column * cellSize < cellSize / 2 ? column - 1 : column + 1;
    const long long otherRow = y - row * cellSize < cellSize / 2 ? row - 1 : row + 1;
    if (m_used != 0) {
        for (const long long c : {column, otherColumn}) {
            for (const long long r : {row, otherRow}) {
                if (find(cellHash(textHash, c, r), x, y, tolerance) != nullptr) {
                    return true;
                }
            }
        }
    }
    insert({cellHash(textHash, column, row), x, y});
    return false;
}

const DrawnItems::Entry *DrawnItems::find(std::size_t hash, double x, double y,
                                          double tolerance) const
{
    const std::size_t mask = m_table.size() - 1;
    for (std::size_t i = hash & mask; m_table[i].hash != 0; i = (i + 1) & mask) {
        const Entry &entry = m_table[i];
        if (entry.hash == hash && std::abs(entry.x - x) <= tolerance &&
            std::abs(entry.y - y) <= tolerance) {
            return &entry;
        }
    }
    return nullptr;
}

void DrawnItems::insert(const Entry &entry)
{
    if (2 * (m_used + 1) > m_table.size()) {
        grow();
    }
    const std::size_t mask = m_table.size() - 1;
    std::size_t i = entry.hash & mask;
    while (m_table[i].hash != 0) {
        i = (i + 1) & mask;
    }
    m_table[i] = entry;
    ++m_used;
}

void DrawnItems::grow()
{
    std::vector<Entry> old(std::max(firstTableSize, 2 * m_table.size()));
    old.swap(m_table);
    m_used = 0;
    for (const Entry &entry : old) {
        if (entry.hash != 0) {
            insert(entry);
        }
    }
}

} // namespace tools
