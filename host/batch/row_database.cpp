#include "batch/row_database.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "batch/row_tables.h"
#include "text/path_text.h"

namespace cwt {
namespace {

constexpr const char* kTableNames[kTableCount] = {"bills", "lines", "refusals"};
constexpr const char* kKeys[kTableCount] = {"PRIMARY KEY(row)", "PRIMARY KEY(row, line)", ""};

std::string Quoted(const std::string& name) {
    std::string quoted = "\"";
    for (const char character : name)
        quoted += character == '"' ? "\"\"" : std::string(1, character);
    return quoted + '"';
}

const char* SqlType(ColumnType type) {
    if (type == ColumnType::kText) return "TEXT";
    return type == ColumnType::kPercent ? "REAL" : "INTEGER";
}

std::string CreateTable(std::size_t table, const std::vector<TableColumn>& columns) {
    std::string sql;
    for (const TableColumn& column : columns) {
        sql += fmt::format("{}{} {}", sql.empty() ? "" : ", ", Quoted(column.name),
                           SqlType(column.type));
    }
    if (*kKeys[table] != '\0') sql += std::string(", ") + kKeys[table];
    return fmt::format("CREATE TABLE {}({}){}", kTableNames[table], sql,
                       table == kLinesTable ? " WITHOUT ROWID" : "");
}

template <class Number>
Number NumberOf(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size()) return number;
    throw std::runtime_error(fmt::format("\"{}\" is no number for the database", text));
}

}  // namespace

class RowDatabase::Connection {
 public:
    Connection(std::string path, const std::vector<std::string>& passed)
        : path_(std::move(path)), tables_(MakeRowTables(passed)) {
        sqlite3* database = nullptr;
        const int result = sqlite3_open(PathText(absolute(PathOf(path_))).c_str(), &database);
        database_.reset(database);
        Require(result);
        constexpr int kReadersPatience = 10000;  // Milliseconds, for those who read meanwhile.
        Require(sqlite3_busy_timeout(database, kReadersPatience));
        // What is dropped leaves no trace, so that the same rows make the same file.
        Run("PRAGMA secure_delete = ON");
        if (Text("SELECT count(*) FROM sqlite_schema") == "0") {
            CreateTables();
        } else {
            RequireSameTables();
            finished_ = Text("SELECT name FROM sqlite_schema WHERE name = 'batch_state'").empty();
        }
        PrepareInserts();
    }

    void Insert(std::string_view encoded) {
        Begin();
        while (!encoded.empty()) {
            const auto table = static_cast<unsigned char>(encoded[0]);
            encoded.remove_prefix(1);
            sqlite3_stmt* const insert = inserts_.at(table).get();
            int parameter = 0;
            for (const TableColumn& column : tables_.at(table)) {
                Bind(insert, ++parameter, column.type, TakeCell(encoded));
            }
            Step(insert);
        }
    }

    void Commit(const std::string& state) {
        Begin();
        const Statement update = Prepare("UPDATE batch_state SET state = ?");
        Bind(update.get(), 1, ColumnType::kText, state);
        Step(update.get());
        Run("COMMIT");
    }

    bool IsFinished() const { return finished_; }

    std::string State() const { return Text("SELECT state FROM batch_state"); }

    void Finish() {
        Begin();
        Run("DROP TABLE batch_state");
        Run("CREATE INDEX bills_by_id ON bills(id)");
        Run("COMMIT");
        finished_ = true;
        for (Statement& insert : inserts_) insert.reset();
        Require(sqlite3_close(database_.release()));
    }

 private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    void Require(int result) const {
        if (result == SQLITE_OK) return;
        const char* const reason =
            database_ ? sqlite3_errmsg(database_.get()) : sqlite3_errstr(result);
        throw std::runtime_error(path_ + ": " + reason);
    }

    void Run(const std::string& sql) {
        Require(sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr));
    }

    Statement Prepare(const std::string& sql) const {
        sqlite3_stmt* statement = nullptr;
        Require(sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &statement, nullptr));
        return Statement(statement);
    }

    /// The first value of a query's first row; empty when there is none.
    std::string Text(const std::string& query) const {
        const Statement statement = Prepare(query);
        const int result = sqlite3_step(statement.get());
        if (result != SQLITE_ROW && result != SQLITE_DONE) Require(result);
        const void* const text = sqlite3_column_text(statement.get(), 0);
        return text != nullptr ? static_cast<const char*>(text) : "";
    }

    void Bind(sqlite3_stmt* statement, int parameter, ColumnType type,
              std::string_view text) const {
        if (text.empty()) {
            Require(sqlite3_bind_null(statement, parameter));
        } else if (type == ColumnType::kText) {
            Require(sqlite3_bind_text64(statement, parameter, text.data(), text.size(),
                                        SQLITE_STATIC, SQLITE_UTF8));
        } else if (type == ColumnType::kPercent) {
            Require(sqlite3_bind_double(statement, parameter, NumberOf<double>(text)));
        } else {
            Require(sqlite3_bind_int64(statement, parameter, NumberOf<sqlite3_int64>(text)));
        }
    }

    void Step(sqlite3_stmt* statement) const {
        const int result = sqlite3_step(statement);
        if (result != SQLITE_DONE) Require(result);
        Require(sqlite3_reset(statement));
    }

    /// Begins a transaction unless one is under way.
    void Begin() {
        if (finished_) throw std::runtime_error(path_ + ": its batch is finished");
        if (sqlite3_get_autocommit(database_.get()) != 0) Run("BEGIN IMMEDIATE");
    }

    void CreateTables() {
        Begin();
        for (std::size_t table = 0; table < kTableCount; ++table) {
            Run(CreateTable(table, tables_[table]));
        }
        Run("CREATE TABLE batch_state(state TEXT)");
        Run("INSERT INTO batch_state VALUES('')");
        Run("COMMIT");
    }

    void RequireSameTables() const {
        for (std::size_t table = 0; table < kTableCount; ++table) {
            const std::string sql = Text(
                fmt::format("SELECT sql FROM sqlite_schema WHERE name = '{}'", kTableNames[table]));
            if (sql == CreateTable(table, tables_[table])) continue;
            throw std::runtime_error(path_ + ": this is no database of a batch with these columns");
        }
    }

    void PrepareInserts() {
        for (std::size_t table = 0; table < kTableCount; ++table) {
            std::string parameters = "?";
            for (std::size_t i = 1; i < tables_[table].size(); ++i) parameters += ",?";
            inserts_[table] =
                Prepare(fmt::format("INSERT INTO {} VALUES({})", kTableNames[table], parameters));
        }
    }

    std::string path_;
    RowTables tables_;
    std::unique_ptr<sqlite3, Close> database_;
    std::array<Statement, kTableCount> inserts_;
    bool finished_ = false;
};

bool HasDatabase() {
    return true;
}

RowDatabase::RowDatabase(const std::string& path, const std::vector<std::string>& passed)
    : connection_(std::make_unique<Connection>(path, passed)) {}

RowDatabase::~RowDatabase() = default;

void RowDatabase::Insert(std::string_view encoded_rows) {
    connection_->Insert(encoded_rows);
}

void RowDatabase::Commit(const std::string& state) {
    connection_->Commit(state);
}

std::string RowDatabase::State() {
    return connection_->State();
}

void RowDatabase::Finish() {
    connection_->Finish();
}

bool RowDatabase::IsFinished() const {
    return connection_->IsFinished();
}

}  // namespace cwt
