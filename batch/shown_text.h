#pragma once

#include <QString>

namespace quorlin::batch {

/// @p text with "?" in place of every character that must not be shown (see tools::canBeShown()),
/// so that no name can steer a terminal or look like another.
QString printable(const QString &text);

/// "1 output", "2 outputs".
QString countedText(qsizetype count, const char *one, const char *many);

/// How long a run goes on, as far as @p elapsedSeconds and the share of its work that is done (0 to
/// 1) tell: "about 5 min left"; empty while it is too early to say or less than ten seconds are
/// left.
QString timeLeftText(double elapsedSeconds, double doneShare);

/// The one line shown on a terminal while a file is worked on: "[2/3] name: what", control
/// characters as "?", the name cut where the line would exceed @p columns characters.
QString liveText(qsizetype number, qsizetype count, const QString &name, const QString &what,
                 int columns);

} // namespace quorlin::batch
