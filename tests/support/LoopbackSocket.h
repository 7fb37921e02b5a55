// The system's sockets, as far as a server on the loopback needs them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// A stream socket of this machine alone. Functions that make one throw std::runtime_error.
class LoopbackSocket {
public:
    LoopbackSocket(LoopbackSocket&& other) noexcept : m_handle(std::exchange(other.m_handle, kNone)) { }
    LoopbackSocket& operator=(LoopbackSocket&&) = delete;
    ~LoopbackSocket();

    /// A socket that waits for connections, at a port that nobody else has.
    static LoopbackSocket Listen();
    static LoopbackSocket Connect(std::uint16_t port);
    std::uint16_t Port() const;
    /// Waits for a connection.
    LoopbackSocket Accept() const;
    /// What has come in, when something has; empty at the end.
    std::string Receive() const;
    /// False when the other side has gone.
    bool Send(std::string_view bytes) const;

private:
    static constexpr std::uintptr_t kNone = ~std::uintptr_t{0};
    explicit LoopbackSocket(std::uintptr_t handle) : m_handle(handle) { }

    std::uintptr_t m_handle;
};
