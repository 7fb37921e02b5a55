#include "Windows/StreamInterface.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <windows.h>

#include <objidl.h>

namespace {
using TvlUtils::SeekOrigin;
using TvlUtils::StreamSource;

/// Reads, writes and seeks; what a stream of the suite can't do is answered with E_NOTIMPL.
class SourceStream final : public IStream {
public:
    explicit SourceStream(std::shared_ptr<StreamSource> source) : m_source(std::move(source)) { }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        const bool isKnown = IsEqualIID(id, __uuidof(IUnknown)) || IsEqualIID(id, __uuidof(ISequentialStream))
            || IsEqualIID(id, __uuidof(IStream));
        *object = isKnown ? static_cast<IStream*>(this) : nullptr;
        if (isKnown)
            AddRef();
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG size, ULONG* done) override
    {
        const auto count = static_cast<ULONG>(m_source->ReadSome(bytes, size));
        if (done)
            *done = count;
        return count == size ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG size, ULONG* done) override
    {
        const bool isWritten = m_source->Write(bytes, size);
        if (done)
            *done = isWritten ? size : 0;
        return isWritten ? S_OK : STG_E_MEDIUMFULL;
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override
    {
        if (origin != STREAM_SEEK_SET && origin != STREAM_SEEK_CUR)
            return E_NOTIMPL;
        const auto from = origin == STREAM_SEEK_SET ? SeekOrigin::Start : SeekOrigin::Current;
        if (!m_source->Seek(move.QuadPart, from))
            return STG_E_INVALIDFUNCTION;
        if (position)
            position->QuadPart = static_cast<ULONGLONG>(m_source->GetPosition());
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

private:
    ~SourceStream() = default;

    std::atomic<ULONG> m_references = 1;
    std::shared_ptr<StreamSource> m_source;
};
}   // namespace

std::shared_ptr<IStream> MakeStreamInterface(std::shared_ptr<TvlUtils::StreamSource> source)
{
    if (!source)
        return nullptr;
    return {new SourceStream(std::move(source)), [](IStream* stream) { stream->Release(); }};
}

bool ReadStreamToEnd(IStream& stream, std::string& bytes, std::size_t limit)
{
    constexpr ULONG kPiece = 64 * 1024;
    bytes.clear();
    for (ULONG done = kPiece; done > 0;) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kPiece);
        done = 0;
        const HRESULT result = stream.Read(bytes.data() + size, kPiece, &done);
        bytes.resize(size + std::min(done, kPiece));
        if (FAILED(result) || bytes.size() > limit)
            return false;
    }
    return true;
}

bool WriteStream(IStream& stream, std::string_view bytes)
{
    constexpr std::size_t kPiece = 1 << 30;
    while (!bytes.empty()) {
        ULONG done = 0;
        const auto size = static_cast<ULONG>(std::min(bytes.size(), kPiece));
        if (FAILED(stream.Write(bytes.data(), size, &done)) || done == 0)
            return false;
        bytes.remove_prefix(std::min<std::size_t>(done, size));
    }
    return true;
}
