// Properties of a document: typed values under names, kept as one XML entry of its container.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Any.h"

#include <memory>
#include <string>

/// Properties of documents; the schemas have their names.
namespace Metadata {

/// Types of values, with what an Any holds of them.
enum class Type {
    Integer,          ///< int
    Boolean,          ///< bool
    Text,             ///< TvlString
    LanguageTexts,    ///< MultiLanguageString
    Identifier,       ///< TvlUtils::Guid
    IdentifierList,   ///< std::vector<TvlUtils::Guid>
};

/// A property: its name in the container, and the type that its value should have. Other containers may have written
/// another type, which reading then gives.
struct Definition {
    const wchar_t* name;   // unique in its container
    Type type;             // that the value should have
};

/// The properties of one container. A value; one thread at a time.
class TVLSIBLINGS_API Container {
public:
    /// Without properties.
    Container();
    /// @{
    /// Takes the properties over; the other is left for assignment alone.
    Container(Container&&) noexcept;
    Container& operator=(Container&&) noexcept;
    /// @}
    ~Container();

    /// Stores a value; an Any without a value removes the property. False for a type that can't be stored.
    bool SetMetadata(const Definition& property, const TvlUtils::Any& value);
    /// Stores a text in one language, beside those of other languages; a property of type Text has one for all.
    bool SetStringMetadata(const Definition& property, const TvlString& language, const TvlString& text);
    /// The value in the type that it is stored with; without a value when there is none or it can't be read as that type.
    TvlUtils::Any GetMetadata(const Definition& property) const;

    /// Whether what is held differs from what was read.
    bool IsChanged() const;
    /// Takes over the bytes of an XML document, which are input from outside. False, with nothing held, when they are
    /// no document of this kind.
    bool FromBytes(const std::string& bytes);
    /// The XML document. What other writers put into it is kept.
    std::string ToBytes() const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_tree;
};

}   // namespace Metadata
