#pragma once

#include "tools/pdf/library_internals.h"

#include <QString>

/// Whether @p file of the corpus is left out: it breaks the syntax, and objects are mended only in
/// versions of the library that are known.
inline bool wantsMending(const QString &file)
{
    return !tools::knowsLibrary && (file.endsWith(QLatin1String("nasty/deep_arrays.pdf")) ||
                                    file.endsWith(QLatin1String("nasty/mediabox_missing.pdf")));
}
