// Identifiers as text.
#pragma once

#include "windows/Types.h"

#include <optional>
#include <string>
#include <string_view>

/// The identifier that a text names: five groups of hexadecimal digits of either case with hyphens between, in braces or
/// not. Empty for any other text.
std::optional<GUID> ParseGuid(std::string_view text);
/// The text of an identifier: small letters, hyphens and no braces.
std::string FormatGuid(const GUID& guid);
