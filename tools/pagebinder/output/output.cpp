#include "tools/pagebinder/output/output.h"

#include "tools/common/standard_output.h"
#include "tools/pagebinder/output/atomic_output.h"

namespace tools {

namespace {

/// A pipe takes nothing back, so everything waits in memory until it is complete.
class StandardOutput : public Output
{
public:
    StandardOutput() : Output("standard output") {}

    void complete() override {}
    void publish() override { writeStandardOutput(m_bytes); }

private:
    void store(const char *data, std::size_t size) override { m_bytes.append(data, size); }
    void clear() override { m_bytes.clear(); }

    std::string m_bytes;
};

} // namespace

std::unique_ptr<Output> openOutput(const OutputPlace &place)
{
    if (place.folder < 0) {
        return std::make_unique<StandardOutput>();
    }
    return std::make_unique<AtomicOutput>(place);
}

} // namespace tools
