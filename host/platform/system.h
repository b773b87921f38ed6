// What a host needs of its system besides files: interrupts, terminals, locks.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace cwt {

/// From here on an interrupt (Ctrl-C) or a request to end is noted, and a write to a pipe that
/// nobody reads, or beyond the size that files may have, fails, instead of ending the program.
void CatchInterrupts();

/// Whether the program was asked to stop since.
bool IsInterrupted();

/// How often a service was asked, since it counts, to end and to read its data anew (SIGHUP).
struct Wishes {
    int end = 0, reload = 0;
};

/// From here on such wishes are counted, which ends a wait, and nothing ends the program.
void CountWishes();
Wishes WishesSoFar();

/// From here on they are left to the process that counts them.
void IgnoreWishes();

/// Writes a text at once, without the program's buffer. False when nobody takes it now.
bool WriteToStandardError(std::string_view text);

/// A function of a module that was loaded; null when it has none of the name.
void* FunctionOf(void* module, const char* name);

bool IsTerminal(std::FILE* stream);

/// Whether standard output or standard error goes to this file.
bool IsStandardStream(const std::filesystem::path& file);

/// A text that another content of a file changes: its place on the disk, size and times of change.
std::string ChangeMark(const std::filesystem::path& file);

/// The same of a file or directory whose last change is so old that every later one makes another
/// mark. Empty of others, and where the system does not tell.
std::string SettledMark(const std::filesystem::path& file);

/// Whether everybody may read or write a file, or its group write it.
bool IsOpenToOthers(const std::filesystem::path& file);

/// Has what was written to a file on its disk. False when that fails, with errno.
bool SyncFile(std::FILE* file);

/// Keeps a file for this process, until it is closed. False when another process has it.
bool LockFile(std::FILE* file);

}  // namespace cwt
