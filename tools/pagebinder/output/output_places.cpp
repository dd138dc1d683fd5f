#include "tools/pagebinder/output/output_places.h"

#include "tools/common/output_path.h"
#include "tools/pagebinder/output/hidden_names.h"
#include "tools/pagebinder/output/output.h"
#include "tools/pagebinder/output/output_name.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <numeric>

namespace tools {

namespace {

#ifdef O_PATH
constexpr int folderMode = O_PATH | O_DIRECTORY | O_CLOEXEC; // no right to list it is needed
#else
constexpr int folderMode = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

int openWithFreshLimit(const char *folder)
{
    const int descriptor = open(folder, folderMode);
    rlimit limit{};
    if (descriptor >= 0 || errno != EMFILE || getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return descriptor;
    }
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    return open(folder, folderMode);
}

std::size_t lengthOf(const std::vector<std::string> &names)
{
    return std::accumulate(
        names.begin(), names.end(), std::size_t{0},
        [](std::size_t sum, const std::string &name) { return sum + name.size() + 1; });
}

} // namespace

OutputPlaces::OutputPlaces(InputFile &input, const std::vector<std::string> &outputs)
{
    for (const std::string &output : outputs) {
        m_settled.push_back(settle(input, output));
    }
    std::vector<std::string> names;
    for (const Settled &settled : m_settled) {
        names.push_back(settled.place.folder < 0 ? "" : nameOf(settled.place.path));
    }
    const std::vector<std::string> hidden =
        m_folders.empty() ? std::vector<std::string>() : hiddenNames();
    for (const auto &[path, folder] : m_folders) {
        removeAbandonedFiles(folder, hidden);
    }
    m_text.emplace(lengthOf(names) + lengthOf(hidden) + 1, input.path().size() + 1);
    for (const std::string &name : hidden) {
        m_hiddenNames.push_back(m_text->addName(name));
    }
    for (std::size_t i = 0; i < m_settled.size(); ++i) {
        m_settled[i].place.name = m_text->addName(names[i]);
        m_settled[i].place.hiddenNames = &m_hiddenNames;
    }
    input.setFixedPath(m_text->addPath(input.path()));
    m_text->seal();
}

OutputPlaces::~OutputPlaces()
{
    for (const auto &[path, folder] : m_folders) {
        close(folder);
    }
}

OutputPlaces::Settled OutputPlaces::settle(const InputFile &input, const std::string &output)
{
    Settled settled;
    settled.place.path = output;
    if (output == standardOutputName) {
        return settled;
    }
    try {
        checkOutput(input.path(), output);
        refuseSpecialFile(output);
        settled.place.path = fittingOutput(input.path(), output);
        settled.place.folder = openFolder(folderOf(output));
    } catch (const ToolError &error) {
        settled.error = error;
    }
    if (settled.place.folder < 0 && !settled.error) {
        settled.error = ToolError(settled.place.path,
                                  std::string("cannot be written: ") + std::strerror(errno));
    }
    return settled;
}

int OutputPlaces::openFolder(const std::string &folder)
{
    const auto known = m_folders.find(folder);
    if (known != m_folders.end()) {
        return known->second;
    }
    const int descriptor = openWithFreshLimit(folder.c_str());
    if (descriptor >= 0) {
        m_folders.emplace(folder, descriptor);
    }
    return descriptor;
}

const OutputPlace &OutputPlaces::at(std::size_t index) const
{
    if (m_settled[index].error) {
        throw ToolError(*m_settled[index].error);
    }
    return m_settled[index].place;
}

SandboxNeeds OutputPlaces::sandboxNeeds(const InputFile &input) const
{
    SandboxNeeds needs;
    needs.descriptors.push_back(input.descriptor());
    for (const auto &[path, folder] : m_folders) {
        needs.descriptors.push_back(folder);
        needs.outputFolders.push_back(folder);
    }
    needs.namesAreSealed = m_text->isInPlace();
    return needs;
}

} // namespace tools
