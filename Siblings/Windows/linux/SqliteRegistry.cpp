// The registry of the linux target: one SQLite file, transactional and safe between processes.
#include "TvlPref/FoldedName.h"
#include "TvlPref/SystemRegistry.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlPref/StoredRegistry.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "windows/Environment.h"
#include "windows/UserFolders.h"

#include <filesystem>
#include <new>
#include <sqlite3.h>

namespace PREFUTILS {

namespace {
// How long a call waits while another process writes.
constexpr int kBusyMilliseconds = 10000;

// A key holds the folded path that finds it and the name that is shown; texts are UTF-8. A root's parent is 0. Ids are
// never given twice, so that an open handle can tell that its key has gone.
constexpr const char* kSchema = R"(
    PRAGMA journal_mode = WAL;
    PRAGMA synchronous = NORMAL;
    PRAGMA user_version = 1;
    CREATE TABLE IF NOT EXISTS keys (
        id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, path TEXT NOT NULL UNIQUE, name TEXT NOT NULL);
    CREATE INDEX IF NOT EXISTS children ON keys (parent, path);
    CREATE TABLE IF NOT EXISTS entries (
        key INTEGER NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL,
        PRIMARY KEY (key, folded)) WITHOUT ROWID;
)";

LONG StatusOf(int code)
{
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return kRegistryBusy;
    case SQLITE_FULL:
        return kRegistryDiskFull;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_CANTOPEN:
        return kRegistryAccessDenied;
    default:
        return kRegistryCorrupt;
    }
}

[[noreturn]] void Fail(int code)
{
    if (code == SQLITE_NOMEM)
        throw std::bad_alloc();
    throw RegistryStore::StoreFailure{StatusOf(code)};
}

/// Use of a statement that is kept ready: bound from 1 on, reset at the end.
class Query {
public:
    explicit Query(sqlite3_stmt* statement) : m_statement(statement) { }
    ~Query()
    {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    /// The bytes must outlive the query.
    Query& Bind(const std::string& text)
    {
        return Check(sqlite3_bind_text64(m_statement, ++m_bound, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
    }
    Query& Bind(sqlite3_int64 number) { return Check(sqlite3_bind_int64(m_statement, ++m_bound, number)); }
    Query& Bind(const std::vector<std::uint8_t>& bytes)
    {
        // A null pointer would bind NULL instead of no bytes.
        const void* const data = bytes.empty() ? static_cast<const void*>("") : bytes.data();
        return Check(sqlite3_bind_blob64(m_statement, ++m_bound, data, bytes.size(), SQLITE_STATIC));
    }

    /// True while there is a row.
    bool Step()
    {
        const int code = sqlite3_step(m_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            Fail(code);
        return code == SQLITE_ROW;
    }
    /// Runs a statement without rows; false when that fails.
    bool TryRun() { return sqlite3_step(m_statement) == SQLITE_DONE; }

    sqlite3_int64 Number(int column) const { return sqlite3_column_int64(m_statement, column); }
    std::wstring Text(int column) const
    {
        const auto bytes = Bytes(column);
        return TvlPlatform::FromUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
    /// The type and data that stand in the first two columns.
    RegistryValue Value() const { return {static_cast<DWORD>(Number(0)), Bytes(1)}; }

    std::vector<std::uint8_t> Bytes(int column) const
    {
        const auto* const data = static_cast<const std::uint8_t*>(sqlite3_column_blob(m_statement, column));
        return {data, data + sqlite3_column_bytes(m_statement, column)};
    }

private:
    Query& Check(int code)
    {
        if (code != SQLITE_OK)
            Fail(code);
        return *this;
    }

    sqlite3_stmt* m_statement;
    int m_bound = 0;
};

/// The statements that are kept ready. A transaction's are among them: one that has failed for want of memory must be taken
/// back without any.
enum Statement {
    kBegin,
    kCommit,
    kRollback,
    kBeginPart,
    kCommitPart,
    kRollbackPart,
    kFindKey,
    kKeyLives,
    kInsertKey,
    kDeleteEntries,
    kDeleteKeys,
    kSubkey,
    kEntryAt,
    kEntry,
    kSetEntry,
    kDeleteEntry,
    kStatements
};

constexpr const char* kStatementTexts[kStatements] = {
    "BEGIN IMMEDIATE",
    "COMMIT",
    "ROLLBACK",
    "SAVEPOINT part",
    "RELEASE part",
    "ROLLBACK TO part",
    "SELECT id FROM keys WHERE path = ?1",
    "SELECT 1 FROM keys WHERE id = ?1",
    "INSERT INTO keys (parent, path, name) VALUES (?1, ?2, ?3)",
    // "\\" and the character behind it bound what lies below a path.
    "DELETE FROM entries WHERE key IN (SELECT id FROM keys WHERE path = ?1 OR (path > ?1 || '\\' AND path < ?1 || "
    "']'))",
    "DELETE FROM keys WHERE path = ?1 OR (path > ?1 || '\\' AND path < ?1 || ']')",
    "SELECT name FROM keys WHERE parent = ?1 ORDER BY path LIMIT 1 OFFSET ?2",
    "SELECT type, data, name FROM entries WHERE key = ?1 ORDER BY folded LIMIT 1 OFFSET ?2",
    "SELECT type, data FROM entries WHERE key = ?1 AND folded = ?2",
    "INSERT INTO entries (key, folded, name, type, data) SELECT ?1, ?2, ?3, ?4, ?5 "
    "WHERE EXISTS (SELECT 1 FROM keys WHERE id = ?1) ON CONFLICT DO UPDATE SET type = excluded.type, data = "
    "excluded.data",
    "DELETE FROM entries WHERE key = ?1 AND folded = ?2",
};

std::string StoredName(std::wstring_view name) { return TvlPlatform::ToUtf8(FoldedName(name)); }

class SqliteStore final : public RegistryStore {
public:
    explicit SqliteStore(const std::string& file)
    {
        sqlite3* database = nullptr;
        m_status = sqlite3_open_v2(
            file.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
        m_database.reset(database);
        if (m_status == SQLITE_OK)
            m_status = Prepare();
        if (m_status == SQLITE_NOMEM)
            throw std::bad_alloc();   // the next to ask opens it
        if (m_status != SQLITE_OK)
            TvlUtils::LogMessage(TvlUtils::LogLevel::Error,
                TvlString().Format(L"the registry \"%S\" can't be opened: %S", file, sqlite3_errmsg(database)));
    }

    KeyId FindKey(std::wstring_view path) override
    {
        const KeyId found = Find(StoredName(path));
        bool created = false;
        // Roots are always there.
        const bool isRoot = path.find(L'\\') == std::wstring_view::npos;
        return found || !isRoot ? found : CreateKey(path, created);
    }

    KeyId CreateKey(std::wstring_view path, bool& created) override
    {
        Transaction transaction(*this);
        KeyId key = 0;
        for (std::size_t begin = 0; begin < path.size();) {
            const std::size_t end = std::min(path.find(L'\\', begin), path.size());
            const std::string stored = StoredName(path.substr(0, end));
            KeyId next = Find(stored);
            if (!next) {
                const std::string name = TvlPlatform::ToUtf8(path.substr(begin, end - begin));
                Use(kInsertKey).Bind(key).Bind(stored).Bind(name).Step();
                next = sqlite3_last_insert_rowid(m_database.get());
                created = true;
            }
            key = next;
            begin = end + 1;
        }
        transaction.Commit();
        return key;
    }

    bool KeyLives(KeyId key) override { return Use(kKeyLives).Bind(key).Step(); }

    void DeleteTree(std::wstring_view path) override
    {
        Transaction transaction(*this);
        const std::string stored = StoredName(path);
        Use(kDeleteEntries).Bind(stored).Step();
        Use(kDeleteKeys).Bind(stored).Step();
        transaction.Commit();
    }

    std::optional<std::wstring> SubkeyName(KeyId key, DWORD index) override
    {
        Query query = Use(kSubkey);
        return query.Bind(key).Bind(index).Step() ? std::optional(query.Text(0)) : std::nullopt;
    }

    std::optional<std::pair<std::wstring, RegistryValue>> ValueAt(KeyId key, DWORD index) override
    {
        Query query = Use(kEntryAt);
        if (!query.Bind(key).Bind(index).Step())
            return std::nullopt;
        return std::pair(query.Text(2), query.Value());
    }

    std::optional<RegistryValue> Value(KeyId key, std::wstring_view name) override
    {
        const std::string stored = StoredName(name);
        Query query = Use(kEntry);
        return query.Bind(key).Bind(stored).Step() ? std::optional(query.Value()) : std::nullopt;
    }

    bool SetValue(KeyId key, std::wstring_view name, const RegistryValue& value) override
    {
        const std::string stored = StoredName(name);
        const std::string shown = TvlPlatform::ToUtf8(name);
        Use(kSetEntry).Bind(key).Bind(stored).Bind(shown).Bind(value.type).Bind(value.bytes).Step();
        return sqlite3_changes(m_database.get()) > 0;
    }

    bool DeleteValue(KeyId key, std::wstring_view name) override
    {
        const std::string stored = StoredName(name);
        Use(kDeleteEntry).Bind(key).Bind(stored).Step();
        return sqlite3_changes(m_database.get()) > 0;
    }

    void BeginBatch() override
    {
        m_batches.reserve(m_batches.size() + 1);
        m_batches.push_back(std::make_unique<Transaction>(*this));
    }

    void EndBatch(bool keep) override
    {
        const std::unique_ptr<Transaction> batch = std::move(m_batches.back());
        m_batches.pop_back();
        if (keep)
            batch->Commit();
    }

private:
    struct Closer {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };

    /// A write transaction, or a part of the one that is open: rolled back unless it is committed.
    class Transaction {
    public:
        explicit Transaction(SqliteStore& store) : m_store(store), m_isInner(store.IsInTransaction())
        {
            m_store.Use(m_isInner ? kBeginPart : kBegin).Step();
        }
        ~Transaction()
        {
            if (m_committed || !m_store.IsInTransaction())
                return;
            // A part that can't be taken back, which takes some memory, takes all with it: the batch around it tells.
            if (!m_isInner || !m_store.TryRun(kRollbackPart) || !m_store.TryRun(kCommitPart))
                m_store.TryRun(kRollback);
        }
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;

        void Commit()
        {
            // SQLite takes a transaction back by itself when the disk fails or there is no memory.
            if (!m_store.IsInTransaction())
                throw StoreFailure{kRegistryDiskFull};
            m_store.Use(m_isInner ? kCommitPart : kCommit).Step();
            m_committed = true;
        }

    private:
        SqliteStore& m_store;
        bool m_isInner;
        bool m_committed = false;
    };

    int Prepare()
    {
        sqlite3_busy_timeout(m_database.get(), kBusyMilliseconds);
        int code = sqlite3_exec(m_database.get(), kSchema, nullptr, nullptr, nullptr);
        for (int i = 0; i < kStatements && code == SQLITE_OK; ++i) {
            sqlite3_stmt* statement = nullptr;
            code = sqlite3_prepare_v3(
                m_database.get(), kStatementTexts[i], -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
            m_statements[i].reset(statement);
        }
        return code;
    }

    bool IsInTransaction() const { return m_database && sqlite3_get_autocommit(m_database.get()) == 0; }

    void RequireOpen() const
    {
        if (m_status != SQLITE_OK)
            throw StoreFailure{StatusOf(m_status)};
        // The batch was taken back in its middle: its rest must not be done without its beginning.
        if (!m_batches.empty() && !IsInTransaction())
            throw StoreFailure{kRegistryDiskFull};
    }

    Query Use(Statement statement) const
    {
        RequireOpen();
        return Query(m_statements[statement].get());
    }

    bool TryRun(Statement statement) const { return Query(m_statements[statement].get()).TryRun(); }

    KeyId Find(const std::string& stored)
    {
        Query query = Use(kFindKey);
        return query.Bind(stored).Step() ? query.Number(0) : 0;
    }

    int m_status = SQLITE_OK;
    std::unique_ptr<sqlite3, Closer> m_database;
    std::unique_ptr<sqlite3_stmt, Closer> m_statements[kStatements];
    std::vector<std::unique_ptr<Transaction>> m_batches;   // one within the other
};

/// The file named by TVL_REGISTRY, or one in the user's configuration folder; empty when the system does not tell where that
/// is. Never one in the folder that the process happens to be in, which may be anybody's.
std::filesystem::path RegistryFile()
{
    using TvlUtils::SystemIO::ToFilePath;
    if (const auto file = Ports::Environment::Get().Variable(L"TVL_REGISTRY"); file && !file->empty())
        return ToFilePath(*file);
    const std::wstring folder = Ports::UserFolders::Get().ApplicationData();
    return folder.empty() ? std::filesystem::path() : ToFilePath(folder) / "TvlUtl" / "registry.db";
}

/// Makes the folder of a file; what is in it is the user's own business.
void MakePrivateFolder(const std::filesystem::path& folder)
{
    std::error_code failed;
    if (std::filesystem::create_directories(folder, failed))
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, failed);
}

std::unique_ptr<RegistryStore> OpenSystemStore()
{
    // Without a name the database is a private one that ends with the process.
    const std::filesystem::path file = RegistryFile();
    if (file.has_parent_path())
        MakePrivateFolder(file.parent_path());
    return std::make_unique<SqliteStore>(file.string());
}
}   // namespace

IRegistry& SystemRegistry()
{
    static StoredRegistry registry(OpenSystemStore());
    return registry;
}

}   // namespace PREFUTILS
