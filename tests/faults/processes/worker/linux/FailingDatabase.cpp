#include "FailingDatabase.h"

#include "siblings/TvlUtils/FileLayer.h"

#include <new>
#include <sqlite3.h>
#include <unistd.h>

namespace {
sqlite3_vfs* systemFiles = nullptr;
int faultAt = 0;   // 0 for none
DatabaseFault faultKind{};
int operations = 0;

/// A file with the system's behind it, in one block as SQLite allocates it.
struct File {
    sqlite3_file base;
    sqlite3_file* system() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* SystemOf(sqlite3_file* file) { return reinterpret_cast<File*>(file)->system(); }
const sqlite3_io_methods& MethodsOf(sqlite3_file* file) { return *SystemOf(file)->pMethods; }

bool IsLast() { return faultKind == DatabaseFault::Stop && operations + 1 == faultAt; }
[[noreturn]] void Stop() { _exit(TvlUtils::SystemIO::kFileStopExitCode); }

/// Counts an operation; SQLITE_OK unless it fails.
int Admit(int failure)
{
    if (IsLast())
        Stop();
    ++operations;
    const bool fails = faultKind == DatabaseFault::FailOnward ? HasDatabaseFailed() : operations == faultAt;
    if (!fails || faultKind == DatabaseFault::Stop)
        return SQLITE_OK;
    return faultKind == DatabaseFault::Full ? SQLITE_FULL : failure;
}

int Close(sqlite3_file* file) { return MethodsOf(file).xClose(SystemOf(file)); }
int Read(sqlite3_file* file, void* bytes, int size, sqlite3_int64 offset)
{
    return MethodsOf(file).xRead(SystemOf(file), bytes, size, offset);
}
int Write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset)
{
    if (IsLast()) {
        MethodsOf(file).xWrite(SystemOf(file), bytes, size / 2, offset);
        Stop();
    }
    const int failed = Admit(SQLITE_IOERR_WRITE);
    return failed ? failed : MethodsOf(file).xWrite(SystemOf(file), bytes, size, offset);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size)
{
    const int failed = Admit(SQLITE_IOERR_TRUNCATE);
    return failed ? failed : MethodsOf(file).xTruncate(SystemOf(file), size);
}
int Sync(sqlite3_file* file, int flags)
{
    const int failed = Admit(SQLITE_IOERR_FSYNC);
    return failed ? failed : MethodsOf(file).xSync(SystemOf(file), flags);
}
int FileSize(sqlite3_file* file, sqlite3_int64* size) { return MethodsOf(file).xFileSize(SystemOf(file), size); }
int Lock(sqlite3_file* file, int level) { return MethodsOf(file).xLock(SystemOf(file), level); }
int Unlock(sqlite3_file* file, int level) { return MethodsOf(file).xUnlock(SystemOf(file), level); }
int CheckReservedLock(sqlite3_file* file, int* held)
{
    return MethodsOf(file).xCheckReservedLock(SystemOf(file), held);
}
int FileControl(sqlite3_file* file, int what, void* argument)
{
    return MethodsOf(file).xFileControl(SystemOf(file), what, argument);
}
int SectorSize(sqlite3_file* file) { return MethodsOf(file).xSectorSize(SystemOf(file)); }
int Characteristics(sqlite3_file* file) { return MethodsOf(file).xDeviceCharacteristics(SystemOf(file)); }
int ShmMap(sqlite3_file* file, int page, int size, int extend, void volatile** memory)
{
    return MethodsOf(file).xShmMap(SystemOf(file), page, size, extend, memory);
}
int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    return MethodsOf(file).xShmLock(SystemOf(file), offset, count, flags);
}
void ShmBarrier(sqlite3_file* file) { MethodsOf(file).xShmBarrier(SystemOf(file)); }
int ShmUnmap(sqlite3_file* file, int remove) { return MethodsOf(file).xShmUnmap(SystemOf(file), remove); }

constexpr sqlite3_io_methods kMethods = {2, Close, Read, Write, Truncate, Sync, FileSize, Lock, Unlock,
    CheckReservedLock, FileControl, SectorSize, Characteristics, ShmMap, ShmLock, ShmBarrier, ShmUnmap, nullptr,
    nullptr};

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    File* const own = new (file) File{};
    const int result = systemFiles->xOpen(systemFiles, name, own->system(), flags, outFlags);
    if (own->system()->pMethods)
        own->base.pMethods = &kMethods;
    return result;
}

int Delete(sqlite3_vfs*, const char* name, int sync)
{
    const int failed = Admit(SQLITE_IOERR_DELETE);
    return failed ? failed : systemFiles->xDelete(systemFiles, name, sync);
}
}   // namespace

int CountDatabaseOperations() { return operations; }
bool HasDatabaseFailed() { return faultAt > 0 && operations >= faultAt; }

void WatchDatabase(int point, DatabaseFault fault)
{
    static sqlite3_vfs files;
    systemFiles = sqlite3_vfs_find(nullptr);
    faultAt = point;
    faultKind = fault;
    files = *systemFiles;
    files.zName = "failing";
    files.szOsFile = static_cast<int>(sizeof(File)) + systemFiles->szOsFile;
    files.xOpen = Open;
    files.xDelete = Delete;
    sqlite3_vfs_register(&files, 1);
}
