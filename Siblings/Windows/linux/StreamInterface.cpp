// Nothing but this file knows the interface here: it has what its callers need of it.
#include "Windows/StreamInterface.h"

#include <algorithm>

struct IStream {
    explicit IStream(std::shared_ptr<TvlUtils::StreamSource> stream) : source(std::move(stream)) { }
    std::shared_ptr<TvlUtils::StreamSource> source;
};

std::shared_ptr<IStream> MakeStreamInterface(std::shared_ptr<TvlUtils::StreamSource> source)
{
    return source ? std::make_shared<IStream>(std::move(source)) : nullptr;
}

bool ReadStreamToEnd(IStream& stream, std::string& bytes, std::size_t limit)
{
    constexpr std::size_t kPiece = 64 * 1024;
    bytes.clear();
    for (std::size_t done = kPiece; done == kPiece;) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kPiece);
        done = stream.source->ReadSome(bytes.data() + size, kPiece);
        bytes.resize(size + done);
        if (bytes.size() > limit)
            return false;
    }
    return true;
}

bool WriteStream(IStream& stream, std::string_view bytes) { return stream.source->Write(bytes.data(), bytes.size()); }
