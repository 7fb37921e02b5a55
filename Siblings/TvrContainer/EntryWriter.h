// What is written to an entry, in memory until its container is closed.
#pragma once

#include "siblings/TvlUtils/Stream.h"

#include <string>

namespace TvrContainers {

class EntryWriter final : public TvlUtils::StreamSource {
public:
    /// @param limit bytes that the entry may have
    explicit EntryWriter(long long limit) : m_limit(limit) { }

    /// Whether something was written, and no write failed.
    bool IsWhole() const { return m_isWritten && !m_hasFailed; }
    const std::string& Bytes() const { return m_bytes; }

    bool Read(void* bytes, std::size_t size) override;
    bool Write(const void* bytes, std::size_t size) override;
    bool Seek(long long offset, TvlUtils::SeekOrigin origin) override;
    long long GetPosition() const override { return m_position; }

private:
    long long m_limit;
    std::string m_bytes;
    long long m_position = 0;
    bool m_isWritten = false;
    bool m_hasFailed = false;
};

}   // namespace TvrContainers
