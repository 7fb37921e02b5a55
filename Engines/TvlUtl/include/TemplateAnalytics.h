// What is told of the template that a new document is made from.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlConfig/ProductAnalytics.h"

class ITovelCmn_Doc;

/// Properties that several events have in common.
namespace ProductAnalytics::Helpers {

/// Properties for the event that the application sends: those of the document, and those of the template, which take the
/// place of others of their name. A template that can't be opened counts as one of the user's own.
/// @param document      the new document; null gives no properties, and the file is left alone
/// @param templatePath  full path of the template's file
/// @param multipageView whether the document shows several pages at once
TVLUTL_API PropertyMap GetTemplateTrackData(
    ITovelCmn_Doc* document, const TvlStringT<wchar_t>& templatePath, bool multipageView);

}   // namespace ProductAnalytics::Helpers
