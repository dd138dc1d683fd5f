#pragma once

#include <string_view>

namespace tools {

/// Gives standard streams that the caller has closed something to stand for them: a file opened
/// under the number of one would receive messages, or be read as a list. Reading and writing fail
/// on them.
void openStandardStreams();

/// Thrown when whoever reads standard output has closed it. There is nobody left to tell, so the
/// tool ends without a word.
struct ReaderGone
{
};

/// Writes all of @p bytes to standard output at once, past every buffer.
/// @throws ReaderGone, or ToolError when the bytes cannot be written
void writeStandardOutput(std::string_view bytes);

} // namespace tools
