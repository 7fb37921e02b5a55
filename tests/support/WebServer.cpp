#include "WebServer.h"

WebServer::WebServer(Answer answer) : m_answer(std::move(answer)), m_thread([this] { Serve(); }) { }

WebServer::~WebServer()
{
    m_stopped = true;
    LoopbackSocket::Connect(m_listener.Port());   // wakes the thread
    m_thread.join();
}

std::wstring WebServer::Url(const std::wstring& path) const
{
    return L"http://127.0.0.1:" + std::to_wstring(m_listener.Port()) + path;
}

void WebServer::Serve()
{
    for (;;) {
        const LoopbackSocket connection = m_listener.Accept();
        if (m_stopped)
            return;
        std::string request;
        while (request.find("\r\n\r\n") == std::string::npos) {
            const std::string more = connection.Receive();
            if (more.empty())
                break;
            request += more;
        }
        m_answer(request.substr(0, request.find("\r\n\r\n")), connection);
    }
}
