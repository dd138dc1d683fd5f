#include "options/document_information.h"

namespace quorlin {

QString documentInformationText(const DocumentInformation &information)
{
    const QString pattern = QStringLiteral(
        "[ /Title (%1)\n /Author (%2) \n /Subject (%3) \n /Keywords (%4) \n /Creator (%5) \n "
        "/Producer (%6) \n /DOCINFO pdfmark");
    // One call per field on purpose: a single call would leave place-holders inside fields alone.
    return pattern.arg(information.title)
        .arg(information.author)
        .arg(information.subject)
        .arg(information.keywords)
        .arg(information.creator)
        .arg(information.producer);
}

} // namespace quorlin
