#include "LedgerService/Receipts/ReceiptFolder.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <stdexcept>

#include <fmt/core.h>
#include <sodium.h>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/DurableFile.h"
#include "LedgerService/Log.h"
#include "LedgerService/Random.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t blockBytes = std::size_t{256} << 10;
/// Files lie in folders by the first digits of their digest, so that none grows too long.
constexpr std::size_t shardDigits = 2;
constexpr std::size_t digestDigits = 64;

bool isDigest(std::string_view text)
{
    return text.size() == digestDigits && std::ranges::all_of(text, [](char each) {
               return (each >= '0' && each <= '9') || (each >= 'a' && each <= 'f');
           });
}

/// Reads a file to its end and makes sure that it is what its name says.
class CheckedFile {
public:
    CheckedFile(const fs::path& path, std::string_view digest, std::int64_t byteCount)
        : m_file(path, std::ios::binary), m_digest(digest), m_left(byteCount)
    {
        if (!m_file)
            throw std::runtime_error(fmt::format("the file {} is missing", m_digest));
        std::error_code failure;
        if (const auto size = fs::file_size(path, failure); failure || static_cast<std::int64_t>(size) != byteCount)
            throw std::runtime_error(
                fmt::format("the file {} has {} bytes, {} were stored", m_digest, failure ? 0 : size, byteCount));
        crypto_generichash_init(&m_state, nullptr, 0, crypto_generichash_BYTES);
    }

    std::string next()
    {
        std::string block(static_cast<std::size_t>(std::min<std::int64_t>(m_left, blockBytes)), '\0');
        if (block.empty())
            return block;
        m_file.read(block.data(), static_cast<std::streamsize>(block.size()));
        if (m_file.gcount() != static_cast<std::streamsize>(block.size()))
            throw std::runtime_error(fmt::format("the file {} cannot be read to its end", m_digest));
        crypto_generichash_update(&m_state, reinterpret_cast<const unsigned char*>(block.data()), block.size());
        m_left -= static_cast<std::int64_t>(block.size());
        if (m_left == 0 && digest() != m_digest)
            throw std::runtime_error(fmt::format("the file {} is not what was stored", m_digest));
        return block;
    }

private:
    std::string digest()
    {
        std::array<unsigned char, crypto_generichash_BYTES> hash{};
        crypto_generichash_final(&m_state, hash.data(), hash.size());
        return Random::hexadecimal(hash);
    }

    std::ifstream m_file;
    std::string m_digest;
    std::int64_t m_left;
    crypto_generichash_state m_state{};
};

Refusal refusalOf(const std::error_code& failure)
{
    Log::failure("(receipts)", failure.message());
    using std::errc;
    const bool full = failure == errc::no_space_on_device || failure == errc::file_too_large ||
                      failure == std::error_code{EDQUOT, std::generic_category()};
    return full ? Refusal::of(ServiceCode::insufficientStorage, "The disk of the service is full.")
                : Refusal::of(ServiceCode::internalError, "The service could not keep the file.");
}

}

ReceiptFolder::ReceiptFolder(const std::string& beside, ReceiptRoom room) : m_path(beside + "-receipts"), m_room(room)
{
}

fs::path ReceiptFolder::fileOf(std::string_view digest) const
{
    if (!isDigest(digest)) // of a damaged row
        throw std::runtime_error("its digest is none");
    return m_path / digest.substr(0, shardDigits) / digest.substr(shardDigits);
}

std::expected<std::string, Refusal> ReceiptFolder::keep(std::string_view content) const
{
    auto digest = Random::digest(content);
    const auto file = fileOf(digest);
    auto failure = DurableFile::makeFolder(m_path);
    if (!failure)
        failure = DurableFile::makeFolder(file.parent_path());
    if (!failure && problemOf(digest, static_cast<std::int64_t>(content.size())).empty()) {
        fs::last_write_time(file, fs::file_time_type::clock::now(), failure); // in use again: it is not swept
        if (!failure)
            failure = DurableFile::settle(file.parent_path()); // its writer may not have come to it yet
    } else if (!failure) {
        failure = DurableFile::write(file, content);
    }
    if (failure)
        return std::unexpected(refusalOf(failure));
    return digest;
}

bool ReceiptFolder::isThere() const
{
    std::error_code ignored;
    return fs::is_directory(m_path, ignored);
}

bool ReceiptFolder::has(std::string_view digest) const
{
    std::error_code ignored;
    return fs::is_regular_file(fileOf(digest), ignored);
}

ReceiptBlocks ReceiptFolder::read(std::string_view digest, std::int64_t byteCount) const
{
    return [file = std::make_shared<CheckedFile>(fileOf(digest), digest, byteCount)] { return file->next(); };
}

std::string ReceiptFolder::problemOf(std::string_view digest, std::int64_t byteCount) const
{
    try {
        const auto blocks = read(digest, byteCount);
        while (!blocks().empty())
            continue;
        return {};
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

void ReceiptFolder::remove(std::string_view digest) const
{
    std::error_code ignored;
    fs::remove(fileOf(digest), ignored);
}

void ReceiptFolder::touch(std::string_view digest) const
{
    std::error_code ignored;
    if (isDigest(digest))
        fs::last_write_time(fileOf(digest), fs::file_time_type::clock::now(), ignored);
}

void ReceiptFolder::eachOlderThan(std::chrono::hours age,
                                  const std::function<void(const std::string& digest)>& show) const
{
    const auto before = fs::file_time_type::clock::now() - age;
    std::error_code failure;
    for (fs::recursive_directory_iterator each{m_path, failure}, end; !failure && each != end;
         each.increment(failure)) {
        std::error_code gone;
        if (!each->is_regular_file(gone) || each->last_write_time(gone) > before || gone)
            continue;
        const auto digest = each->path().parent_path().filename().string() + each->path().filename().string();
        if (DurableFile::isUnfinished(each->path()))
            fs::remove(each->path(), gone);
        else if (isDigest(digest))
            show(digest);
    }
}

}
