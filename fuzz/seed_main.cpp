// Runs a fuzz target over every file of the folders and files named on the command line, without a
// fuzzer. An empty set is an error: a check that ran nothing proves nothing.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

int takeFile(const std::filesystem::path &path)
{
    std::ifstream stream(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)),
                            std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    int taken = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (!std::filesystem::is_directory(path)) {
            taken += takeFile(path);
            continue;
        }
        for (const auto &entry : std::filesystem::recursive_directory_iterator(path)) {
            if (entry.is_regular_file()) {
                taken += takeFile(entry.path());
            }
        }
    }
    std::printf("%d seeds taken\n", taken);
    return taken > 0 ? 0 : 1;
}
