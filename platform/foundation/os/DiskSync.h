#pragma once

#include <cstdio>
#include <filesystem>
#include <system_error>

/// What a port to another system has to provide for bytes that outlive a power cut.
namespace tljira::os {

/// Returns when what was written to the file, which has no buffer of its own, is on the disk.
std::error_code syncToDisk(std::FILE* file);

/// A folder whose names are to outlive a power cut.
class FolderSync
{
public:
    /// Opens it, so that nothing but the disk itself can fail once a name has changed.
    explicit FolderSync(const std::filesystem::path& folder);
    ~FolderSync();
    FolderSync(const FolderSync&) = delete;
    FolderSync& operator=(const FolderSync&) = delete;

    /// Why it could not be opened. A folder that may be written without being read is no error.
    std::error_code error() const { return m_error; }

    /// Returns when the names in the folder are on the disk: after a rename, the new name is. Nothing to do, and no
    /// error, where the file system has no such thing.
    std::error_code wait() const;

private:
    int m_descriptor;
    std::error_code m_error;
};

} // namespace tljira::os
