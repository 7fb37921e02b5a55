// Workspaces as files: one ".tvws" container holds a configuration of the user interface, settings, icons and a thumbnail,
// with a title in many languages.
//
// A workspace from a stranger is not harmless: its settings become any values below "Application Preferences", the folders
// that plug-ins are loaded from included. Ask the user before a workspace of unknown origin is put to use, and show what
// it would change.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"
#include "siblings/TvlUtils/Guid.h"
#include "siblings/TvlUtils/MultiLanguageString.h"
#include "siblings/TvlXml/WXmlDoc.h"

#include <mutex>
#include <utility>
#include <vector>

/// What a workspace that was exported for other users contains. The order of the members is relied on.
struct WorkspaceFileExportSettings {
    /// A toolbar, menu and the like.
    struct Item {
        bool Selected = false;   ///< it goes along
        TvlString Guid;          ///< names it to the application; any text in a file from outside
        TvlString Name;          ///< for the user
    };

    TvlString Name;                 ///< of the workspace
    TvlString Framework;            ///< of the user interface; any text
    TvlString Version;              ///< of the application that exported it; "19" has settings of an older meaning
    std::vector<Item> Toolbars;     ///< that can go along
    std::vector<Item> Menus;        ///< that can go along
    std::vector<Item> Touchbars;    // before the status bars here, behind them in the file
    std::vector<Item> Statusbars;   ///< that can go along
    std::vector<std::pair<TvlString, TvlString>> AdditionalFiles;   // name in the container, path on disk
    bool ExportShortcutKeys = false;                                ///< keys of commands go along
    bool ExportDockers = false;                                     ///< docked windows go along
    bool ExportApplicationData = false;                             ///< the settings go along, and additional files
    LONG ReadState = 0;   // 0 nothing was read, 2 ReadExportSettings succeeded
};

// <windows.h> turns this name into one of two others, by which the operation can be called as well.
#pragma push_macro("DeleteFile")
#undef DeleteFile

/// Names one workspace file and reads, writes and copies what it holds. The container is never kept open: each operation
/// opens it, works and closes it. Files are replaced in one step, so that a failure leaves the old one whole. Operations
/// on the container exclude each other on one object, but not on several objects of one file; InitializeMetadata and what
/// calls it rely on the caller. Failures are false or an object that is false, with the reason in the log.
class TVLUTL_API WorkspaceFile {
public:
    /// A name in the container and the path of a file on disk.
    using FilePair = std::pair<TvlString, TvlString>;

    /// An invalid object.
    WorkspaceFile() = default;
    /// Reads nothing. An empty path makes an invalid object.
    explicit WorkspaceFile(const TvlString& path);
    /// @{
    /// Everything but the lock, of which each object has its own.
    WorkspaceFile(const WorkspaceFile& other);
    WorkspaceFile(WorkspaceFile&& other) noexcept;
    WorkspaceFile& operator=(const WorkspaceFile& other);
    WorkspaceFile& operator=(WorkspaceFile&& other) noexcept;
    /// @}
    ~WorkspaceFile() = default;
    /// Exchanges everything but the lock.
    void Swap(WorkspaceFile& other) noexcept;

    /// Whether the object names a file, be it there or not.
    explicit operator bool() const { return !Name.IsEmpty(); }
    /// Names, and title, category and description in the default language, all without regard to case. Loads the metadata
    /// of both.
    bool operator==(const WorkspaceFile& other) const;

    // Reading nothing.

    /// The file's name without folder and extension.
    TvlString GetName() const { return Name; }
    /// Full path.
    TvlString GetFilename() const { return Filename; }

    // From the metadata, which the first of these reads.

    /// @{
    /// In all languages of the file; empty when it can't be read or has none.
    MultiLanguageString GetTitle() const;
    MultiLanguageString GetCategory() const;
    MultiLanguageString GetDescription() const;
    /// @}
    /// 400 for a default workspace, 200 for others and where the file has none, 0 when it can't be read.
    LONG GetUIOrder() const;
    /// Identity of this file; nil when it can't be read.
    TvlUtils::Guid GetInstanceID() const;
    /// Identity of the document, shared among its copies; nil when it can't be read.
    TvlUtils::Guid GetDocumentID() const;
    /// Instances that this one was made from, the eldest first.
    std::vector<TvlUtils::Guid> GetDerivedFrom() const;
    /// Whether there is a thumbnail.
    bool IsPreviewAvailable() const;
    /// @{
    /// In the language of the user interface, else in the default one; empty when there is none.
    TvlString GetTitleInUILang() const;
    TvlString GetCategoryInUILang() const;
    TvlString GetDescriptionInUILang() const;
    /// @}

    /// Reads the metadata once. A file without identifiers gets them, and they are written to it; one that predates them
    /// keeps the identity that its configuration carries. True when the metadata was read or tried before; a read that
    /// failed is not tried again.
    bool InitializeMetadata() const;

    /// Reads the configuration of the user interface.
    bool LoadUIConfigIntoXML(WXmlDoc& document) const;
    /// Stores the configuration of the user interface in place of the one that the file has.
    bool SaveUIConfigFromXML(const WXmlDoc& document) const;
    /// Adds a file from disk, or puts it in place of the entry of that name.
    bool AddFile(const TvlString& source, const TvlString& name);
    /// Extracts an entry. A file at `target` is replaced only by an entry that is whole.
    bool GetFile(const TvlString& name, const TvlString& target);
    /// Names of the entries that fit an expression, in which "." is any character and "*" repeats what stands before it.
    std::vector<TvlString> GetFilesInDirectory(const TvlString& pattern) const;
    /// @{
    /// Deletes the entry of this name; false when there is none.
    bool DeleteFile(const TvlString& name);
    bool DeleteFileA(const TvlString& name) { return DeleteFile(name); }
    bool DeleteFileW(const TvlString& name) { return DeleteFile(name); }
    /// @}
    /// Extracts the settings to `path`, and each pair's entry to its path on disk. The result is that of the settings.
    bool LoadSettings(TvlString path, const std::vector<FilePair>& files);
    /// The same, and what ReadExportSettings reads, by one opening of the container. `exported` is left as it is where the
    /// workspace was not exported.
    bool LoadSettings(const TvlString& path, const std::vector<FilePair>& files, WorkspaceFileExportSettings& exported);
    /// Stores the settings at `path`, and each pair's file where there is one.
    bool SaveSettings(TvlString path, const std::vector<FilePair>& files);
    /// The same. `isWhole` tells, besides, whether each of the files that are on disk could be read, the settings included,
    /// but for what no workspace can ever take: folders, and files of more bytes than an entry may have.
    bool SaveSettings(const TvlString& path, const std::vector<FilePair>& files, bool& isWhole);
    /// Whether the workspace is meant for fingers.
    bool IsTouchWorkspace() const;

    /// Copies a workspace for other users, with a description of what it contains.
    /// @param settingsName name of the settings' entry, which is left out unless application data are exported, and so are
    ///                     the entries of `files`
    /// @return an invalid object on failure; a copy that was made stays
    static WorkspaceFile Export(const TvlString& target, const TvlString& source, const TvlString& settingsName,
        const std::vector<FilePair>& files, const WorkspaceFileExportSettings& settings);
    /// Reads what Export has described. Values are those of a file from outside: names are any text.
    static bool ReadExportSettings(const TvlString& path, WorkspaceFileExportSettings& settings);
    /// Makes a default workspace without configuration and settings, or replaces one. Invalid on failure.
    static WorkspaceFile CreateDefault(const TvlString& path);
    /// Copies a workspace under a title of its own, with a new identity. Invalid on failure, and when there is
    /// something at `path` already; a copy that was made stays.
    static WorkspaceFile CreateFrom(const TvlString& path, const TvlString& source, const MultiLanguageString& title,
        const MultiLanguageString& description);
    /// The same with the source's title and description.
    static WorkspaceFile CreateFrom(const TvlString& path, const WorkspaceFile& source);

private:
    static bool ReadExported(class WorkspaceContainer& container, WorkspaceFileExportSettings& settings);
    static bool ExtractSettings(
        class WorkspaceContainer& container, const TvlString& path, const std::vector<FilePair>& files);
    void ReadThumbnail(class WorkspaceContainer& container) const;
    void ReadProperties(class WorkspaceContainer& container) const;
    void ReadIdentity(const class WorkspaceContainer& container) const;
    void Repair(class WorkspaceContainer& container) const;
    void StoreIdentity(class WorkspaceContainer& container) const;

    // The order is relied on.
    TvlString Filename;
    TvlString Name;
    mutable bool MetadataLoaded = false;
    mutable MultiLanguageString Title;
    mutable MultiLanguageString Category;
    mutable MultiLanguageString Description;
    mutable LONG UIOrder = 0;
    mutable TvlUtils::Guid InstanceID;
    mutable TvlUtils::Guid DocumentID;
    mutable std::vector<TvlUtils::Guid> DerivedFrom;
    mutable bool PreviewAvailable = false;
    mutable std::recursive_mutex Lock;
};

#pragma pop_macro("DeleteFile")
