// What the user lets the suite tell about the use of it: names of the preferences, which are true unless they are changed.
#pragma once

/// Names of the preferences that consents are kept under.
namespace Privacy {

/// @{
/// What TvlUtl::Privacy asks and sets under the same name.
inline constexpr const wchar_t* kShareFeatureUsage = L"Privacy/ShareFeatureUsage";
inline constexpr const wchar_t* kShareSearchTerms = L"Privacy/ShareSearchTerms";
inline constexpr const wchar_t* kShowCrashDialogAgain = L"Privacy/ShowCrashDialogAgain";
/// @}

}   // namespace Privacy
