#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tools {

/// Shortens a file name to @p limit bytes. Names have the form "NUMBER TEXT BASE PAGES.pdf": bytes
/// are taken out of the text before the last part, so that number, base name, pages and ending
/// stay, and characters of more than one byte stay whole. Three full stops stand where something is
/// missing. Names that begin with different numbers or end in different pages stay different.
/// @param base name of the input without folder and ending, which is looked for in the name's end;
///     it may be empty
/// @param limit at least 64
/// @returns @p name itself when it is short enough
std::string shortenOutputName(std::string_view name, std::string_view base, std::size_t limit);

} // namespace tools
