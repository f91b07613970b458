#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

/// Downloaded receipts of the session, in a folder that only this user can read. It goes with the object.
class AttachmentCache {
public:
    AttachmentCache();
    ~AttachmentCache();
    AttachmentCache(const AttachmentCache&) = delete;
    AttachmentCache& operator=(const AttachmentCache&) = delete;

    /// Where the receipt of this id lies, when it does.
    [[nodiscard]] std::optional<std::filesystem::path> find(const std::string& id, const std::string& fileName) const;
    /// The place that a receipt is to be written to; nothing where no folder can be made.
    [[nodiscard]] std::optional<std::filesystem::path> place(const std::string& id, const std::string& fileName) const;
    [[nodiscard]] std::int64_t byteCount() const;
    void clear();

    /// Removes the folders of this user that a program has left which was killed.
    static void removeAbandoned();

private:
    class Folder;

    [[nodiscard]] std::filesystem::path pathOf(const std::string& id, const std::string& fileName) const;

    std::unique_ptr<Folder> m_folder;
};
