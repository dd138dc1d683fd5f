#pragma once

// The maker's data, here and nowhere else: the About box shows them, and the packages are labelled
// with the same lines (packaging/CMakeLists.txt reads them from this file).

#include <QtGlobal>

namespace quorlin {

inline constexpr char makerName[] = "The Quorlin Cleaver makers";
inline constexpr char makerNotice[] = QT_TRANSLATE_NOOP(
    "AboutDialog",
    "Copyright 2026 The Quorlin Cleaver makers. Free software: GNU AGPL, version 3 or later.");
inline constexpr char homePageAddress[] = "https://cleaver.example.com";
inline constexpr char supportMailAddress[] = "support@cleaver.example.com";

} // namespace quorlin
