// Names of workspaces and their files.
#pragma once

namespace WorkspaceNames {

inline constexpr const wchar_t* kExtension = L"tvws";
inline constexpr const wchar_t* kDesktopDefault = L"_default";
inline constexpr const wchar_t* kTabletDefault = L"Default(TM)";
inline constexpr const wchar_t* kIconExtension = L".ico";

}   // namespace WorkspaceNames
