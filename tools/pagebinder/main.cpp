#include "tools/common/sanitized_run.h"
#include "tools/pagebinder/pagebinder.h"

int main(int argc, char **argv)
{
    tools::noteMemoryAtStart();
    return tools::runPageBinder(argc, argv);
}
