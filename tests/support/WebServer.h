// A web server on the loopback, for tests of what goes through the network.
#pragma once

#include "LoopbackSocket.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

/// Serves one connection after the other while it lives; each is closed when its answer is sent.
class WebServer {
public:
    /// Sends the answer, head and all, to a request: its lines without the last empty one.
    using Answer = std::function<void(const std::string& request, const LoopbackSocket& connection)>;

    explicit WebServer(Answer answer);
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;
    ~WebServer();

    /// The address of a path that begins with "/".
    std::wstring Url(const std::wstring& path) const;

private:
    void Serve();

    LoopbackSocket m_listener = LoopbackSocket::Listen();
    Answer m_answer;
    std::atomic<bool> m_stopped = false;
    std::thread m_thread;
};
