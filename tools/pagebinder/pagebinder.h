#pragma once

namespace tools {

/// The whole program but main(). @returns the exit status
int runPageBinder(int argc, char **argv);

} // namespace tools
