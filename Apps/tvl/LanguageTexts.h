// The texts of a language folder, and their faults beside another language's.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// What is wrong, each a line: "file: key: problem" or "file: problem".
using LanguageFaults = std::vector<std::string>;

/// UTF-8 texts by key, by the name of their file.
using LanguageTexts = std::map<std::string, std::map<std::string, std::string>>;

/// The name of a language's folder.
std::string LanguageFolderName(const std::filesystem::path& folder);

/// The texts of "Data/Texts" in a language's folder. A file that can't be read is a fault, and so is a key that stands
/// there twice: the library would take either text.
LanguageTexts ReadLanguageTexts(const std::filesystem::path& folder, LanguageFaults& faults);

/// Adds what keeps texts from taking the place of `english`: keys missing or too many, texts that are empty, forms with
/// other arguments, lists with another number of items, and names that are longer than the library shows.
void CompareTexts(const LanguageTexts& texts, const LanguageTexts& english, LanguageFaults& faults);

/// Adds the faults of "Data/info.json": its three strings "langCode", "dirName" and "uiName", of which the
/// second is the folder's own name.
void CheckLanguageInfo(const std::filesystem::path& folder, LanguageFaults& faults);
