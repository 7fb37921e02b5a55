// The text of a private profile (.ini) file: sections of keys with values.
#pragma once

#include "siblings/SiblingsApi.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TvlUtils {

/// The text of one file, read and changed line by line: what is not changed stays byte for byte, comments and lines that
/// mean nothing included. Any bytes can be read.
///
/// A line "[name]" begins a section, "key=value" stands in it, and a line whose first character is ";" is a comment.
/// Blanks and tabs around names, keys and values don't count; a value between two quotation marks of a kind is what
/// stands between them. Names and keys compare without case. Of sections with one name, and of keys with one name in a
/// section, the first is taken. Lines in front of the first section are passed over.
class TVLSIBLINGS_API ProfileText {
public:
    /// The most bytes that those take who read whole files; a text here may have more.
    static constexpr std::size_t kMaxBytes = std::size_t{8} << 20;

    /// One line of a section.
    struct KeyValue {
        std::wstring key;     // without the blanks around it
        std::wstring value;   // without the blanks and quotation marks around it
    };
    /// One section.
    struct SectionData {
        std::wstring name;               // without its brackets
        std::vector<KeyValue> entries;   // in the order of the file
    };

    /// @param bytes UTF-16LE behind its byte order mark, else UTF-8 with or without one
    explicit ProfileText(std::string_view bytes = {});

    /// The value of a key; empty when there is no such key.
    std::optional<std::wstring> Value(std::wstring_view section, std::wstring_view key) const;
    /// @{
    /// Names of the sections, and of the keys of a section, in the order of the file.
    std::vector<std::wstring> Sections() const;
    std::vector<std::wstring> Keys(std::wstring_view section) const;
    /// @}
    /// All that Value finds, in the order of the file and in one pass.
    std::vector<SectionData> AllData() const;
    /// Calls `take` with one after another of what AllData gives; it may be moved away.
    void ForEachSection(const std::function<void(SectionData&)>& take) const;

    /// Sets the value of a key. A new key goes behind the last of its section and a new section to the end of the file.
    /// False, and nothing is changed, for texts that would be read back as something else: a line break or a zero in
    /// any of them, "]" in a section, "=" in a key, an empty key, or one that begins like a comment or a section.
    bool SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value);
    /// @{
    /// Deletes a key, or a section with all that stands in it. What is not there is deleted already.
    void DeleteKey(std::wstring_view section, std::wstring_view key);
    void DeleteSection(std::wstring_view section);
    /// @}

    /// The whole text, in the encoding that it was read from.
    std::string Bytes() const;

private:
    enum class Encoding { Utf8, Utf8Marked, Utf16 };
    /// Lines of a section behind its first one.
    struct Range {
        std::size_t first;
        std::size_t end;
    };

    std::optional<Range> FindSection(std::wstring_view section) const;
    std::optional<std::size_t> FindKey(const Range& range, std::wstring_view key) const;

    Encoding m_encoding = Encoding::Utf8;
    std::vector<std::string> m_lines;   // UTF-8 with their line ends, which the last one may lack
    std::string m_lineEnd = "\r\n";     // of new lines
};

}   // namespace TvlUtils
