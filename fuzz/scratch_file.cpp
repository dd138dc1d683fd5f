#include "fuzz/scratch_file.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fuzz {

namespace fs = std::filesystem;

ScratchFile::ScratchFile()
{
    const fs::path parent =
        fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
    folder = (parent / "quorlin-fuzz-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        std::abort();
    }
}

ScratchFile::~ScratchFile()
{
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

void ScratchFile::write(const std::uint8_t *data, std::size_t size) const
{
    std::ofstream file(input(), std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
    if (!file.flush()) {
        std::abort();
    }
}

std::size_t ScratchFile::clear() const
{
    std::size_t removed = 0;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        if (entry.path() != input()) {
            fs::remove_all(entry.path());
            ++removed;
        }
    }
    return removed;
}

} // namespace fuzz
