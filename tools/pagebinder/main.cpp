#include "tools/pagebinder/pagebinder.h"

int main(int argc, char **argv)
{
    return tools::runPageBinder(argc, argv);
}
