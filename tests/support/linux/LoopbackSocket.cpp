#include "LoopbackSocket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace {
int Descriptor(std::uintptr_t handle) { return static_cast<int>(handle); }

std::uintptr_t Checked(int descriptor)
{
    if (descriptor < 0)
        throw std::runtime_error("no socket");
    return static_cast<std::uintptr_t>(descriptor);
}

/// Binds or connects a socket; a failed one closes itself.
template <class Call>
void AtLoopback(std::uint16_t port, Call call)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (call(reinterpret_cast<const sockaddr*>(&address), socklen_t{sizeof address}) < 0)
        throw std::runtime_error("no loopback");
}
}   // namespace

LoopbackSocket::~LoopbackSocket()
{
    if (m_handle != kNone)
        close(Descriptor(m_handle));
}

LoopbackSocket LoopbackSocket::Listen()
{
    LoopbackSocket made(Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
    const int descriptor = Descriptor(made.m_handle);
    AtLoopback(0, [&](auto address, auto size) { return bind(descriptor, address, size); });
    if (listen(descriptor, SOMAXCONN) < 0)
        throw std::runtime_error("no connections");
    return made;
}

LoopbackSocket LoopbackSocket::Connect(std::uint16_t port)
{
    LoopbackSocket made(Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
    AtLoopback(port, [&](auto address, auto size) { return connect(Descriptor(made.m_handle), address, size); });
    return made;
}

std::uint16_t LoopbackSocket::Port() const
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(Descriptor(m_handle), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

LoopbackSocket LoopbackSocket::Accept() const
{
    int connection = -1;
    do
        connection = accept(Descriptor(m_handle), nullptr, nullptr);
    while (connection < 0 && errno == EINTR);
    return LoopbackSocket(Checked(connection));
}

std::string LoopbackSocket::Receive() const
{
    std::string bytes(4096, '\0');
    const auto count = recv(Descriptor(m_handle), bytes.data(), bytes.size(), 0);
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
}

bool LoopbackSocket::Send(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const auto count = send(Descriptor(m_handle), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}
