#pragma once

#include "tools/sandbox/sandbox.h"
#include "tools/sandbox/sealed_text.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace probe {

/// What the probe has at hand when it tries something.
struct Scene
{
    std::string folder;
    const char *hiddenName = nullptr; ///< sealed
    const char *outputName = nullptr; ///< sealed
    const char *inputPath = nullptr;  ///< sealed
    int input = -1;
    int output = -1; ///< the output folder
    int spare = -1;  ///< a descriptor that the tool did not ask to keep
    pid_t parent = 0;

    std::string path(const char *name) const { return folder + "/" + name; }
};

/// Something to try.
struct Action
{
    const char *name;
    long (*attempt)(const Scene &); ///< negative, with errno set, when it is refused
};

const std::vector<Action> &actions();
/// Those that are not answered: they end the probe.
const std::vector<Action> &fatalActions();

} // namespace probe
