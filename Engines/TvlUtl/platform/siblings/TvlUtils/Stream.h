// A byte stream that its copies share.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>
#include <limits>
#include <memory>

/// The operating system's interface of a stream (objidl.h), by pointer alone: sibling libraries hand it to each other.
struct IStream;

/// What every library of the suite uses: threads, events, streams, times and identifiers.
namespace TvlUtils {

/// Where Seek counts from.
enum class SeekOrigin : int {
    Start = 0,     ///< the first byte
    Current = 1,   ///< the present position
};

/// What a stream reads from and writes to. One object belongs to one thread at a time.
class TVLSIBLINGS_API StreamSource {
public:
    virtual ~StreamSource() = default;
    /// Reads exactly `size` bytes at the position and moves it behind them; false, with the position unchanged and `bytes`
    /// unspecified, when fewer are there or the read fails.
    virtual bool Read(void* bytes, std::size_t size) = 0;
    /// Writes `size` bytes at the position and moves it behind them; false, with the position unchanged, when they can't
    /// all be written.
    virtual bool Write(const void* bytes, std::size_t size) = 0;
    /// Moves the position, also behind the end, where reads fail; false and unmoved before the start.
    virtual bool Seek(long long offset, SeekOrigin origin) = 0;
    /// Bytes from the start.
    virtual long long GetPosition() const = 0;
    /// Reads up to `size` bytes, fewer at the end alone, and moves the position behind them. Returns how many.
    virtual std::size_t ReadSome(void* bytes, std::size_t size);
};

/// Which operations a stream over a file is for.
enum class StreamAccess {
    Read,        ///< writing fails
    ReadWrite,   ///< both
};

/// A value: copies refer to the same source and share its position. The source ends with its last copy.
/// A stream without a source is false, and every operation on it fails.
class Stream {
public:
    /// Without a source.
    Stream() = default;
    /// Shares the source; null is none.
    explicit Stream(std::shared_ptr<StreamSource> source) : m_source(std::move(source)) { }

    /// Bytes of the caller, who keeps them alive as long as a copy of the stream lives. The size is fixed.
    TVLSIBLINGS_API static Stream OverMemory(void* bytes, std::size_t size);
    /// The same for bytes that can't be written.
    TVLSIBLINGS_API static Stream OverMemory(const void* bytes, std::size_t size);
    /// `size` bytes from `first` on of an existing file, or as many as it has there now: the stream starts at 0 and
    /// never reaches outside them, nor does it grow the file. It keeps what it has read last and may not see what
    /// others write to the file meanwhile. Without a source when the file can't be opened, is no
    /// regular file or ends before `first`.
    TVLSIBLINGS_API static Stream OpenFile(const TvlString& path, StreamAccess access, long long first = 0,
        long long size = std::numeric_limits<long long>::max());

    /// For adding to a file, made when it is missing: each write goes behind what the file has at that moment, in one
    /// step among all processes. Reading and moving fail. Without a source when the file can't be opened.
    TVLSIBLINGS_API static Stream AppendToFile(const TvlString& path);

    /// Whether there is a source.
    explicit operator bool() const { return m_source != nullptr; }
    /// The same stream by the system's interface, for reading on from the position, and writing. It lives as long as a copy
    /// of this stream that was asked for it, or longer for who adds a reference. Null without a source.
    TVLSIBLINGS_API operator IStream*() const;
    /// Lets go of the source.
    void Release()
    {
        m_interface.reset();
        m_source.reset();
    }
    /// As StreamSource::Read.
    bool Read(void* bytes, std::size_t size) { return m_source && m_source->Read(bytes, size); }
    /// As StreamSource::ReadSome.
    std::size_t ReadSome(void* bytes, std::size_t size) { return m_source ? m_source->ReadSome(bytes, size) : 0; }
    /// As StreamSource::Write.
    bool Write(const void* bytes, std::size_t size) { return m_source && m_source->Write(bytes, size); }
    /// As StreamSource::Seek.
    bool Seek(long long offset, SeekOrigin origin) { return m_source && m_source->Seek(offset, origin); }
    /// Bytes from the start; 0 without a source.
    long long GetPosition() const { return m_source ? m_source->GetPosition() : 0; }

private:
    std::shared_ptr<StreamSource> m_source;
    mutable std::shared_ptr<IStream> m_interface;   // made on first use
};

}   // namespace TvlUtils
