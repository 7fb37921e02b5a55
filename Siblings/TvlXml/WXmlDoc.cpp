// Documents over pugixml.
#include "siblings/TvlXml/WXmlDoc.h"

#include "Windows/StreamInterface.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlUtils/SystemIO.h"

#include <algorithm>
#include <pugixml.hpp>

using TvlUtils::LogLevel;
using TvlUtils::LogMessage;

namespace {
/// Why a document's bytes are refused without looking at them as XML; null when they are not. Every element and every
/// attribute needs one of two characters, and memory that is many times larger.
const char* ReasonAgainst(std::string_view bytes)
{
    constexpr std::ptrdiff_t kMostMarks = WXmlDoc::kMaxElements * 8;   // an element's two tags, and some attributes
    if (bytes.size() > WXmlDoc::kMaxBytes)
        return "too large";
    if (std::ssize(bytes) <= kMostMarks)
        return nullptr;
    const auto marks = std::count_if(bytes.begin(), bytes.end(), [](char c) { return c == '<' || c == '='; });
    return marks > kMostMarks ? "too many elements and attributes" : nullptr;
}

/// Why the nodes below this one are refused; null when they are not. Calls itself no deeper than `depth`.
const char* ReasonAgainst(const pugi::xml_node& node, int depth, int& elements)
{
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
        if (depth == 0)
            return "too many elements within each other";
        if (child.type() == pugi::node_element && ++elements > WXmlDoc::kMaxElements)
            return "too many elements";
        if (const char* const reason = ReasonAgainst(child, depth - 1, elements))
            return reason;
    }
    return nullptr;
}

/// Collects a document's bytes.
struct ByteWriter final : pugi::xml_writer {
    void write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }
    std::string bytes;
};
}   // namespace

struct WXmlDoc::Tree {
    std::string bytes;   // of the file, which the tree's texts lie in
    pugi::xml_document document;
};

WXmlDoc::WXmlDoc(bool keepBlanks) : m_tree(std::make_unique<Tree>()), m_keepBlanks(keepBlanks) { }
WXmlDoc::~WXmlDoc() = default;

bool WXmlDoc::Load(const TvlString& path)
{
    ReleaseDocument();
    std::string bytes;
    if (const auto read = TvlUtils::SystemIO::File::ReadAll(path, bytes, kMaxBytes); !read) {
        LogMessage(LogLevel::Warning, TvlString().Format(L"\"%s\" can't be read: %s", path.Std(), read.Reason().Std()));
        return false;
    }
    return Parse(std::move(bytes), path);
}

bool WXmlDoc::Load(IStream* stream)
{
    ReleaseDocument();
    std::string bytes;
    return stream && ReadStreamToEnd(*stream, bytes, kMaxBytes) && Parse(std::move(bytes), L"a stream");
}

bool WXmlDoc::CreateFromString(const TvlString& text) { return LoadBytes(TvlPlatform::ToUtf8(text)); }
bool WXmlDoc::LoadBytes(std::string_view bytes) { return Parse(std::string(bytes), L"a text"); }

bool WXmlDoc::Parse(std::string bytes, const TvlString& origin)
{
    ReleaseDocument();
    const char* reason = ReasonAgainst(bytes);
    std::ptrdiff_t place = 0;
    if (!reason) {
        m_tree->bytes = std::move(bytes);
        const unsigned options = pugi::parse_default | (m_keepBlanks ? pugi::parse_ws_pcdata : 0);
        const auto parsed = m_tree->document.load_buffer_inplace(m_tree->bytes.data(), m_tree->bytes.size(), options);
        if (parsed.status == pugi::status_out_of_memory) {
            ReleaseDocument();
            throw std::bad_alloc();   // it may well be a document
        }
        int elements = 0;
        reason = parsed ? ReasonAgainst(m_tree->document, kMaxDepth, elements) : parsed.description();
        place = parsed.offset;
    }
    if (!reason)
        return true;
    ReleaseDocument();
    LogMessage(LogLevel::Warning,
        TvlString().Format(
            L"\"%s\" is no XML document: %S at byte %I64d", origin.Std(), reason, static_cast<long long>(place)));
    return false;
}

std::string WXmlDoc::SaveBytes() const
{
    ByteWriter writer;
    m_tree->document.save(writer, "\t", pugi::format_default, pugi::encoding_utf8);
    return std::move(writer.bytes);
}

bool WXmlDoc::Save(IStream* stream) const { return stream && IsLoaded() && WriteStream(*stream, SaveBytes()); }

bool WXmlDoc::Save(const TvlString& path) const
{
    const auto saved = TvlUtils::SystemIO::File::WriteAside(path, SaveBytes());
    if (!saved)
        LogMessage(
            LogLevel::Error, TvlString().Format(L"\"%s\" can't be written: %s", path.Std(), saved.Reason().Std()));
    return static_cast<bool>(saved);
}

bool WXmlDoc::IsLoaded() const { return static_cast<bool>(m_tree->document.document_element()); }
void WXmlDoc::ReleaseDocument()
{
    m_tree->document.reset();
    m_tree->bytes = {};
}

WXmlNode WXmlDoc::GetRootNode() const { return WXmlNode(m_tree->document.document_element().internal_object()); }

WXmlNodeList WXmlDoc::GetNodes(const WXPath& path) const
{
    WXmlNodeList nodes;
    GetRootNode().GetNodes(path, nodes);
    return nodes;
}
