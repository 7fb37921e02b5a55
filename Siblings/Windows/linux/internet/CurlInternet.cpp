// Transfers through libcurl.
#include "Windows/linux/internet/InternetModule.h"

#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"

#include <algorithm>
#include <cstring>
#include <curl/curl.h>
#include <sstream>
#include <string_view>
#include <vector>

namespace Ports {

namespace {
constexpr int kPollMilliseconds = 1000;
constexpr long kMostRedirections = 20;
constexpr long kMostSeconds = 60;   // without a connection, and then without a byte of the answer
// Bytes that are kept for the reader before the transfer rests. Unpacked answers come in pieces that are many times as
// large as what was received: a resting transfer copies all of the rest with every piece that is taken.
constexpr std::size_t kEnough = std::size_t{1} << 20;

struct CurlCloser {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

bool IsProtected(const std::string& url)
{
    const std::unique_ptr<CURLU, CurlCloser> parts(curl_url());
    char* scheme = nullptr;
    const bool isRead = curl_url_set(parts.get(), CURLUPART_URL, url.c_str(), 0) == CURLUE_OK
        && curl_url_get(parts.get(), CURLUPART_SCHEME, &scheme, 0) == CURLUE_OK;
    const bool isProtected = isRead && std::string_view(scheme) == "https";   // small letters, however it was written
    curl_free(scheme);
    return isProtected;
}

/// A transfer that is driven by its reader: it rests while there are bytes that nobody has taken.
class CurlFile final : public InternetFile {
public:
    CurlFile(const std::string& agent, const std::string& url, const std::wstring& headers)
        : m_multi(curl_multi_init()), m_easy(curl_easy_init())
    {
        std::istringstream lines(TvlPlatform::ToUtf8(headers));
        for (std::string line; std::getline(lines, line);) {
            // Which encodings are taken is told to the library, which sends the line itself.
            constexpr std::string_view kEncodings = "Accept-Encoding: ";
            if (line.starts_with(kEncodings))
                curl_easy_setopt(m_easy.get(), CURLOPT_ACCEPT_ENCODING, line.c_str() + kEncodings.size());
            else if (!line.empty())
                m_headers.reset(curl_slist_append(m_headers.release(), line.c_str()));
        }
        CURL* const easy = m_easy.get();
        curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
        curl_easy_setopt(easy, CURLOPT_USERAGENT, agent.c_str());
        curl_easy_setopt(easy, CURLOPT_HTTPHEADER, m_headers.get());
        curl_easy_setopt(easy, CURLOPT_PROXY, "");
        curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
        curl_easy_setopt(easy, CURLOPT_MAXREDIRS, kMostRedirections);
        curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, kMostSeconds);
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, 1L);   // byte a second; a transfer that rests is not counted
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME, kMostSeconds);
        curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
        // As WinINet does: who asked for a protected connection is not led to another one.
        if (IsProtected(url))
            curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "https");
        curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &CurlFile::Take);
        curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
        curl_multi_add_handle(m_multi, easy);
    }

    ~CurlFile() override
    {
        curl_multi_remove_handle(m_multi, m_easy.get());
        curl_multi_cleanup(m_multi);
    }
    CurlFile(const CurlFile&) = delete;
    CurlFile& operator=(const CurlFile&) = delete;

    /// Whether the server has answered, whatever came of it then.
    bool HasAnswer() const
    {
        long status = 0;
        return curl_easy_getinfo(m_easy.get(), CURLINFO_RESPONSE_CODE, &status) == CURLE_OK && status != 0;
    }

    /// Drives the transfer until there are bytes or it ends; false when it failed.
    bool Drive()
    {
        m_taken = 0;
        m_bytes.clear();
        curl_easy_pause(m_easy.get(), CURLPAUSE_CONT);
        while (m_bytes.empty() && !m_finished) {
            int running = 0;
            if (curl_multi_perform(m_multi, &running) != CURLM_OK)
                return false;
            int left = 0;
            if (const CURLMsg* const message = curl_multi_info_read(m_multi, &left)) {
                Finish(message->data.result);
            } else if (m_bytes.empty()) {
                curl_multi_poll(m_multi, nullptr, 0, kPollMilliseconds, nullptr);
            }
        }
        return !m_bytes.empty() || m_result == CURLE_OK;
    }

    std::optional<std::size_t> Read(void* data, std::size_t size) override
    {
        if (m_taken == m_bytes.size() && !m_finished && !Drive())
            return std::nullopt;
        const std::size_t count = std::min(size, m_bytes.size() - m_taken);
        if (count == 0 && m_result != CURLE_OK)
            return std::nullopt;
        if (count > 0)
            std::memcpy(data, m_bytes.data() + m_taken, count);
        m_taken += count;
        return count;
    }

private:
    void Finish(CURLcode result)
    {
        m_finished = true;
        m_result = result;
        // The address may hold what is nobody's business.
        if (result != CURLE_OK)
            TvlUtils::LogMessage(TvlUtils::LogLevel::Warning,
                L"A download ended early: " + TvlPlatform::FromUtf8(curl_easy_strerror(result)));
    }

    static std::size_t Take(char* data, std::size_t size, std::size_t count, void* self)
    {
        auto& file = *static_cast<CurlFile*>(self);
        if (file.m_bytes.size() >= kEnough)
            return CURL_WRITEFUNC_PAUSE;
        file.m_bytes.insert(file.m_bytes.end(), data, data + size * count);
        return size * count;
    }

    CURLM* m_multi;
    std::unique_ptr<CURL, CurlCloser> m_easy;
    std::unique_ptr<curl_slist, CurlCloser> m_headers;
    std::vector<char> m_bytes;   // what has come in
    std::size_t m_taken = 0;     // and how much of it has been read
    bool m_finished = false;
    CURLcode m_result = CURLE_OK;
};

bool IsUrl(const std::wstring& url)
{
    const std::unique_ptr<CURLU, CurlCloser> parts(curl_url());
    return curl_url_set(parts.get(), CURLUPART_URL, TvlPlatform::ToUtf8(url).c_str(), CURLU_NON_SUPPORT_SCHEME)
        == CURLUE_OK;
}

std::unique_ptr<InternetFile> OpenUrl(const std::wstring& agent, const std::wstring& url, const std::wstring& headers)
{
    static const CURLcode isReady = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (isReady != CURLE_OK)
        return nullptr;
    auto file = std::make_unique<CurlFile>(TvlPlatform::ToUtf8(agent), TvlPlatform::ToUtf8(url), headers);
    if (!file->Drive() && !file->HasAnswer())
        return nullptr;
    return file;
}
}   // namespace

}   // namespace Ports

const Ports::InternetModule kTvlInternetModule = {&Ports::IsUrl, &Ports::OpenUrl};
