// The file that libzip sees: it reads from the archive's own, and writes to memory.
#pragma once

#include "TvrContainer/ZipArchive.h"

#include <exception>
#include <zip.h>

namespace TvrContainers {

class ZipArchive::Source {
public:
    /// @param reader null for an archive that has no file yet
    explicit Source(PieceReader* reader);
    ~Source();
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    /// The source for libzip, which must not outlive this object; null when there is no memory.
    zip_source_t* Make();
    /// What libzip has written, when it has come to its end.
    std::string& Output() { return m_output; }
    /// Throws what a callback had to hide from libzip, which can't be thrown through.
    void Rethrow();

private:
    static zip_int64_t Callback(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command);
    zip_int64_t Run(void* data, zip_uint64_t size, zip_source_cmd_t command);
    zip_int64_t Fail(int error, int reason);
    zip_int64_t Read(void* data, zip_uint64_t size);
    zip_int64_t Write(const void* data, zip_uint64_t size);
    zip_int64_t Describe(void* data);
    zip_int64_t Seek(long long& position, long long end, void* data, zip_uint64_t size);

    PieceReader* m_reader;
    long long m_position = 0;
    std::string m_output;
    long long m_outputPosition = 0;
    zip_error_t m_error;
    std::exception_ptr m_thrown;
};

}   // namespace TvrContainers
