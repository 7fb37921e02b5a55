// Values of tags in readable form. The forms are the same in every language; the words come from the texts.
#include "CExif.h"
#include "ExifFormat.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlResources/Resources.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <span>
#include <string>
#include <string_view>

using Framework::Resources::GetString;
using Bytes = std::span<const unsigned char>;

namespace {
constexpr const wchar_t* kUnreadable = L"71deba1c-a64e-4ac6-aed3-5d26a5b1cc20";
constexpr const wchar_t* kUnknown = L"66e3df64-f855-46c1-a32f-bf8bc2744276";
constexpr const wchar_t* kRed = L"b9650efc-e831-4ec0-8302-ec14db90d302";
constexpr const wchar_t* kGreen = L"dd274247-4ed7-4423-a173-d56cde49d98a";
constexpr const wchar_t* kBlue = L"d6256989-9622-4418-9fbf-09ea1cbba1a3";
constexpr const wchar_t* kSeparator = L", ";

constexpr std::size_t kCharacterCodeSize = 8;   // before the text of a user comment
constexpr std::size_t kVersionSize = 4;
constexpr std::size_t kLongestMakerNote = 100;

struct NumberRow {
    unsigned short number;
    const wchar_t* key;
};

constexpr NumberRow kExposurePrograms[] = {
    {1, L"7236b492-6e52-4e51-821e-6fed9ae48d1a"},   // manual
    {2, L"db6ec4da-cc13-47ac-a35d-139133372ede"},   // normal
    {3, L"d71fc2bf-f4e2-47ed-a8ba-fb30d33aa221"},   // aperture priority
    {4, L"6af8824c-732e-42fc-98c7-97aa1f902e25"},   // shutter priority
    {5, L"82eb72b2-6ba6-4096-80f3-033d25ba9768"},   // creative
    {6, L"9856f912-da63-4aff-8c78-fdb4a6b34507"},   // action
    {7, L"af2deb84-bc07-44a9-95c3-5360b9066713"},   // portrait
    {8, L"3c76b885-e023-4867-96f1-cc0b3cc9f357"},   // landscape
};
constexpr NumberRow kColorSpaces[] = {
    {1, L"ebcfb3ef-003b-4abd-baa8-3bb13ba086f1"},       // sRGB
    {65535, L"fa2b5351-560d-4792-850c-20c6dcbcc3c3"},   // uncalibrated
};
constexpr NumberRow kResolutionUnits[] = {
    {2, L"e006709b-4786-4fa0-87c0-f58fdb372fad"},   // inch
    {3, L"937a7059-b7fe-4462-9f2a-d6ab22bb69ba"},   // centimetre
};
constexpr NumberRow kSensingMethods[] = {
    {2, L"93212030-c1a1-4759-8966-33097d5e308b"},   // one-chip color area
    {3, L"7bd77d28-aa0d-4cb5-8835-c9f2e65a953e"},   // two-chip
    {4, L"a73591d4-ac54-4550-bba4-e1b5fc9133e9"},   // three-chip
    {5, L"86da3b8b-6411-4492-9adb-157c635a9e76"},   // color sequential area
    {7, L"abaaa19a-61c0-4bc5-ba2f-3e17e7d83eed"},   // trilinear
    {8, L"3098f356-8da1-4edf-9726-ce4881aec3c0"},   // color sequential linear
};
constexpr NumberRow kFileSources[] = {{3, L"2f6ddded-47af-4b26-aeb9-d70a17c47c7b"}};   // digital still camera
constexpr NumberRow kSceneTypes[] = {{1, L"41aa2870-05bb-463f-a211-86f293e27dca"}};    // directly photographed

struct VersionRow {
    std::string_view digits;
    const wchar_t* text;
};
constexpr VersionRow kExifVersions[] = {{"0220", L"2.2"}, {"0210", L"2.1"}};
constexpr VersionRow kFlashPixVersions[] = {{"0100", L"1.0"}};

// By the byte that stands for the component or colour.
constexpr const wchar_t* kComponents[] = {
    L"9d4daa7a-4f1b-476d-9d6f-33fe707e7752",   // none
    L"a7b7e92b-993e-4aa5-a16e-9f54e2653058",   // Y
    L"c8871c65-59d5-4f3c-a953-10444699720a",   // Cb
    L"f740429f-201e-4cf5-808c-979d9a87760f",   // Cr
    kRed,
    kGreen,
    kBlue,
};
constexpr const wchar_t* kFilterColors[] = {
    kRed, kGreen, kBlue,
    L"95c82b9e-730d-4be0-9f49-44630b12796f",   // cyan
    L"83aef683-298a-4ce9-b8d3-9dfeea66c2ea",   // magenta
    L"6acc754c-e619-4d9a-adad-91dfc50f1329",   // yellow
    L"a509c639-4f20-4522-9d06-7dbcd198078f",   // white
};

/// A tag's value; empty for a tag whose value was never read.
Bytes ValueOf(const CExifTag& tag) { return tag.data ? Bytes(tag.data, tag.GetBufferSize()) : Bytes(); }

unsigned short BigEndian16(Bytes bytes) { return static_cast<unsigned short>(bytes[0] << 8 | bytes[1]); }

template <class Number>
Number LoadNumber(const unsigned char* bytes)
{
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

/// Narrow text up to its end mark or the end of the bytes.
TvlString NarrowText(Bytes bytes)
{
    const auto end = std::find(bytes.begin(), bytes.end(), 0);
    return TvlPlatform::FromUtf8(
        std::string_view(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(end - bytes.begin())));
}

/// UTF-16LE text up to its end mark or the end of the bytes. A single byte at the end is a unit with a zero above.
TvlString Utf16Text(Bytes bytes)
{
    std::vector<unsigned char> units(bytes.begin(), bytes.end());
    units.resize((units.size() + 1) / 2 * 2);
    std::size_t end = 0;
    while (end < units.size() && (units[end] != 0 || units[end + 1] != 0))
        end += 2;
    return TvlPlatform::FromUtf16Le(units.data(), end);
}

/// Appends a number's digits in place: a list may have 65,536 numbers.
template <class... Arguments>
void AppendNumber(TvlString& text, Arguments... arguments)
{
    char digits[32] = {};
    const auto written = std::to_chars(std::begin(digits), std::end(digits), arguments...);
    for (const char* digit = digits; digit != written.ptr; ++digit)
        text += static_cast<wchar_t>(*digit);
}

/// As "%f".
void AppendReal(TvlString& text, double value) { AppendNumber(text, value, std::chars_format::fixed, 6); }

template <class Number>
void AppendNumberAt(TvlString& text, const unsigned char* item)
{
    AppendNumber(text, LoadNumber<Number>(item));
}

void AppendHexAt(TvlString& text, const unsigned char* item) { AppendNumber(text, unsigned{*item}, 16); }

void AppendSignedRationalAt(TvlString& text, const unsigned char* item)
{
    const auto denominator = LoadNumber<std::int32_t>(item + 4);
    if (denominator == 0)
        text += L'0';
    else
        AppendReal(text, static_cast<double>(LoadNumber<std::int32_t>(item)) / denominator);
}

/// Appends `count` texts with separators between.
template <class Append>
void AppendList(TvlString& text, std::size_t count, Append append)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            text += kSeparator;
        append(i);
    }
}

/// Texts by number, each asked for once: a list of 65,536 bytes has few different ones.
class NamedBytes {
public:
    template <std::size_t count>
    explicit NamedBytes(const wchar_t* const (&keys)[count]) : m_keys(keys)
    {
    }

    bool Names(unsigned char byte) const { return byte < m_keys.size(); }
    const TvlString& operator[](unsigned char byte)
    {
        std::optional<TvlString>& text = m_texts[Names(byte) ? byte : kMostKeys];
        if (!text)
            text = GetString(Names(byte) ? m_keys[byte] : kUnknown);
        return *text;
    }

private:
    static constexpr std::size_t kMostKeys = 7;

    std::span<const wchar_t* const> m_keys;
    std::array<std::optional<TvlString>, kMostKeys + 1> m_texts;   // the last for all bytes without a key
};

/// The text of a value's first item, a number of 1 or 2 bytes; the number itself when it has no row.
TvlString NumberText(Bytes value, std::size_t width, std::span<const NumberRow> rows)
{
    if (value.size() < width)
        return GetString(kUnreadable);
    const unsigned short number = width == 1 ? value[0] : LoadNumber<unsigned short>(value.data());
    for (const NumberRow& row : rows)
        if (row.number == number)
            return GetString(row.key);
    return TvlString().Format(L"%hu", number);
}

TvlString VersionText(Bytes value, std::span<const VersionRow> rows)
{
    if (value.size() < kVersionSize)
        return GetString(kUnreadable);
    const std::string_view digits(reinterpret_cast<const char*>(value.data()), kVersionSize);
    for (const VersionRow& row : rows)
        if (row.digits == digits)
            return row.text;
    return NarrowText(value.first(kVersionSize));
}
}   // namespace

int CExifTag::GetDisplayValue(TvlStringT<wchar_t>& value)
{
    struct Handler {
        unsigned int id;
        TvlString (CExifTag::*text)() const;
    };
    static constexpr Handler kHandlers[] = {
        {34850, &CExifTag::GetExposureProgramDisplayValue},
        {36864, &CExifTag::GetExifVersionDisplayValue},
        {37121, &CExifTag::GetComponentsConfigurationDisplayValue},
        {40960, &CExifTag::GetFlashPixVersionDisplayValue},
        {40961, &CExifTag::GetColorSpaceDisplayValue},
        {41488, &CExifTag::GetFocalPlaneResolutionUnitDisplayValue},
        {41495, &CExifTag::GetSensingMethodDisplayValue},
        {41728, &CExifTag::GetFileSourceDisplayValue},
        {41729, &CExifTag::GetSceneTypeDisplayValue},
        {41730, &CExifTag::GetCFAPatternDisplayValue},
    };
    constexpr unsigned int kUserComment = 37510;

    if (count == 0)
        return 0;
    if (id == kTagMakerNote)
        return GetMakerNoteDisplayValue(value);
    if (id == kUserComment)
        return GetUserCommentDisplayValue(value);
    for (const Handler& handler : kHandlers) {
        if (handler.id == id) {
            value = (this->*handler.text)();
            return 1;
        }
    }
    value.Empty();
    if (type == kTypeText && data)
        data[GetBufferSize() - 1] = 0;
    AppendItems(value);
    return 1;
}

int CExifTag::GetMakerNoteDisplayValue(TvlStringT<wchar_t>& value) const
{
    const Bytes bytes = ValueOf(*this);
    value.Empty();
    if (bytes.size() > kLongestMakerNote)
        return 0;
    value = NarrowText(bytes);
    return 1;
}

int CExifTag::GetUserCommentDisplayValue(TvlStringT<wchar_t>& value) const
{
    const Bytes bytes = ValueOf(*this);
    value.Empty();
    if (bytes.size() <= kCharacterCodeSize)
        return 0;
    const ExifCharacterCode code = ReadCharacterCode(bytes.data());
    if (code == kCodeOther)
        return 0;
    const Bytes text = bytes.subspan(kCharacterCodeSize);
    value = code == kCodeAscii ? NarrowText(text) : Utf16Text(text);
    return 1;
}

/// Appends the items of a tag without a form of its own.
void CExifTag::AppendItems(TvlStringT<wchar_t>& value) const
{
    using AppendItem = void (*)(TvlString&, const unsigned char*);
    static constexpr AppendItem kForms[] = {nullptr, AppendNumberAt<std::uint8_t>, nullptr,
        AppendNumberAt<std::uint16_t>, AppendNumberAt<std::uint32_t>, nullptr, nullptr, AppendHexAt, nullptr,
        AppendNumberAt<std::int32_t>, AppendSignedRationalAt};

    const Bytes bytes = ValueOf(*this);
    const std::size_t itemSize = GetDataItemSize();
    if (type == kTypeText)
        value = NarrowText(bytes);
    else if (type == kTypeRational)
        AppendList(value, bytes.size() / itemSize,
            [&](std::size_t i) { value += GetSingleRationalDisplayValue(static_cast<unsigned int>(i)); });
    else if (itemSize > 0)
        AppendList(value, bytes.size() / itemSize, [&](std::size_t i) { kForms[type](value, &bytes[i * itemSize]); });
}

TvlStringT<wchar_t> CExifTag::GetExposureProgramDisplayValue() const
{
    return NumberText(ValueOf(*this), 2, kExposurePrograms);
}

TvlStringT<wchar_t> CExifTag::GetExifVersionDisplayValue() const { return VersionText(ValueOf(*this), kExifVersions); }

TvlStringT<wchar_t> CExifTag::GetFlashPixVersionDisplayValue() const
{
    return VersionText(ValueOf(*this), kFlashPixVersions);
}

TvlStringT<wchar_t> CExifTag::GetColorSpaceDisplayValue() const { return NumberText(ValueOf(*this), 2, kColorSpaces); }

TvlStringT<wchar_t> CExifTag::GetFocalPlaneResolutionUnitDisplayValue() const
{
    return NumberText(ValueOf(*this), 2, kResolutionUnits);
}

TvlStringT<wchar_t> CExifTag::GetSensingMethodDisplayValue() const
{
    return NumberText(ValueOf(*this), 2, kSensingMethods);
}

TvlStringT<wchar_t> CExifTag::GetFileSourceDisplayValue() const { return NumberText(ValueOf(*this), 1, kFileSources); }

TvlStringT<wchar_t> CExifTag::GetSceneTypeDisplayValue() const { return NumberText(ValueOf(*this), 1, kSceneTypes); }

TvlStringT<wchar_t> CExifTag::GetComponentsConfigurationDisplayValue() const
{
    const Bytes bytes = ValueOf(*this);
    if (bytes.size() < 4)
        return GetString(kUnreadable);
    NamedBytes names(kComponents);
    TvlString text;
    AppendList(text, std::min<std::size_t>(count, bytes.size()), [&](std::size_t i) {
        text += names[bytes[i]];
        if (names.Names(bytes[i]))
            return;
        text += L" (";
        AppendHexAt(text, &bytes[i]);
        text += L')';
    });
    return text;
}

TvlStringT<wchar_t> CExifTag::GetCFAPatternDisplayValue() const
{
    // Both sizes are big-endian in every block: the value's type is "undefined", so nothing was swapped.
    constexpr std::size_t kSizes = 4;
    const Bytes bytes = ValueOf(*this);
    if (bytes.size() < kSizes)
        return GetString(kUnreadable);
    const unsigned short width = BigEndian16(bytes);
    const unsigned short height = BigEndian16(bytes.subspan(2));
    if (kSizes + 2 * std::size_t{width} > bytes.size())
        return GetString(kUnreadable);

    NamedBytes names(kFilterColors);
    TvlString text;
    const auto appendRow = [&](Bytes row) {
        AppendList(text, row.size(), [&](std::size_t i) { text += names[row[i]]; });
    };
    // Two rows whatever the height: patterns repeat every other row.
    text.Format(L"(%d x %d): {", width, height);
    appendRow(bytes.subspan(kSizes, width));
    text += L"}, {";
    appendRow(bytes.subspan(kSizes + width, width));
    text += L"}";
    return text;
}

TvlStringT<wchar_t> CExifTag::GetCFAPatternColor(unsigned char colour) const
{
    return NamedBytes(kFilterColors)[colour];
}

TvlStringT<wchar_t> CExifTag::GetSingleRationalDisplayValue(unsigned int index) const
{
    constexpr unsigned int kExposureTime = 33434;
    constexpr unsigned int kFocalPlaneResolutions[] = {41486, 41487};
    const unsigned char* const item = data + std::size_t{index} * 8;
    const auto numerator = LoadNumber<std::uint32_t>(item);
    const auto denominator = LoadNumber<std::uint32_t>(item + 4);
    if (denominator == 0)
        return L"0";
    const double quotient = static_cast<double>(numerator) / denominator;
    if (id == kExposureTime && numerator < denominator)
        return TvlString().Format(L"%d/%d", numerator, denominator);
    if (std::ranges::find(kFocalPlaneResolutions, id) != std::end(kFocalPlaneResolutions))
        return TvlString().Format(L"%d/%d (%f)", numerator, denominator, quotient);
    TvlString text;
    AppendReal(text, quotient);
    return text;
}
