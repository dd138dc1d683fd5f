#pragma once

#include <QString>

namespace quorlin {

/// Text of the "File Size" column for a file of @p bytes: thousands of bytes up to a binary
/// megabyte, millions above, right-aligned in 14 characters, with a decimal point in every locale.
/// Empty for sizes that are not positive as a signed 32-bit number: 0, and 2 GiB up to 4 GiB.
QString sizeText(qint64 bytes);

} // namespace quorlin
