#include "LoopbackSocket.h"

#include <stdexcept>
#include <winsock2.h>

namespace {
std::uintptr_t NewSocket()
{
    // Started once and never shut down: the process' end does that.
    static const int started = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
    const SOCKET made = started == 0 ? socket(AF_INET, SOCK_STREAM, 0) : INVALID_SOCKET;
    if (made == INVALID_SOCKET)
        throw std::runtime_error("no socket");
    return made;
}

/// Binds or connects a socket; a failed one closes itself.
template <class Call>
void AtLoopback(std::uint16_t port, Call call)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (call(reinterpret_cast<const sockaddr*>(&address), int{sizeof address}) != 0)
        throw std::runtime_error("no loopback");
}
}   // namespace

LoopbackSocket::~LoopbackSocket()
{
    if (m_handle != kNone)
        closesocket(m_handle);
}

LoopbackSocket LoopbackSocket::Listen()
{
    LoopbackSocket made(NewSocket());
    AtLoopback(0, [&](auto address, auto size) { return bind(made.m_handle, address, size); });
    if (listen(made.m_handle, SOMAXCONN) != 0)
        throw std::runtime_error("no connections");
    return made;
}

LoopbackSocket LoopbackSocket::Connect(std::uint16_t port)
{
    LoopbackSocket made(NewSocket());
    AtLoopback(port, [&](auto address, auto size) { return connect(made.m_handle, address, size); });
    return made;
}

std::uint16_t LoopbackSocket::Port() const
{
    sockaddr_in address{};
    int size = sizeof address;
    getsockname(m_handle, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

LoopbackSocket LoopbackSocket::Accept() const
{
    const SOCKET connection = accept(m_handle, nullptr, nullptr);
    if (connection == INVALID_SOCKET)
        throw std::runtime_error("no connection");
    return LoopbackSocket(connection);
}

std::string LoopbackSocket::Receive() const
{
    std::string bytes(4096, '\0');
    const int count = recv(m_handle, bytes.data(), static_cast<int>(bytes.size()), 0);
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
}

bool LoopbackSocket::Send(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const int count = send(m_handle, bytes.data(), static_cast<int>(bytes.size()), 0);
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}
