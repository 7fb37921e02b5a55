#include "UILanguageDS.h"

#include "UILanguage.h"
#include "siblings/DataBinding/DataSourceFactory.h"

namespace {
DataSourceFactory<UILanguageDS> factory;
}

UILanguageDS::UILanguageDS() { CallOnPostConstruct(TvlUtils::Delegate<void()>::To<&UILanguageDS::Declare>(this)); }

std::shared_ptr<IDataSourceBase> UILanguageDS::GetSource() { return factory.GetSource(); }

void UILanguageDS::Declare()
{
    const auto get = [] {
        TvlString name;
        IGLB_UILanguage::GetInst().GetLanguageDirName(name);
        return DataSourceValue(name);
    };
    DeclareProperty(kLangDirCode, get, {});
}
