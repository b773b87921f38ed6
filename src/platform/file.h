// Low-level files. A descriptor is positive and fits a signed 16-bit integer; -1 means not opened.
// On a file system that tells case apart, a missing name is looked for in its directory without
// regard to case.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "platform/file_state.h"
#include "platform/path.h"

namespace hundredweight::platform {

/// Opens a regular file for shared binary reading and tells its state.
int16_t OpenForReading(const char* path, FileState* state);

/// The same for a file that may also be written: one without write permission is not opened.
int16_t OpenForUpdate(const char* path, FileState* state);

/// The same as for reading, as a buffered stream or null.
std::FILE* OpenStreamForReading(const char* path);

/// Whether anything has this name, also what cannot be opened.
bool FileExists(const char* path);

/// Whether two paths lead to one file.
bool IsSameFile(const char* a, const char* b);

/// Moves the position to a byte counted from the file's start. Result: whether it could.
bool SeekTo(int descriptor, int64_t position);

/// Reads up to `size` bytes from the current position. Result: bytes read, less than `size` at the
/// end of the file or on an error.
std::size_t ReadBytes(int descriptor, void* buffer, std::size_t size);

/// Reads up to `size` bytes at a position. Where the descriptor stands afterwards is not told.
std::size_t ReadBytesAt(int descriptor, int64_t position, void* buffer, std::size_t size);

void CloseFile(int descriptor);

enum class WriteOutcome { kWritten, kNotCreated, kNotWritten };

/// The file that a path's new content replaces: where case does not tell, it may have other
/// letters, and a link stays one. What is not there yet can be replaced too. Empty when what is
/// there is no file, or may not be written.
SystemPath FileToReplace(const char* path);

/// Writes a file of a name that nothing has yet and flushes it to disk; leaves nothing of it when
/// it cannot. Where a model is there, the file has its owner and rights.
WriteOutcome WriteNewFile(const char* path, const void* content, std::size_t size,
                          const char* model);

/// Copies a file to a name that nothing has yet, flushed to disk; leaves nothing of the copy when
/// it cannot. The copy is the user's to write.
WriteOutcome CopyToNewFile(const char* from, const char* to);

/// Renames a file, replacing what has the new name, or leaves both as they are.
bool RenameOver(const char* from, const char* to);

/// Renames a file unless something has the new name.
bool RenameUnlessExists(const char* from, const char* to);

void RemoveFile(const char* path);

/// What tells this process from others that run now, and this machine from most others.
uint32_t ProcessNumber();
uint32_t MachineNumber();

/// Whether a process of this machine runs.
bool ProcessRuns(uint32_t process);

/// The start of a path that names its directory, with the last separator that the system knows;
/// empty for the current one.
std::string_view DirectoryOf(std::string_view path);

/// Whether a character at the end of a directory's path separates what follows.
bool IsSeparator(char character);

/// Whether two names in one directory mean the same file to the library: case does not count, and
/// on Windows neither do blanks and dots at the end.
bool IsSameName(std::string_view a, std::string_view b);

}  // namespace hundredweight::platform
