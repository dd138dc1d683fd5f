#include "tools/sandbox/version_text.h"

#include "tools/sandbox/sandbox.h"

#include <mupdf/fitz.h>

namespace tools {

std::string versionText(const std::string &tool)
{
    return tool + " " QUORLIN_VERSION "\nMuPDF " FZ_VERSION "\n" + sandboxSummary() + '\n';
}

} // namespace tools
