#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

/// Archives in the form that `tar` reads: files one after the other, each with its name and size.
class ArchiveWriter {
public:
    /// Writes to this new file, which only its owner may read. Throws when a file of that name is there.
    explicit ArchiveWriter(const std::filesystem::path& file);

    void add(std::string_view name, std::string_view content);
    /// Adds the file's content and gives its digest. Throws when it cannot be read to its end.
    std::string addFile(std::string_view name, const std::filesystem::path& source);

    /// Ends the archive; it is on the disk when this returns.
    void finish();

private:
    void begin(std::string_view name, std::uint64_t size);
    void write(std::string_view bytes);
    void pad(std::uint64_t size);

    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file;
};

/// Reads an archive from its beginning to its end.
class ArchiveReader {
public:
    explicit ArchiveReader(const std::filesystem::path& file);

    struct Member {
        std::string name;
        std::uint64_t size = 0;
    };
    /// The next file; nothing after the last one. Throws when the archive is cut off or is none.
    std::optional<Member> next();

    /// Gives the content of the file that `next` named, block by block.
    void read(const std::function<void(std::string_view block)>& take);

private:
    std::string block(std::size_t bytes);

    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file;
    std::uint64_t m_size = 0;
    bool m_taken = true;
};

}
