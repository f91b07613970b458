#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Gives the content of a receipt block by block, and an empty text after the last one. Throws before the last block
/// when the content is not what was stored.
using ReceiptBlocks = std::function<std::string()>;

/// How many bytes of receipts a company may keep.
struct ReceiptRoom {
    std::int64_t company = std::int64_t{20} << 30;
    std::int64_t demonstration = std::int64_t{32} << 20; // anybody enters one
};

/// The folder beside the database that keeps the receipts' files, each under the digest of its content. Any number of
/// threads and processes use it at once: a file never changes, and is there as a whole or not at all.
class ReceiptFolder {
public:
    /// `beside`: the database's file, or what stands for it where a server keeps the database.
    explicit ReceiptFolder(const std::string& beside, ReceiptRoom room = {});

    /// It is made with the first receipt.
    [[nodiscard]] bool isThere() const;
    [[nodiscard]] const ReceiptRoom& room() const { return m_room; }

    /// Keeps the content, safely on the disk when this returns, and gives its digest. Content that is there already
    /// counts as new.
    [[nodiscard]] std::expected<std::string, Refusal> keep(std::string_view content) const;

    [[nodiscard]] bool has(std::string_view digest) const;

    /// The content. Throws when there is no such file, or one of another size.
    [[nodiscard]] ReceiptBlocks read(std::string_view digest, std::int64_t byteCount) const;

    /// Why the file is not the content that was stored, or an empty text.
    [[nodiscard]] std::string problemOf(std::string_view digest, std::int64_t byteCount) const;

    void remove(std::string_view digest) const;

    /// Counts the file as used now, if it is there.
    void touch(std::string_view digest) const;

    /// Shows the digest of each file that has been there unused for so long, and removes what was left half written.
    void eachOlderThan(std::chrono::hours age, const std::function<void(const std::string& digest)>& show) const;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }
    /// Where the content with this digest is kept. Throws when the text is no digest, as a damaged row may have it.
    [[nodiscard]] std::filesystem::path fileOf(std::string_view digest) const;

private:
    std::filesystem::path m_path;
    ReceiptRoom m_room;
};

}
