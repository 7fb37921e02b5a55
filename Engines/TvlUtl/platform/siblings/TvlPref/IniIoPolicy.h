// Preferences as texts in a settings file (.ini).
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/IniParser.h"

#include <memory>

namespace TvlPref {

/// Reads and writes texts of a settings file by keys of the form "section/name": what stands before the last slash names
/// the section, behind `Prefix` and a slash where there are both. The section of a key without a slash is the prefix,
/// which may be empty.
///
/// In the file a text of ASCII letters, digits and "-_ .:<>\/()[]!$" without a blank at its ends stands for itself. Any
/// other is ">" and its UTF-16 units in hexadecimal, whose padding is that of the files that users have: the units 15, 255 and
/// 4095 get three digits, so that such a text is not read back as it was, nor is one of the plain kind that
/// begins with ">". ReadsBack tells.
class TVLSIBLINGS_API IniIoPolicy {
public:
    /// @param parser reads and writes in the place of the system's calls; null for those
    IniIoPolicy(TvlString fileName, TvlString prefix, std::shared_ptr<TvlUtils::IniParser> parser = nullptr);

    /// False, with `value` unchanged, when there is no such key.
    bool Read(const TvlString& key, TvlString& value) const;
    /// False when the file can't be written.
    bool Write(const TvlString& key, const TvlString& value) const;

    /// The form of a text in a file.
    static TvlString Encode(const TvlString& text);
    /// What is read from the form of a text in a file.
    static TvlString Decode(const TvlString& text);
    /// Whether a text comes back as it was written.
    static bool ReadsBack(const TvlString& text) { return Decode(Encode(text)) == text; }

    TvlString FileName;   // as Ports::ProfileFiles takes it
    TvlString Prefix;     // what stands before all sections; may be empty

private:
    /// The text in the file; false when there is none.
    bool ReadText(const TvlString& section, const TvlString& name, TvlString& text) const;

    std::shared_ptr<TvlUtils::IniParser> m_parser;
};

}   // namespace TvlPref
