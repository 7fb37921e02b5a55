// The document of a session: pages of a paper, with frames that refer to each other. Lengths are in tenths of a micron.
#pragma once

#include "Duplication.h"
#include "siblings/TvlComponent/Document.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <memory>
#include <string>
#include <vector>

/// A box on a page. The text that does not fit goes on in another one of the same page.
class Frame : public TvlUtl::Duplicatable {
public:
    TvlUtl::IDuplicatable* Duplicate(TvlUtl::IDuplicationContext* context) const override;
    void CopyTo(TvlUtl::IDuplicatable& target, TvlUtl::IDuplicationContext& context) const override;

    std::string name;   // ASCII letters
    double x = 0.0, y = 0.0, width = 0.0, height = 0.0;
    Frame* next = nullptr;   // not owned
};

class Page : public TvlUtl::Duplicatable {
public:
    TvlUtl::IDuplicatable* Duplicate(TvlUtl::IDuplicationContext* context) const override;
    void CopyTo(TvlUtl::IDuplicatable& target, TvlUtl::IDuplicationContext& context) const override;
    /// The frame of a name, or null.
    Frame* Find(const std::string& name) const;
    Frame& Add(std::string name);

    int width = 0, height = 0;
    std::vector<std::unique_ptr<Frame>> frames;
};

class Flyer : public ITovelCmn_Doc {
public:
    TvlUtils::Any GetStatistic(DocumentStatistic statistic) const override;
    bool HasMetadata(const GUID&) const override { return false; }
    TvlUtils::Any GetMetadata(const GUID&) const override { return {}; }

    /// Writes the document as SVG 1.1, which it is read from again; false when that fails.
    bool Save(const TvlString& path);
    /// Takes the place of what the document was; false, and no change, when the file is none of its own.
    bool Open(const TvlString& path);

    std::vector<std::unique_ptr<Page>> pages;

private:
    TvlString m_path;   // empty before the first save
};
