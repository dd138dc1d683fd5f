#pragma once

#include <mupdf/fitz.h>

#include <cstdint>
#include <string_view>

namespace tools {

/// A stream of the library that shows the first @p size bytes of a file followed by @p appended. A
/// seek to a place that is buffered already reads nothing. Bytes are read at the places asked for,
/// so streams of several threads may share one open file.
/// @param descriptor of the file; it is duplicated, the caller keeps its own
/// @throws the library's error (to be called under fz_try)
fz_stream *openFileStream(fz_context *context, int descriptor, int64_t size,
                          std::string_view appended = {});

/// Lets @p stream, made by openFileStream(), end with the file from now on. Its position is lost.
void dropAppended(fz_stream *stream);

} // namespace tools
