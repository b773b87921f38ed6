// Low-level files. A descriptor is positive and fits a signed 16-bit integer; -1 means not opened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace hundredweight::platform {

/// Opens a regular file for shared binary reading and tells its length in bytes. On a file system
/// that tells case apart, a missing name is looked for in its directory without regard to case.
int16_t OpenForReading(const char* path, int64_t* length);

/// The same as a buffered stream, or null.
std::FILE* OpenStreamForReading(const char* path);

/// Moves the position to a byte counted from the file's start. Result: whether it could.
bool SeekTo(int descriptor, int64_t position);

/// Reads up to `size` bytes from the current position. Result: bytes read, less than `size` at the
/// end of the file or on an error.
std::size_t ReadBytes(int descriptor, void* buffer, std::size_t size);

void CloseFile(int descriptor);

enum class ReplaceOutcome { kReplaced, kNotCreated, kNotWritten };

/// Gives a file new content. At every moment the old content or the new one stands under the name,
/// also when the disk is full or the process dies; after a failure it is the old one.
ReplaceOutcome ReplaceFile(const char* path, const void* content, std::size_t size);

}  // namespace hundredweight::platform
