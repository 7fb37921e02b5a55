#include "siblings/TvlUtils/SystemIO.h"

#include "Windows/FlushFile.h"

#include <filesystem>
#include <fstream>
#include <random>

// The functions catch what the standard library throws for a name that the file system can't express.

namespace TvlUtils::SystemIO::File {

namespace fs = std::filesystem;

namespace {
/// A name beside a file that no other writer uses.
fs::path AsideOf(const fs::path& path)
{
    fs::path aside = path;
    aside += L"." + std::to_wstring(std::random_device()()) + L".new";
    return aside;
}

bool Write(const fs::path& path, std::string_view bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return file.good() && Ports::FlushFile(path);
}
}   // namespace

bool Delete(const wchar_t* path)
try {
    std::error_code failed;
    return fs::remove(path, failed);
} catch (const std::exception&) {
    return false;
}

bool Exists(const wchar_t* path)
try {
    std::error_code failed;
    return fs::exists(path, failed);
} catch (const std::exception&) {
    return false;
}

std::optional<std::string> ReadAll(const wchar_t* path, std::size_t limit)
try {
    std::ifstream file(fs::path(path), std::ios::binary);
    std::error_code failed;
    const auto size = fs::file_size(path, failed);
    if (!file || failed || size > limit)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (file.gcount() != static_cast<std::streamsize>(bytes.size()))
        return std::nullopt;
    return bytes;
} catch (const std::exception&) {
    return std::nullopt;
}

bool WriteAside(const wchar_t* path, std::string_view bytes)
try {
    const fs::path target(path);
    std::error_code failed;
    fs::create_directories(target.parent_path(), failed);
    const fs::path aside = AsideOf(target);
    if (Write(aside, bytes)) {
        fs::rename(aside, target, failed);
        if (!failed)
            return true;
    }
    fs::remove(aside, failed);
    return false;
} catch (const std::exception&) {
    return false;
}

}   // namespace TvlUtils::SystemIO::File
