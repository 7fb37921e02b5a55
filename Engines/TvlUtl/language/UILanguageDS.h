// The language as a data source for bound controls.
#pragma once

#include "siblings/DataBinding/DataSourceImpl.h"

#include <memory>

/// Publishes "LangDirCode", the name of the language's folder; empty while no language is chosen.
class UILanguageDS final : public PartialDataSource<UILanguageDS, 0> {
public:
    static constexpr const wchar_t* kLangDirCode = L"LangDirCode";

    UILanguageDS();

    /// The source, made when there is none. Whoever holds it keeps it.
    static std::shared_ptr<IDataSourceBase> GetSource();

private:
    void Declare();
};
