// A file that is there as long as a process holds it, with two words of memory that its holders share.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace Ports {

/// Ways to hold a file: open it when it is held by somebody else, or make it when it is not.
enum class StateFileUse { OpenHeld, OpenOrMake };

/// Locks belong to the open file, so that the kernel frees them with the process. The bytes that they stand for:
/// a guard over the file's beginning and end, the holders, and the owner for what has one.
class SharedStateFile {
public:
    /// Full path of a file in the folder of the user's shared states; empty when `name` is, or when there is no folder
    /// that is this user's alone.
    static std::string Path(const std::string& name);
    /// @param words contents of a new file
    /// @return null when the file can't be had
    static std::unique_ptr<SharedStateFile> Hold(
        const std::string& path, StateFileUse use, const std::uint32_t (&words)[2]);
    /// Removes the file when nobody else holds it.
    ~SharedStateFile();
    SharedStateFile(const SharedStateFile&) = delete;
    SharedStateFile& operator=(const SharedStateFile&) = delete;

    /// The word at `index`, 0 or 1.
    std::atomic_ref<std::uint32_t> Word(int index) { return std::atomic_ref(m_words[index]); }
    std::uint32_t* Address(int index) { return m_words + index; }
    /// Becomes the owner; without `wait` false when somebody else is.
    bool Own(bool wait);
    void Disown();

private:
    SharedStateFile(std::string path, int file, std::uint32_t* words);

    std::string m_path;
    int m_file;
    std::uint32_t* m_words;   // mapped
};

}   // namespace Ports
