// The system's interface of streams, and the one over the suite's own.
#pragma once

#include "siblings/TvlUtils/Stream.h"

#include <memory>
#include <string>
#include <string_view>

/// An interface over a source, with which it shares the position. Null when there is no source.
std::shared_ptr<IStream> MakeStreamInterface(std::shared_ptr<TvlUtils::StreamSource> source);

/// Reads from the position to the end; false when that fails or there are more than `limit` bytes.
bool ReadStreamToEnd(IStream& stream, std::string& bytes, std::size_t limit);
/// Writes all bytes at the position; false when that fails.
bool WriteStream(IStream& stream, std::string_view bytes);
