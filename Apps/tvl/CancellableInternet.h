// The network for a task that can be cancelled while a server keeps it waiting.
#pragma once

#include "ITaskProgress.h"
#include "windows/Internet.h"

/// Thrown by the operations of CancellableInternet once the task is cancelled.
struct DownloadCancelled { };

/// Stands in the place of the network's port as long as it lives, and tells the task how many bytes have come in. Answers
/// are fetched by a thread of their own, which is left behind by a cancellation: it may wait for its server for ever.
class CancellableInternet final : public Ports::Internet {
public:
    explicit CancellableInternet(TvlUtl::ITaskProgress& task);
    CancellableInternet(const CancellableInternet&) = delete;
    CancellableInternet& operator=(const CancellableInternet&) = delete;
    ~CancellableInternet() override;

    bool IsConnected() const override { return m_system.IsConnected(); }
    bool IsUrl(const std::wstring& url) const override { return m_system.IsUrl(url); }
    std::unique_ptr<Ports::InternetFile> OpenUrl(
        const std::wstring& agent, const std::wstring& url, const std::wstring& headers) override;

private:
    Ports::Internet& m_system;
    TvlUtl::ITaskProgress& m_task;
};
