#pragma once

#include <filesystem>
#include <string>

namespace LedgerService {

/// What an archive holds, taken apart in a folder of its own and verified: every file by its digest, the books as
/// `verify` does. The folder is gone with the object, with all that is still in it.
class UnpackedArchive {
public:
    /// Unpacks beside what it is for. Throws when the archive is none, is damaged, or holds books that are not sound.
    UnpackedArchive(const std::string& archive, const std::filesystem::path& beside);
    ~UnpackedArchive();
    UnpackedArchive(const UnpackedArchive&) = delete;
    UnpackedArchive& operator=(const UnpackedArchive&) = delete;

    /// The database, with its receipts and seals beside it as everywhere.
    [[nodiscard]] std::string database() const { return (m_path / "books.sqlite").string(); }

private:
    void remove() const;

    std::filesystem::path m_path;
};

}
