// Containers of documents and templates.
#pragma once

#include "siblings/TvlComponent/PathResolver.h"
#include "siblings/TvrContainer/DocContainer.h"

/// A document or a template.
class TVLSIBLINGS_API TvrContainer : public DocContainer {
public:
    /// No container: false, and every operation fails.
    TvrContainer() = default;

    /// Opens an existing document. Nothing is resolved here: the resolver and what stands behind the mode are of no effect.
    static TvrContainer Open(const TvlString& path, ZipFile::OpenMode mode, RootFileInfo* rootFile,
        const Tvl::PathResolver& resolver, bool, bool);

private:
    using DocContainer::DocContainer;
};
