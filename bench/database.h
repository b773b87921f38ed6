// SQLite in memory, to hold look-ups against.
#pragma once

#include <sqlite3.h>

#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <string_view>

namespace hundredweight::bench {

/// A database in memory.
class Database {
 public:
    Database() { Require(sqlite3_open(":memory:", &database_)); }
    ~Database() { sqlite3_close_v2(database_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    static void Require(int outcome) {
        if (outcome != SQLITE_OK) throw std::runtime_error("the database fails");
    }
    void Run(const char* words) {
        Require(sqlite3_exec(database_, words, nullptr, nullptr, nullptr));
    }
    sqlite3* get() const { return database_; }

 private:
    sqlite3* database_ = nullptr;
};

/// A prepared statement with texts for its parameters.
class Statement {
 public:
    Statement(const Database& database, const char* words) {
        Database::Require(sqlite3_prepare_v2(database.get(), words, -1, &statement_, nullptr));
    }
    ~Statement() { sqlite3_finalize(statement_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void Insert(std::initializer_list<std::string_view> texts) {
        Bind(texts);
        sqlite3_step(statement_);
        Database::Require(sqlite3_reset(statement_));
    }
    /// Copies the first text of the first row.
    template <std::size_t Size>
    void Select(std::initializer_list<std::string_view> texts, char (&text)[Size]) {
        Bind(texts);
        if (sqlite3_step(statement_) != SQLITE_ROW) throw std::runtime_error("not found");
        std::memcpy(text, sqlite3_column_text(statement_, 0), Size);
        sqlite3_reset(statement_);
    }

 private:
    void Bind(std::initializer_list<std::string_view> texts) {
        int parameter = 0;
        for (const std::string_view text : texts) {
            sqlite3_bind_text(statement_, ++parameter, text.data(), static_cast<int>(text.size()),
                              SQLITE_STATIC);
        }
    }

    sqlite3_stmt* statement_ = nullptr;
};

}  // namespace hundredweight::bench
