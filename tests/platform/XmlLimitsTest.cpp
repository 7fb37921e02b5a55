// Documents that are small in a file and large in memory.
#include "siblings/TvlUtils/LogMessage.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <gtest/gtest.h>

namespace {
std::string Times(int count, const std::string& text)
{
    std::string whole;
    for (int i = 0; i < count; ++i)
        whole += text;
    return whole;
}

TEST(WXmlDoc, RefusesWhatWouldTakeTooMuchMemory)
{
    TvlUtils::SetLogReceiver([](TvlUtils::LogLevel, const TvlString&) {});
    constexpr int kElements = WXmlDoc::kMaxElements;
    const struct {
        const char* what;
        std::string bytes;
        bool isLoaded;
    } kDocuments[] = {
        {"as many elements as may be", "<a>" + Times(kElements - 1, "<b/>") + "</a>", true},
        {"one more", "<a>" + Times(kElements, "<b/>") + "</a>", false},
        {"as many within each other as may be", Times(WXmlDoc::kMaxDepth, "<a>") + Times(WXmlDoc::kMaxDepth, "</a>"),
            true},
        {"one more", Times(WXmlDoc::kMaxDepth + 1, "<a>") + Times(WXmlDoc::kMaxDepth + 1, "</a>"), false},
        {"comments in the place of elements", "<a>" + Times(9 * kElements, "<!---->") + "</a>", false},
        {"attributes", "<a " + Times(9 * kElements, "b='' ") + "/>", false},
        {"a long text", "<a>" + std::string(1 << 20, 'b') + "</a>", true},
        {"too long a text", "<a>" + std::string(WXmlDoc::kMaxBytes, 'b') + "</a>", false},
    };
    for (const auto& [what, bytes, isLoaded] : kDocuments) {
        WXmlDoc document(false);
        EXPECT_EQ(document.LoadBytes(bytes), isLoaded) << what;
        EXPECT_EQ(document.IsLoaded(), isLoaded) << what;
    }
    TvlUtils::SetLogReceiver(nullptr);
}
}   // namespace
