// The forms of one cloud asset: its asset path "CLOUD:", identifier, file name; its file in the local copy of the
// cloud, one folder an identifier; and the identifier. Safe to call from any thread, as far as CFileLocations is.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlPlatform/TvlString.h"

/// Empty text stands for every kind of failure. Paths have the system's separators.
namespace TvlUtl::CloudHelpers {

/// A file name of the cloud as one that the file system takes: "%" and the characters " * / : < > ? \ | become "%" and
/// two digits. ":" becomes "%2A" and "*" becomes "%3A", each the other's customary code: names on disk have them so.
TVLUTL_API TvlString EscapeFileName(const TvlString& name);
/// What EscapeFileName was given. A "%" that begins none of its codes stays.
TVLUTL_API TvlString UnescapeFileName(const TvlString& name);

/// The local file of an asset. The name is escaped, a second time when it was before. Empty when an argument is, or
/// when the two lead out of the asset's folder.
TVLUTL_API TvlString GetCloudFilePath(const TvlString& cloudId, const TvlString& fileName);
/// The identifier of a local file: the folder that it lies in, somewhere below the cloud's folder.
TVLUTL_API TvlString GetCloudFileIdByPath(const TvlString& path);
/// The identifier in "CLOUD:", identifier, file name.
TVLUTL_API TvlString GetCloudIdFromAssetId(const TvlString& assetId);
/// Whether a path has three elements and begins with "CLOUD:".
TVLUTL_API bool IsAssetPathFromCloud(const TvlString& path);
/// The asset path of a local file; the file name stays as it is on disk, escaped.
TVLUTL_API TvlString GetCloudAssetIDFromFilePath(const TvlString& path);
/// Whether a path leads to a file below the cloud's folder of which the identifier can be told.
TVLUTL_API bool IsLocalFileCloudAsset(const TvlString& path);
/// The local file of an asset path, whose file name is taken without blanks at its end.
TVLUTL_API TvlString GetLocalPathForAssetPathFromCloud(const TvlString& assetPath);

}   // namespace TvlUtl::CloudHelpers
