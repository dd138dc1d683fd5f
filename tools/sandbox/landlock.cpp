#include "tools/sandbox/landlock.h"

#include <linux/landlock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace tools {

namespace {

// The kernel's headers may be older than the kernel, so what came later is named here.
constexpr std::uint64_t rightsOfVersion1 = (std::uint64_t{1} << 13) - 1;
constexpr std::uint64_t referRight = std::uint64_t{1} << 13;
constexpr std::uint64_t truncateRight = std::uint64_t{1} << 14;
constexpr std::uint64_t deviceRight = std::uint64_t{1} << 15;
constexpr std::uint64_t bindAndConnect = 3;
constexpr std::uint64_t abstractSocketsAndSignals = 3;

constexpr std::uint64_t folderRights =
    LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_REMOVE_FILE;

/// The argument of the call, as long as the newest version knows it: file system, network, scopes.
using Ruleset = std::array<std::uint64_t, 3>;

std::uint64_t fileRights(int version)
{
    return rightsOfVersion1 | (version >= 2 ? referRight : 0) | (version >= 3 ? truncateRight : 0) |
           (version >= 5 ? deviceRight : 0);
}

Ruleset rulesetOf(int version)
{
    return {fileRights(version), version >= 4 ? bindAndConnect : 0,
            version >= 6 ? abstractSocketsAndSignals : 0};
}

/// Owns a descriptor.
class Descriptor
{
public:
    explicit Descriptor(long number) : m_number(static_cast<int>(number)) {}
    ~Descriptor()
    {
        if (m_number >= 0) {
            close(m_number);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const noexcept { return m_number; }

private:
    int m_number;
};

} // namespace

std::string confineToFolders(const std::vector<int> &folders, int &version)
{
    version = static_cast<int>(
        syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION));
    if (version < 1) {
        version = 0;
        return std::strerror(errno);
    }
    const Ruleset rules = rulesetOf(version);
    const Descriptor ruleset(syscall(SYS_landlock_create_ruleset, rules.data(), sizeof(rules), 0));
    if (ruleset.number() < 0) {
        return std::strerror(errno);
    }
    for (const int folder : folders) {
        landlock_path_beneath_attr below{};
        below.allowed_access = (folderRights | truncateRight) & rules[0];
        below.parent_fd = folder;
        if (syscall(SYS_landlock_add_rule, ruleset.number(), LANDLOCK_RULE_PATH_BENEATH, &below,
                    0) != 0) {
            return std::strerror(errno);
        }
    }
    if (syscall(SYS_landlock_restrict_self, ruleset.number(), 0) != 0) {
        return std::strerror(errno);
    }
    return {};
}

} // namespace tools
