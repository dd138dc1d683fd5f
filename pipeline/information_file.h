#pragma once

#include <QString>

namespace quorlin {

/// The digits that follow the first "NumberOfPages: " of an information file's text, exactly as
/// they stand (leading zeros kept). Without that key the scan starts at position 14 of the text,
/// whatever stands there. Empty when no digit is found.
QString pageCountDigits(const QString &information);

} // namespace quorlin
