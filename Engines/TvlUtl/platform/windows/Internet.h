// The network, as far as the library asks: the state of the connection, and reading what an address answers.
#pragma once

#include "siblings/SiblingsApi.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace Ports {

/// What an address answers, read piece by piece. Closed by its end.
class TVLSIBLINGS_API InternetFile {
public:
    virtual ~InternetFile() = default;
    /// InternetReadFile: up to `size` bytes, compressed content already unpacked. 0 bytes is the end; empty when the
    /// connection failed.
    virtual std::optional<std::size_t> Read(void* data, std::size_t size) = 0;
};

/// Asks the network. Calls wait for the answer, on whatever thread.
class TVLSIBLINGS_API Internet {
public:
    /// The system's, or the one that stands in for it.
    static Internet& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Internet*);

    virtual ~Internet() = default;
    /// InternetGetConnectedState. On linux: whether an interface other than the loopback is up and running.
    virtual bool IsConnected() const = 0;
    /// InternetCrackUrlW with ICU_DECODE: whether a text is an address.
    virtual bool IsUrl(const std::wstring& url) const = 0;
    /// InternetOpenW without a proxy, decoding of compressed answers, and InternetOpenUrlW with reload and without
    /// authentication. Null when the address can't be opened; the HTTP status is not looked at. A server that says
    /// nothing for a minute counts as a broken connection. The log tells how a connection broke.
    /// @param headers lines that are sent along, each ended by a line feed
    virtual std::unique_ptr<InternetFile> OpenUrl(
        const std::wstring& agent, const std::wstring& url, const std::wstring& headers) = 0;
};

}   // namespace Ports
