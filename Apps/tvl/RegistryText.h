// What the registry holds as the text of a registration file (.reg).
#pragma once

#include "RegistryKey.h"

#include <string>

/// A value for people: a text as it is, a number in decimal, the texts of a list one a line, bytes in hexadecimal.
std::string ShowRegistryValue(const RegistryEntry& value);
/// A registration file, version 5.00, with a key and all below it; lines end with a line feed.
std::string ExportRegistryKey(const std::string& path);
