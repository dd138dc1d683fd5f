#include "widgets/plain_tip.h"

namespace quorlin {

QString plainTip(const QString &text)
{
    return QStringLiteral("<span style=\"white-space:pre-wrap\">") + text.toHtmlEscaped() +
           QStringLiteral("</span>");
}

} // namespace quorlin
