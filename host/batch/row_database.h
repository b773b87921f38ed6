// The rows of a batch in an SQLite database.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cwt {

/// Whether this build has SQLite; without it, a RowDatabase throws.
bool HasDatabase();

/// The tables bills, lines and refusals, which a batch fills from its first row to its last. The
/// same rows, committed at the same points, give the same file to the byte, also when the process
/// was killed in between. Whatever fails throws std::runtime_error.
class RowDatabase {
 public:
    /// Creates the database, or opens one that a batch with the same columns has left.
    RowDatabase(const std::string& path, const std::vector<std::string>& passed);
    ~RowDatabase();
    RowDatabase(const RowDatabase&) = delete;
    RowDatabase& operator=(const RowDatabase&) = delete;

    /// Adds rows, as the form of MakeDatabaseForm wrote them.
    void Insert(std::string_view encoded_rows);

    /// Makes what was added last, together with a text that says how far the batch has come.
    void Commit(const std::string& state);

    /// The text of the last commit; empty before the first.
    std::string State();

    /// Drops that text, makes the index of bills by id, and closes the file.
    void Finish();

    /// Whether the batch that has left the database finished it; nothing can be added any more.
    bool IsFinished() const;

 private:
    class Connection;
    std::unique_ptr<Connection> connection_;
};

}  // namespace cwt
