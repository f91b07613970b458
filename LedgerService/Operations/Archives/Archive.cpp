#include "LedgerService/Operations/Archives/Archive.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <fmt/core.h>
#include <sodium.h>
#include <unistd.h>

#include "LedgerService/Interruption.h"
#include "LedgerService/Random.h"

namespace LedgerService {

namespace {

// A header is a block of fields with fixed places: numbers are octal texts, or, with the first bit set, binary.
constexpr std::size_t blockBytes = 512;
constexpr std::size_t pieceBytes = std::size_t{1} << 20;

struct Place {
    std::size_t at;
    std::size_t size;
};
constexpr Place nameField{0, 100};
constexpr Place modeField{100, 8};
constexpr Place ownerField{108, 8};
constexpr Place groupField{116, 8};
constexpr Place sizeField{124, 12};
constexpr Place timeField{136, 12};
constexpr Place sumField{148, 8};
constexpr std::size_t kindAt = 156;
constexpr std::size_t magicAt = 257;
constexpr std::string_view magic{"ustar\00000", 8};

[[noreturn]] void fail(std::string_view what)
{
    throw std::system_error{errno, std::generic_category(), std::string{what}};
}

void put(std::string& header, Place place, std::uint64_t number)
{
    if (const auto text = fmt::format("{:0{}o}", number, place.size - 1); text.size() < place.size) {
        header.replace(place.at, text.size(), text);
        return;
    }
    for (std::size_t at = place.size; at > 1; --at, number >>= 8U)
        header[place.at + at - 1] = static_cast<char>(number & 0xFFU);
    header[place.at] = static_cast<char>(0x80);
}

std::uint64_t numberIn(std::string_view header, Place place)
{
    const auto field = header.substr(place.at, place.size);
    std::uint64_t number = 0;
    if (static_cast<unsigned char>(field.front()) == 0x80) {
        for (const char each : field.substr(1))
            number = (number << 8U) | static_cast<unsigned char>(each);
        return number;
    }
    const auto [end, failure] = std::from_chars(field.data(), field.data() + field.size(), number, 8);
    if (failure != std::errc{} || (end != field.data() + field.size() && *end != '\0' && *end != ' '))
        throw std::runtime_error("the archive is damaged");
    return number;
}

/// The sum of the header's bytes, its own field counted as blanks.
std::uint64_t sumOf(std::string header)
{
    header.replace(sumField.at, sumField.size, sumField.size, ' ');
    std::uint64_t sum = 0;
    for (const char each : header)
        sum += static_cast<unsigned char>(each);
    return sum;
}

std::size_t paddingOf(std::uint64_t size)
{
    return static_cast<std::size_t>((blockBytes - size % blockBytes) % blockBytes);
}

std::FILE* openNew(const std::filesystem::path& file)
{
    const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    return opened < 0 ? nullptr : fdopen(opened, "wb");
}

}

ArchiveWriter::ArchiveWriter(const std::filesystem::path& file) : m_file(openNew(file), std::fclose)
{
    if (!m_file)
        fail("the archive cannot be made");
}

void ArchiveWriter::begin(std::string_view name, std::uint64_t size)
{
    std::string header(blockBytes, '\0');
    header.replace(nameField.at, name.size(), name);
    put(header, modeField, 0600);
    put(header, ownerField, 0);
    put(header, groupField, 0);
    put(header, sizeField, size);
    put(header, timeField, 0);
    header[kindAt] = '0';
    header.replace(magicAt, magic.size(), magic);
    put(header, {sumField.at, sumField.size - 1}, sumOf(header));
    write(header);
}

void ArchiveWriter::write(std::string_view bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) != bytes.size())
        fail("the archive cannot be written");
}

void ArchiveWriter::pad(std::uint64_t size)
{
    write(std::string(paddingOf(size), '\0'));
}

void ArchiveWriter::add(std::string_view name, std::string_view content)
{
    begin(name, content.size());
    write(content);
    pad(content.size());
}

std::string ArchiveWriter::addFile(std::string_view name, const std::filesystem::path& source)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> in{std::fopen(source.c_str(), "rbe"), std::fclose};
    if (!in)
        fail(source.string());
    const auto size = std::filesystem::file_size(source);
    begin(name, size);
    crypto_generichash_state state{};
    crypto_generichash_init(&state, nullptr, 0, crypto_generichash_BYTES);
    std::string piece(pieceBytes, '\0');
    for (auto left = size; left > 0;) {
        Interruption::heed();
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, piece.size()));
        if (std::fread(piece.data(), 1, wanted, in.get()) != wanted)
            throw std::runtime_error(fmt::format("{} cannot be read to its end", source.string()));
        crypto_generichash_update(&state, reinterpret_cast<const unsigned char*>(piece.data()), wanted);
        write(std::string_view{piece}.substr(0, wanted));
        left -= wanted;
    }
    pad(size);
    std::array<unsigned char, crypto_generichash_BYTES> hash{};
    crypto_generichash_final(&state, hash.data(), hash.size());
    return Random::hexadecimal(hash);
}

void ArchiveWriter::finish()
{
    write(std::string(2 * blockBytes, '\0'));
    if (std::fflush(m_file.get()) != 0 || fsync(fileno(m_file.get())) != 0)
        fail("the disk does not keep the archive");
}

ArchiveReader::ArchiveReader(const std::filesystem::path& file) : m_file(std::fopen(file.c_str(), "rbe"), std::fclose)
{
    if (!m_file)
        fail(file.string());
}

std::string ArchiveReader::block(std::size_t bytes)
{
    std::string content(bytes, '\0');
    if (std::fread(content.data(), 1, bytes, m_file.get()) != bytes)
        throw std::runtime_error("the archive is cut off");
    return content;
}

std::optional<ArchiveReader::Member> ArchiveReader::next()
{
    if (!m_taken)
        read([](std::string_view) {});
    const auto header = block(blockBytes);
    if (header.find_first_not_of('\0') == std::string::npos)
        return std::nullopt;
    if (numberIn(header, sumField) != sumOf(header))
        throw std::runtime_error("the archive is damaged");
    const auto name = std::string_view{header}.substr(nameField.at, nameField.size);
    m_size = numberIn(header, sizeField);
    m_taken = false;
    return Member{std::string{name.substr(0, name.find('\0'))}, m_size};
}

void ArchiveReader::read(const std::function<void(std::string_view block)>& take)
{
    m_taken = true;
    for (auto left = m_size; left > 0;) {
        Interruption::heed();
        const auto piece = block(static_cast<std::size_t>(std::min<std::uint64_t>(left, pieceBytes)));
        take(piece);
        left -= piece.size();
    }
    block(paddingOf(m_size));
}

}
