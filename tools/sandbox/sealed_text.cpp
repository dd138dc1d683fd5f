#include "tools/sandbox/sealed_text.h"

#include "tools/sandbox/sealed_region.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <new>
#include <stdexcept>
#include <system_error>

#ifndef MAP_FIXED_NOREPLACE
#define MAP_FIXED_NOREPLACE 0
#endif
#ifndef MAP_POPULATE
#define MAP_POPULATE 0
#endif

namespace tools {

namespace {

constexpr std::uint64_t largestRoom = sealedNames - sealedPaths;

std::size_t wholePages(std::size_t bytes)
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return (bytes + page - 1) / page * page;
}

char *reserve(std::uint64_t place, std::size_t size)
{
    constexpr int protection = PROT_READ | PROT_WRITE;
    constexpr int flags = MAP_PRIVATE | MAP_ANON | MAP_POPULATE;
    void *hint = reinterpret_cast<void *>(place); // NOLINT(performance-no-int-to-ptr)
    void *memory = mmap(hint, size, protection, flags | MAP_FIXED_NOREPLACE, -1, 0);
    if (memory == MAP_FAILED) {
        memory = mmap(nullptr, size, protection, flags, -1, 0);
    }
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return static_cast<char *>(memory);
}

} // namespace

SealedText::SealedText(std::size_t nameBytes, std::size_t pathBytes)
    : m_pathSize(wholePages(pathBytes)), m_nameSize(wholePages(nameBytes)),
      m_begin(reserve(sealedNames - m_pathSize, m_pathSize + m_nameSize)),
      m_paths{m_begin, m_begin + m_pathSize}, m_names{m_begin + m_pathSize,
                                                      m_begin + m_pathSize + m_nameSize}
{
}

SealedText::~SealedText()
{
    munmap(m_begin, m_pathSize + m_nameSize);
}

const char *SealedText::Room::add(std::string_view text)
{
    if (text.size() >= static_cast<std::size_t>(end - next)) {
        throw std::length_error("no room for another name");
    }
    char *copy = next;
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    next += text.size() + 1;
    return copy;
}

const char *SealedText::addName(std::string_view name)
{
    if (name.find('/') != std::string_view::npos) {
        throw std::invalid_argument("a name must not hold a path");
    }
    return m_names.add(name);
}

const char *SealedText::addPath(std::string_view path)
{
    return m_paths.add(path);
}

char *SealedText::takeRoom(std::size_t bytes)
{
    if (bytes > static_cast<std::size_t>(m_names.end - m_names.next)) {
        throw std::length_error("no room for another name");
    }
    char *room = m_names.next;
    m_names.next += bytes;
    return room;
}

void SealedText::seal()
{
    if (mprotect(m_begin, m_pathSize + m_nameSize, PROT_READ) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
}

bool SealedText::isInPlace() const noexcept
{
    return reinterpret_cast<std::uint64_t>(m_begin) == sealedNames - m_pathSize &&
           m_pathSize <= largestRoom && m_nameSize <= largestRoom;
}

} // namespace tools
