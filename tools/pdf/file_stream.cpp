#include "tools/pdf/file_stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tools {

namespace {

constexpr std::size_t readSize = 8192;

/// Plain data, because the library's jumps pass over whoever holds it.
struct ExtendedFile
{
    int descriptor;
    int64_t fileSize;
    int64_t appendedSize;
    char *appended;
    unsigned char buffer[readSize];
};

/// Bytes of the file or, behind its end, of those appended. @returns 0 at the end, -1 on an error
ssize_t readPart(ExtendedFile *file, int64_t position)
{
    if (position >= file->fileSize) {
        const int64_t skipped = std::min(position - file->fileSize, file->appendedSize);
        const int64_t left = std::min(file->appendedSize - skipped, static_cast<int64_t>(readSize));
        std::memcpy(file->buffer, file->appended + skipped, static_cast<std::size_t>(left));
        return static_cast<ssize_t>(left);
    }
    const auto wanted = static_cast<std::size_t>(
        std::min<int64_t>(file->fileSize - position, static_cast<int64_t>(readSize)));
    ssize_t count = -1;
    do {
        count = pread(file->descriptor, file->buffer, wanted, static_cast<off_t>(position));
    } while (count < 0 && errno == EINTR);
    return count;
}

int nextByte(fz_context *context, fz_stream *stream, size_t /*most*/)
{
    auto *file = static_cast<ExtendedFile *>(stream->state);
    const ssize_t count = readPart(file, stream->pos);
    if (count < 0) {
        fz_throw(context, FZ_ERROR_GENERIC, "read error: %s", std::strerror(errno));
    }
    stream->rp = file->buffer;
    stream->wp = file->buffer + count;
    stream->pos += count;
    return count == 0 ? EOF : *stream->rp++;
}

void seekTo(fz_context * /*context*/, fz_stream *stream, int64_t offset, int whence)
{
    auto *file = static_cast<ExtendedFile *>(stream->state);
    if (whence == SEEK_END) {
        offset += file->fileSize + file->appendedSize;
    }
    offset = std::max<int64_t>(0, offset);
    const int64_t held = stream->wp == nullptr ? 0 : stream->wp - file->buffer;
    const int64_t begin = stream->pos - held;
    if (offset >= begin && offset < stream->pos) {
        stream->rp = file->buffer + (offset - begin);
        return;
    }
    stream->rp = file->buffer;
    stream->wp = file->buffer;
    stream->pos = offset;
}

void closeFile(fz_context *context, void *state)
{
    auto *file = static_cast<ExtendedFile *>(state);
    close(file->descriptor);
    fz_free(context, file->appended);
    fz_free(context, file);
}

} // namespace

fz_stream *openFileStream(fz_context *context, int descriptor, int64_t size,
                          std::string_view appended)
{
    ExtendedFile *file = fz_malloc_struct(context, ExtendedFile);
    file->appended = static_cast<char *>(fz_malloc_no_throw(context, appended.size() + 1));
    file->descriptor = file->appended == nullptr ? -1 : fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
    if (file->descriptor < 0) {
        const int error = errno;
        fz_free(context, file->appended);
        fz_free(context, file);
        fz_throw(context, FZ_ERROR_GENERIC, "cannot open the file: %s", std::strerror(error));
    }
    file->fileSize = size;
    file->appendedSize = static_cast<int64_t>(appended.size());
    std::copy(appended.begin(), appended.end(), file->appended);
    fz_stream *stream = fz_new_stream(context, file, nextByte, closeFile);
    stream->seek = seekTo;
    return stream;
}

void dropAppended(fz_stream *stream)
{
    auto *file = static_cast<ExtendedFile *>(stream->state);
    file->appendedSize = 0;
    stream->rp = file->buffer; // what is buffered may belong to what was appended
    stream->wp = file->buffer;
}

} // namespace tools
