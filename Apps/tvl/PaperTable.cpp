#include "PaperTable.h"

#include "MeasureOptions.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <vector>

namespace {
constexpr int kInch = 1;
constexpr int kMillimetre = 2;
constexpr double kPointsPerInch = 72.0;
constexpr const char* kBlanks = " \t\r";

std::vector<std::string> Words(std::string line, const char* separators)
{
    for (char& c : line)
        if (std::string_view(separators).find(c) != std::string_view::npos)
            c = ' ';
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

/// The parts between commas, which may have blanks in them.
std::vector<std::string> CommaParts(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> parts;
    for (std::string part; std::getline(stream, part, ',');) {
        const std::size_t first = std::min(part.find_first_not_of(kBlanks), part.size());
        parts.push_back(part.substr(first, part.find_last_not_of(kBlanks) + 1 - first));
    }
    return parts;
}

std::optional<TablePaper> Paper(
    const std::string& name, const std::string& width, const std::string& height, const std::string& unit)
{
    const auto w = FiniteNumber(width);
    const auto h = FiniteNumber(height);
    if (name.empty() || !w || !h || *w <= 0.0 || *h <= 0.0)
        return std::nullopt;
    if (unit == "mm")
        return TablePaper{name, *w, *h, kMillimetre};
    if (unit == "in")
        return TablePaper{name, *w, *h, kInch};
    if (unit == "pt")
        return TablePaper{name, *w / kPointsPerInch, *h / kPointsPerInch, kInch};
    return std::nullopt;
}
}   // namespace

std::optional<TablePaper> ReadPaperLine(const std::string& line)
{
    constexpr const char* kPpd = "*PaperDimension ";
    if (line.starts_with(kPpd)) {
        const auto words = Words(line.substr(std::string(kPpd).size()), "/:\"\t\r");
        return words.size() < 3 ? std::nullopt : Paper(words[0], words[words.size() - 2], words.back(), "pt");
    }
    if (line.find(',') != std::string::npos) {
        const auto parts = CommaParts(line);
        return parts.size() != 4 ? std::nullopt : Paper(parts[0], parts[1], parts[2], parts[3]);
    }
    const auto words = Words(line, "\t\r");
    if (words.size() != 3 && words.size() != 4)
        return std::nullopt;
    return Paper(words[0], words[1], words[2], words.size() == 4 ? words[3] : "pt");
}
