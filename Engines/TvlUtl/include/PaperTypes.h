// The catalogue of paper sizes: predefined papers, the user's own, their order and the ones used last.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/DataBinding/IBroadcaster.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Singleton.h"

#include <cstdint>
#include <list>
#include <memory>
#include <span>
#include <vector>

class WXmlDoc;
class WXmlNode;

/// Id of a predefined paper, 0 to 148, and its place in the store. docs/papers.md tells which is which.
enum PaperType : std::int32_t {
    kPaperCustom = 0,   ///< any size
    kPaperNone = 1,     ///< no dimensions
    kPaperLetter = 3,   ///< 8.5 by 11 inches
    kPaperLegal = 4,    ///< 8.5 by 14 inches
    kPaperA3 = 14,      ///< 297 by 420 millimetres
    kPaperA4 = 15,      ///< 210 by 297 millimetres
};
/// Predefined papers in a complete store, and the first place of custom ones.
constexpr int kPaperTypeCount = 149;

/// One paper. Lengths count in tenths of a micron: 254000 to an inch, 10000 to a millimetre.
struct PaperTypeInformation {
    PaperType Type = kPaperCustom;   ///< kPaperCustom for a custom paper
    TvlString DisplayName;           ///< in the user's language; the user's own text for a custom paper
    TvlString SourceName;            ///< the name in the file, "Custom" without one
    TvlString PaperGuid;             ///< new in every run
    std::int32_t Width = 0;          ///< across the paper as it stands
    std::int32_t Height = 0;         ///< along the paper as it stands
    bool Rotatable = false;          ///< the paper has no fixed orientation
    std::int32_t Units = 0;          ///< WUnit id that the paper is shown in: 1 inch, 2 millimetre, 6 pixel
    std::int32_t ResolutionX = 0;    ///< pixels per kilometre of a paper in pixels, else 0
    std::int32_t ResolutionY = 0;    ///< as ResolutionX, along the paper
    bool Hidden = false;             ///< left out of lists; of predefined papers alone
    std::int32_t CustomId = 0;   ///< 0 for a predefined paper, else its place, or what the file said below place 149
};

class CPaperTypeMgr;
// Made in the library alone, so that all modules ask one object.
extern template class TVLUTL_API TvlUtils::Singleton<CPaperTypeMgr, 0>;

/// The store of papers: the user's "PaperTypes.xml", which starts as a copy of the suite's, is read when the object is made
/// and written by Shutdown. Predefined papers stand at the place of their id, custom papers behind them. Searches walk the
/// store. For one thread at a time; of two processes the last to shut down wins.
class TVLUTL_API CPaperTypeMgr : public IBroadcaster, public TvlUtils::Singleton<CPaperTypeMgr, 0> {
public:
    /// Places in the store, in an order that matters.
    using Indices = std::list<std::int64_t>;

    CPaperTypeMgr(const CPaperTypeMgr&) = delete;
    CPaperTypeMgr& operator=(const CPaperTypeMgr&) = delete;
    virtual ~CPaperTypeMgr();

    /// Writes the user's file and empties the store; makes the object if need be.
    static void Shutdown();

    /// The value when it is a predefined paper's id, else kPaperCustom.
    static PaperType GetTypeFromInt(int value);
    /// The Windows printer code (DMPAPER_...) of a paper; 256 when there is none.
    static int GetDevModeFromPaper(PaperType type);
    /// The paper of a Windows printer code; an empty record for none. Not the inverse of GetDevModeFromPaper: several codes
    /// share a paper.
    static PaperTypeInformation GetPaperFromDevMode(int code);
    /// A custom paper that is not in the store. Width and height are in inches (units 1) or millimetres (units 2); other
    /// units leave them 0.
    static PaperTypeInformation SetCustomPaper(double width, double height, int units);

    // Queries. A place or id out of range gives false, 0 or -1.

    /// Papers in the store, predefined and custom.
    std::int64_t GetCount() const;
    /// Predefined papers in the store: 149 in a complete one.
    int GetPredefinedCount() const;
    /// @{
    /// Copies the record at a place, or of a predefined paper, to `paper`; false leaves that alone.
    bool GetPaperInfoAt(int index, PaperTypeInformation& paper) const;
    bool GetPaperInfo(PaperType type, PaperTypeInformation& paper) const;
    /// @}
    /// For kPaperCustom the custom paper of that size; without one `paper` takes the size, may be rotated, and the result
    /// is false.
    bool GetPaperInfo(PaperType type, int width, int height, PaperTypeInformation& paper) const;
    /// @{
    /// Copies the name in the user's language to `name`; false leaves that alone.
    bool GetPaperNameAt(int index, TvlString& name) const;
    bool GetPaperName(PaperType type, TvlString& name) const;
    /// @}
    /// Copies the paper's GUID, which holds until the program ends, to `guid`; false leaves that alone.
    bool GetPaperGUIDAt(int index, TvlString& guid) const;
    /// Area in square millimetres, of sides without their fractions.
    std::int64_t GetPaperSize(PaperType type) const;
    /// Whether the paper at a place is left out of lists; false out of range.
    bool IsHidden(std::int64_t index) const;
    /// Place of the first custom paper of exactly that size, or -1; never turned.
    std::int64_t FindCustomPaper(int width, int height, PaperTypeInformation& paper) const;
    /// CustomId, which need not be the place, of the first custom paper with the size, the units and for pixels the
    /// resolutions of `paper`; -1 for none.
    std::int64_t FindCustomPaperIndex(const PaperTypeInformation& paper) const;
    /// Place of the first custom paper of that name, or -1.
    std::int64_t FindCustomPaperIndex(const TvlString& name) const;
    /// Place of the first visible predefined paper of that size either way round, or -1. Raises std::out_of_range in a
    /// store that is neither empty nor complete.
    int FindPredefinedPaper(int width, int height, PaperTypeInformation& paper) const;
    /// The same, of that name.
    int FindPredefinedPaperByName(int width, int height, const TvlString& name, PaperTypeInformation& paper) const;
    /// Place of the first visible predefined paper with the size of `paper`, or -1.
    /// @param turned whether the size may be the other way round
    int FindPredefinedPaperIndex(const PaperTypeInformation& paper, bool turned) const;
    /// Place of the predefined paper of a type, hidden or not, or -1.
    int FindPredefinedPaperIndex(PaperType type) const;
    /// Place of the paper with this GUID, in either case of its letters; -1 for none.
    int FindPaperIndexByGUID(const TvlString& guid) const;
    /// Whether a type is kPaperCustom and a custom paper has that size.
    bool IsCustomPaper(PaperType type, int width, int height) const;
    /// Whether the record's type is kPaperCustom and a custom paper has its size, or the same turned where `turned` is
    /// true.
    bool IsCustomPaper(const PaperTypeInformation& paper, bool turned) const;
    /// Whether FindPredefinedPaperIndex finds the paper.
    bool IsPredefinedPaper(const PaperTypeInformation& paper, bool turned) const;
    /// Places in the order in which papers are offered.
    Indices GetPaperOrder() const;
    /// That order as it was read; edits leave it alone, so that after a deletion it may name papers that have moved.
    Indices GetPaperDisplayOrder() const;
    /// Places of the papers used last, the latest first.
    Indices GetMRUList() const;
    /// The most papers that GetMRUList keeps; 50, or as many as the file had.
    std::int64_t GetMaxMRUSize() const;
    /// The custom id that was given last; 0 before any was, -1 without a file.
    int GetLastPaperCustomTypeID() const;
    /// Sets what GetLastPaperCustomTypeID gives. Changes no paper.
    void SetLastPaperCustomTypeID(int id);
    /// The argument when the order has it, else 0.
    int CheckPaperTypeID(int id) const;

    // Edits. Those of papers tell the listeners "PaperTypeManager" when they are done.

    /// Adds a custom paper. With `overwrite` it takes the place of one of the same name. Always true.
    bool AddCustomPaper(const PaperTypeInformation& paper, bool overwrite);
    /// Replaces the custom paper of the same name; false when there is none.
    bool UpdateCustomPaper(const PaperTypeInformation& paper);
    /// Hides the visible predefined paper of exactly that size, or deletes the custom paper that FindCustomPaperIndex
    /// finds. False when there is neither.
    bool DeletePaper(const PaperTypeInformation& paper);
    /// Hides a paper, or deletes a custom one. Places behind it move down.
    void DeletePaper(std::int64_t index, bool custom);
    /// A limit below the present one makes the list as long as the present limit, filled up with paper 0: callers count on
    /// it. AddMRUItem shortens it then by one a call. Raises std::length_error where the present limit is more than a list
    /// holds.
    void SetMaxMRUSize(std::int64_t size);
    /// Puts a paper first; nothing when the limit is 0.
    void AddMRUItem(std::int64_t index);
    /// Takes a paper out of the list of those used last; nothing when it is not there.
    void RemoveMRUItem(std::int64_t index);
    /// Puts the custom papers behind the others again, in the order of the store.
    void ResetCustomPaperTypeOrder();

protected:
    friend class TvlUtils::Singleton<CPaperTypeMgr, 0>;

    /// Reads the user's file. Failures are not told: queries then see an empty store, or a part of one.
    CPaperTypeMgr();

    /// What the constructor does: brings the user's file up to date, or copies the master, and reads all of it. False
    /// at the first step that fails.
    bool Initialize();
    /// What Shutdown does: writes the user's file, if one was read, and empties the store. Always true.
    bool Uninitialize();
    /// Puts the suite's file in place of the user's; false when it can't be copied.
    bool CopyXmlFromSystemFolder();
    /// Takes a newer master over into the user's file: hidden papers stay hidden, custom papers are kept, all else is the
    /// master's. The user's file as it was is left beside it as "PaperTypes_backup.xml".
    bool UpdatePredefinedSizes(const TvlString& master, const TvlString& user);
    /// Reads the predefined papers, each to the place of its id, in place of all papers. Always true; throws
    /// std::out_of_range for an id that is beyond the number of papers in the file.
    bool LoadPredefinedPapers();
    /// Appends the custom papers of the file and tells the listeners of each. Always true.
    bool LoadCustomPapers();
    /// Reads the order of the user's country, or takes the order of the store where the file has none. Hidden papers
    /// are left out. Always true.
    bool LoadPaperOrder();
    /// Reads the papers used last in the user's country; the limit grows to their number. Always true.
    bool LoadMRUList();
    /// @{
    /// Writes the papers to the document in place of those that it has; false without a document.
    bool SavePredefinedPapers();
    bool SaveCustomPapers();
    /// @}
    /// Writes the list to the document, or takes it out when it is empty; false without a document.
    bool SaveMRUList();
    /// Path of the user's country's order and list of papers used last in the document.
    TvlString GetPagesetPath() const;
    /// Reads a paper from an element; false for a predefined one whose id is not 0 to 148.
    bool ReadPaper(const WXmlNode& node, PaperTypeInformation& paper, bool custom) const;
    /// Writes a paper to an element, in the units that it is shown in.
    bool WritePaper(const PaperTypeInformation& paper, const WXmlNode& node, bool custom) const;
    /// Replaces `papers` by those of the elements that an XPath expression selects; what ReadPaper refuses is left out.
    void ReadPaperArrayFromXml(
        const WXmlDoc& document, const TvlString& path, std::vector<PaperTypeInformation>& papers, bool custom) const;
    /// Writes papers as the one list of this name below the root; false without a document.
    bool WritePaperArrayToXml(
        WXmlDoc& document, const wchar_t* name, const std::vector<PaperTypeInformation>& papers, bool custom) const;

private:
    bool WritePapers(
        WXmlDoc& document, const wchar_t* name, std::span<const PaperTypeInformation> papers, bool custom) const;
    bool SavePapers(const wchar_t* name, std::size_t first, std::size_t count, bool custom);
    bool CopyMaster(bool overwrite);
    void Append(PaperTypeInformation&& paper);
    void Broadcast();
    /// The place when there is a paper, else null.
    const PaperTypeInformation* PaperAt(std::int64_t index) const;
    const PaperTypeInformation& CheckedPaper(std::size_t index) const;

    TvlString m_path;                      // of the user's file
    std::unique_ptr<WXmlDoc> m_document;   // from Initialize to Uninitialize
    std::vector<PaperTypeInformation> m_papers;
    Indices m_order;
    Indices m_displayOrder;
    Indices m_mru;
    std::int32_t m_predefinedCount = 0;
    std::int32_t m_customCount = 0;
    std::int64_t m_maxMRU = 50;
    std::int32_t m_lastCustomId = -1;
};

namespace TvlUtl {

/// A paper's size as text, such as "210 × 297 millimeters"; empty for kPaperNone.
TVLUTL_API TvlString GetPageDimensions(const PaperTypeInformation& paper);
/// Lengths in tenths of a micron as text in a unit; the resolutions serve pixels.
TVLUTL_API TvlString GetDimensionsString(double width, double height, int units, int resolutionX, int resolutionY);

/// Appends the pages that a text such as "1,3-5,8~" names: "-" a range, "~" every second page of one. An open end is the
/// page count. Pages outside of `first` to `first + count - 1` are left out; when `pages` is empty at the end it gets page
/// 1.
TVLUTL_API void MakePageRangeFromString(unsigned first, unsigned count, TvlString text, std::vector<unsigned>& pages);

}   // namespace TvlUtl

namespace OSUtils::LocaleEnvironment {

/// WUnit id of the unit that the user measures in: 1 inches, 2 millimetres.
TVLUTL_API unsigned GetUnits();
/// The user's usual paper; false, and `type` left alone, when the system names none of Letter, Legal, A3 and A4.
TVLUTL_API bool GetPaperType(PaperType& type);

}   // namespace OSUtils::LocaleEnvironment
