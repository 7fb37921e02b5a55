// Names in containers: entries and properties.
#pragma once

#include "siblings/TvrContainer/Metadata.h"

/// What every container of the suite has. Names of entries use "/" between their elements.
namespace ZipContainerSchema {

/// What the document consists of; metadata, thumbnails and the like lie outside.
inline constexpr const wchar_t* contentDir = L"content/";
/// Path in the container of a file of the content.
inline TvlString GetContentFilename(const TvlString& name) { return contentDir + name; }
/// There when the workspace is meant for fingers.
inline constexpr const wchar_t* touchInfoFile = L"content/touchinfo.xml";
/// All properties, as one XML document.
inline constexpr const wchar_t* metadataFile = L"metadata/metadata.xml";
/// The first file in it is the thumbnail.
inline constexpr const wchar_t* thumbnailDir = L"metadata/thumbnails/";

namespace Metadata {
/// @{
/// What users see of the document, one text per language.
inline constexpr ::Metadata::Definition Title{L"Title", ::Metadata::Type::LanguageTexts};
inline constexpr ::Metadata::Definition Category{L"Category", ::Metadata::Type::LanguageTexts};
inline constexpr ::Metadata::Definition Description{L"Description", ::Metadata::Type::LanguageTexts};
/// @}
/// Identity of the document, shared among its copies.
inline constexpr ::Metadata::Definition DocumentID{L"DocumentID", ::Metadata::Type::Identifier};
/// Identity of this copy.
inline constexpr ::Metadata::Definition InstanceID{L"InstanceID", ::Metadata::Type::Identifier};
/// Instances that this copy was made from, the eldest first.
inline constexpr ::Metadata::Definition DerivedFrom{L"DerivedFrom", ::Metadata::Type::IdentifierList};
/// @{
/// Whether the document comes from the suite's content library, and its name there.
inline constexpr ::Metadata::Definition FromTovelLibrary{L"FromTovelLibrary", ::Metadata::Type::Boolean};
inline constexpr ::Metadata::Definition ContentUniqueName{L"ContentUniqueName", ::Metadata::Type::LanguageTexts};
/// @}
}   // namespace Metadata

}   // namespace ZipContainerSchema

/// Workspaces, *.tvws.
namespace WorkspaceContainerSchema {

// Files of the content; ZipContainerSchema::GetContentFilename gives their paths in the container.

/// Configuration of the user interface, XML.
inline constexpr const wchar_t* workspaceFile = L"workspace.xml";
/// Settings of the workspace, a private profile file.
inline constexpr const wchar_t* settingsFile = L"settings.ini";
/// What an exported workspace contains, XML.
inline constexpr const wchar_t* exportSettingsFile = L"exportsettings.xml";
/// Folder of icons in the content.
inline constexpr const wchar_t* iconsDir = L"icons/";

namespace Metadata {
/// The group that lists show the workspace in.
inline constexpr ::Metadata::Definition Category = ZipContainerSchema::Metadata::Category;
/// Position in lists, smaller ones first.
inline constexpr ::Metadata::Definition UIOrder{L"UIOrder", ::Metadata::Type::Integer};
}   // namespace Metadata

}   // namespace WorkspaceContainerSchema

/// Documents and templates.
namespace TvrSchema::Metadata {
/// Name of the document's paper.
inline constexpr ::Metadata::Definition PageSizeName{L"PageSizeName", ::Metadata::Type::Text};
}   // namespace TvrSchema::Metadata
