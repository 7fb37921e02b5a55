// Data sources: declared properties, factories by name, changes.
#include "siblings/DataBinding/DataSourceFactory.h"
#include "siblings/DataBinding/DataSourceImpl.h"

#include <gmock/gmock.h>

namespace Sources {

class Volume : public PartialDataSource<Volume, 0> {
public:
    Volume() { CallOnPostConstruct(TvlUtils::Delegate<void()>::To<&Volume::Declare>(this)); }

private:
    void Declare()
    {
        DeclareProperty(
            L"Level", [this] { return level; }, [this](const DataSourceValue& value) { level = std::get<int>(value); });
        DeclareProperty(L"Name", [] { return TvlString(L"main"); }, {});
    }
    int level = 3;
};

struct Plain { };

}   // namespace Sources

namespace {
using testing::ElementsAre;

TEST(DataSource, IsNamedAfterItsClassOnEveryTarget)
{
    EXPECT_EQ(DataSourceName(typeid(Sources::Volume)), L"Sources::Volume");
    EXPECT_EQ(DataSourceName(typeid(Sources::Plain)), L"Sources::Plain");
    EXPECT_EQ(DataSourceName(typeid(int)), L"int");
}

TEST(DataSource, DeclaresAccessorsOnceItIsBuilt)
{
    DataSourceFactory<Sources::Volume> factory;
    const auto source = factory.GetSource();
    EXPECT_THAT(source->GetPropertyNames(), ElementsAre(L"Level", L"Name"));
    EXPECT_TRUE(source->HasAccessor(L"get_Level"));
    EXPECT_TRUE(source->HasAccessor(L"put_Level"));
    EXPECT_TRUE(source->HasAccessor(L"get_Name"));
    EXPECT_FALSE(source->HasAccessor(L"put_Name")) << "an empty setter isn't declared";

    EXPECT_TRUE(source->PutProperty(L"Level", 7));
    EXPECT_EQ(source->GetProperty(L"Level"), DataSourceValue(7));
    EXPECT_FALSE(source->PutProperty(L"Name", TvlString(L"other")));
    EXPECT_EQ(source->GetProperty(L"Name"), DataSourceValue(TvlString(L"main")));
    EXPECT_EQ(source->GetProperty(L"Missing"), DataSourceValue());
}

TEST(DataSource, IsFoundByNameAndLivesAsLongAsItIsHeld)
{
    auto& registrar = IDataSourceRegistrar::GetInstance();
    {
        DataSourceFactory<Sources::Volume> factory;
        DataSourceFactory<Sources::Volume> second;
        ASSERT_EQ(registrar.FindFactory(L"Sources::Volume"), &factory);
        EXPECT_EQ(factory.GetLiveSource(), nullptr);
        auto source = factory.GetSource();
        EXPECT_EQ(factory.GetLiveSource(), source);
        EXPECT_EQ(factory.GetSource(), source);
        EXPECT_TRUE(DataSourceImpl::AnyLives());
        source.reset();
        EXPECT_EQ(factory.GetLiveSource(), nullptr);
    }
    EXPECT_EQ(registrar.FindFactory(L"Sources::Volume"), nullptr);
}

TEST(DataSource, TellsItsProviderAndThenListeners)
{
    struct Provider : IDataSourceProvider {
        void DataSourceChanged(IDataSourceBase&, const TvlString& property) override { told.push_back(property); }
        std::vector<TvlString> told;
    } provider;
    Sources::Volume source;
    source.SetDataSourceProvider(&provider);
    std::vector<TvlString>& told = provider.told;
    const auto kept = source.GetChangedEvent().Subscribe([&](void* sender) {
        const auto& change = *static_cast<const IDataSourceBase::Change*>(sender);
        EXPECT_EQ(&change.source, &source);
        told.push_back(L"then " + change.property);
    });
    source.NotifyPropertyChanged(L"Level");
    EXPECT_THAT(told, ElementsAre(L"Level", L"then Level"));
    source.SetDataSourceProvider(nullptr);
    source.NotifyPropertyChanged(L"Name");
    EXPECT_EQ(told.size(), 3u);
}

}   // namespace
