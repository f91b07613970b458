#include "LedgerService/DurableFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <vector>

#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include "LedgerService/Interruption.h"
#include "LedgerService/Random.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view unfinished = ".unfinished-";

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

/// An open file, closed with its object.
class Descriptor {
public:
    explicit Descriptor(int opened) : m_opened(opened) {}
    ~Descriptor()
    {
        if (m_opened >= 0)
            close(m_opened);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool isOpen() const { return m_opened >= 0; }
    [[nodiscard]] int operator*() const { return m_opened; }

private:
    int m_opened;
};

std::error_code writeAll(int file, std::string_view content)
{
    while (!content.empty()) {
        const auto written = ::write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR)
            return lastError();
        content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return fsync(file) == 0 ? std::error_code{} : lastError();
}

std::error_code writeNew(const fs::path& name, std::string_view content)
{
    const Descriptor file{open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR)};
    return file.isOpen() ? writeAll(*file, content) : lastError();
}

std::error_code giveName(const fs::path& made, const fs::path& name, DurableFile::Existing existing)
{
    if (existing == DurableFile::Existing::kept)
        return link(made.c_str(), name.c_str()) == 0 ? std::error_code{} : lastError();
    return rename(made.c_str(), name.c_str()) == 0 ? std::error_code{} : lastError();
}

/// When anything in it was written last; now for what cannot be looked at.
fs::file_time_type lastWrite(const fs::path& path)
{
    std::error_code failure;
    auto last = fs::last_write_time(path, failure);
    for (fs::recursive_directory_iterator each{path, failure}, end; !failure && each != end; each.increment(failure))
        last = std::max(last, each->last_write_time(failure));
    return failure && failure != std::errc::not_a_directory ? fs::file_time_type::clock::now() : last;
}

}

std::error_code DurableFile::settle(const fs::path& path)
{
    const Descriptor opened{open(path.c_str(), O_RDONLY | O_CLOEXEC)};
    return opened.isOpen() && fsync(*opened) == 0 ? std::error_code{} : lastError();
}

std::error_code DurableFile::makeFolder(const fs::path& folder)
{
    const bool isMade = mkdir(folder.c_str(), S_IRWXU) == 0;
    if (!isMade && errno != EEXIST)
        return lastError();
    // Whoever made one that was there may have been stopped before its name was kept. Where the folder around it is
    // not this program's to read, it was not made by it either.
    const auto failure = settle(fs::absolute(folder).parent_path());
    return !isMade && failure == std::errc::permission_denied ? std::error_code{} : failure;
}

std::error_code DurableFile::write(const fs::path& name, std::string_view content, Existing existing)
{
    const auto folder = fs::absolute(name).parent_path();
    const auto made = unfinishedIn(folder);
    auto failure = writeNew(made, content);
    if (!failure)
        failure = giveName(made, name, existing);
    std::error_code ignored;
    fs::remove(made, ignored); // what was renamed is not there any more
    return failure ? failure : settle(folder);
}

fs::path DurableFile::unfinishedIn(const fs::path& folder)
{
    return folder / (std::string{unfinished} + Random::identifier());
}

std::error_code DurableFile::giveNewName(const fs::path& made, const fs::path& name)
{
    if (const auto failure = giveName(made, name, Existing::kept))
        return failure;
    return settle(fs::absolute(name).parent_path());
}

std::string DurableFile::digestOf(const fs::path& file)
{
    std::ifstream in{file, std::ios::binary};
    crypto_generichash_state state{};
    crypto_generichash_init(&state, nullptr, 0, crypto_generichash_BYTES);
    std::string piece(std::size_t{1} << 20, '\0');
    while (in.read(piece.data(), static_cast<std::streamsize>(piece.size())) || in.gcount() > 0) {
        Interruption::heed();
        crypto_generichash_update(&state, reinterpret_cast<const unsigned char*>(piece.data()),
                                  static_cast<std::size_t>(in.gcount()));
    }
    std::array<unsigned char, crypto_generichash_BYTES> hash{};
    crypto_generichash_final(&state, hash.data(), hash.size());
    return in.eof() ? Random::hexadecimal(hash) : std::string{};
}

void DurableFile::sweepUnfinished(const fs::path& folder)
{
    const auto before = fs::file_time_type::clock::now() - std::chrono::hours{24};
    std::vector<fs::path> left;
    std::error_code failure;
    for (fs::directory_iterator each{folder, failure}, end; !failure && each != end; each.increment(failure)) {
        if (isUnfinished(each->path()) && lastWrite(each->path()) < before)
            left.push_back(each->path());
    }
    for (const auto& each : left)
        fs::remove_all(each, failure);
}

bool DurableFile::isUnfinished(const fs::path& name)
{
    return name.filename().string().starts_with(unfinished);
}

}
