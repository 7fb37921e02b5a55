// Files of papers that are broken on purpose, kept as seeds of the fuzz target: a result for each.
#include "PaperFolders.h"
#include "siblings/TvlXml/WXmlDoc.h"

namespace {

class HostilePapers : public PaperFolders { };

TEST_F(HostilePapers, EndInAStoreOfSomeKind)
{
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PAPER_SEEDS)) {
        const std::string bytes = FileBytes(entry.path());
        Write(User(), bytes);
        CPaperTypeMgr::ReleaseInstance(false);
        WXmlDoc document(false);
        const bool isDocument = document.Load(TvlUtils::SystemIO::FromFilePath(User()));
        try {
            PaperTypeInformation paper;
            for (int index = 0; index < Papers().GetCount(); ++index) {
                EXPECT_TRUE(Papers().GetPaperInfoAt(index, paper));
                TvlUtl::GetPageDimensions(paper);
            }
            Restart();
        } catch (const std::out_of_range&) {
            // An id beyond the number of papers: the object is not made.
        }
        EXPECT_TRUE(isDocument || FileBytes(User()) == bytes) << entry.path() << " was written over";
        ++files;
    }
    EXPECT_GT(files, 20);
}

}   // namespace
