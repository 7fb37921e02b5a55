// Why the text of a field has no value: for the message beside the field.
#pragma once

#include "WEqParser.h"
#include "WUnit.h"

/// Evaluates a text as WUnit::StringToValue does and tells where it went wrong. `problem` is None for a text that has a
/// value. `position` counts characters of `text`.
TVLUTL_API WParseDiagnosis DiagnoseFieldText(
    WUnit& units, int id, const TvlString& text, unsigned flags, DRG angleMode);

/// What a problem means, in plain English, such as "a value is expected here"; empty for None.
TVLUTL_API TvlString DescribeParseProblem(WParseProblem problem);
