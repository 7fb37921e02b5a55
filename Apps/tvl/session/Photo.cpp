// A photo: its Exif data shown, and the picture turned upright.
#include "ExifFile.h"
#include "Session.h"
#include "WorkspaceSettings.h"
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/SystemIO.h"

namespace SystemIO = TvlUtils::SystemIO;

namespace {
constexpr unsigned kMaker = 271;
constexpr unsigned kOrientation = 274;
constexpr unsigned kXResolution = 282;
constexpr short kUpright = 1;

// What the photo that a session makes has in it, of TIFF 6.0. Values of more than 4 bytes stand behind the directory.
struct Field {
    unsigned short tag;
    unsigned short type;   // 2 text, 3 short, 4 long, 5 rational
    unsigned count;
    unsigned value;   // or its offset
};

constexpr unsigned kFields = 12;
constexpr unsigned kMakerAt = 8 + 2 + kFields * 12 + 4;
constexpr unsigned kResolutionAt = kMakerAt + 6;
constexpr unsigned kPixelsAt = kResolutionAt + 8;
constexpr Field kPhoto[kFields] = {
    {256, 3, 1, 2},                        // two pixels wide
    {257, 3, 1, 3},                        // three high
    {258, 3, 1, 8},                        // of 8 bits
    {259, 3, 1, 1},                        // not compressed
    {262, 3, 1, 1},                        // 0 is black
    {kMaker, 2, 6, kMakerAt},              // of the camera
    {273, 4, 1, kPixelsAt},                // the one strip
    {kOrientation, 3, 1, 6},               // the camera was held on its side
    {278, 3, 1, 3},                        // rows of the strip
    {279, 4, 1, 6},                        // its bytes
    {kXResolution, 5, 1, kResolutionAt},   // to the inch
    {296, 3, 1, 2},
};

void Put(std::string& bytes, unsigned value, unsigned size)
{
    for (unsigned i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

/// A grey picture of six pixels, in a little-endian TIFF file.
std::string PhotoBytes()
{
    std::string bytes = "II";
    Put(bytes, 42, 2);
    Put(bytes, 8, 4);
    Put(bytes, kFields, 2);
    for (const Field& field : kPhoto) {
        Put(bytes, field.tag, 2);
        Put(bytes, field.type, 2);
        Put(bytes, field.count, 4);
        Put(bytes, field.value, 4);
    }
    Put(bytes, 0, 4);   // no further directory
    bytes += std::string("Tovel", 6);
    Put(bytes, 300, 4);
    Put(bytes, 1, 4);
    for (const unsigned grey : {0x00u, 0x30u, 0x60u, 0x90u, 0xC0u, 0xF0u})
        Put(bytes, grey, 1);
    return bytes;
}

/// A photo in the session's folder that can be changed.
TvlString TakePhoto(const Session& session, StepLog& log)
{
    if (session.photo.empty()) {
        const TvlString made = session.folder.File(L"Photo.tif");
        Require(
            static_cast<bool>(SystemIO::File::WriteAside(made, PhotoBytes())), log.Name(made) + " can't be written");
        return made;
    }
    const TvlString own = SystemIO::FromFilePath(session.photo);
    const TvlString copy = session.folder.File((L"Photo" + SystemIO::Path::GetExtension(own)).c_str());
    const auto copied = SystemIO::File::Copy(own, copy, true);
    Require(static_cast<bool>(copied), Quoted(own) + " can't be copied: " + Shown(copied.Reason()));
    return copy;
}

std::size_t CountTags(CExif& exif)
{
    std::size_t count = 0;
    while (exif.GetAt(static_cast<int>(count)))
        ++count;
    return count;
}

/// A tag with its name, as it is shown.
std::string TagText(CExifTag& tag)
{
    TvlString label, value;
    const bool isNamed = tag.GetDisplayLabel(label) != 0;
    tag.GetDisplayValue(value);
    return (isNamed ? Shown(label) : "tag " + std::to_string(tag.GetID())) + ": " + Shown(value);
}
}   // namespace

void PlacePhoto(Session& session, StepLog& log)
{
    const TvlString path = TakePhoto(session, log);
    const ExifFile photo = ReadExifFile(SystemIO::ToFilePath(path));
    Require(photo.error.empty(), log.Name(path) + ": " + photo.error);
    log.Left(path);
    log.Did(Count(CountTags(*photo.exif), "tag") + " in the photo");
    for (const unsigned id : {kMaker, kXResolution, kOrientation})
        if (CExifTag* const tag = photo.exif->FindTag(id))
            log.Did(TagText(*tag));
    short orientation = kUpright;
    if (!photo.exif->GetOrientation(orientation) || orientation == kUpright)
        return;
    const ExifFile turned = SetExifOrientation(SystemIO::ToFilePath(path), kUpright);
    Require(turned.error.empty(), log.Name(path) + ": " + turned.error);
    short now = 0;
    ReadExifFile(SystemIO::ToFilePath(path)).exif->GetOrientation(now);
    Require(now == kUpright, "the picture could not be turned");
    log.Did("turned upright");
}
