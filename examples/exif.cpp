// Reads an Exif block, shows its tags and turns the picture upright.
#include "CExif.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <iostream>

int main()
{
    // Little-endian: one directory with the maker's name (its text stands behind the directory) and the orientation.
    unsigned char block[] = "II*\0\10\0\0\0"
                            "\2\0"
                            "\x0F\1\2\0\6\0\0\0\x26\0\0\0"
                            "\x12\1\3\0\1\0\0\0\6\0\0\0"
                            "\0\0\0\0"
                            "Tovel";
    TvlUtils::Stream stream = TvlUtils::Stream::OverMemory(block, sizeof block);

    CExif exif;
    if (!exif.ParseData(stream))
        return 1;
    CExifTag* tag = nullptr;
    for (int i = 0; (tag = exif.GetAt(i)) != nullptr; ++i) {
        TvlString label;
        TvlString value;
        if (!tag->GetDisplayLabel(label))
            label = L"(without a name)";
        tag->GetDisplayValue(value);
        std::cout << tag->GetID() << ' ' << TvlPlatform::ToUtf8(label) << ": " << TvlPlatform::ToUtf8(value) << '\n';
    }

    // Overwrites four bytes of the block. Tags that were read stay as they were.
    stream.Seek(0, TvlUtils::SeekOrigin::Start);
    std::cout << "patched: " << exif.ReplaceData(stream, 274, 1) << '\n';
    CExif patched;
    short orientation = 0;
    stream.Seek(0, TvlUtils::SeekOrigin::Start);
    patched.ParseData(stream);
    patched.GetOrientation(orientation);
    std::cout << "orientation " << orientation << '\n';
}
