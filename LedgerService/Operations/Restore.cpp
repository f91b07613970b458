#include "LedgerService/Operations/Restore.h"

#include <array>
#include <filesystem>

#include <fmt/core.h>

#include "LedgerService/DurableFile.h"
#include "LedgerService/Operations/DatabaseFile.h"
#include "LedgerService/Operations/UnpackedArchive.h"

namespace LedgerService {

namespace {

namespace fs = std::filesystem;

constexpr std::array endings{"", "-wal", "-shm", "-receipts", "-seals"};
/// What is put in place, the database last: without it there is nothing to serve.
constexpr std::array placed{"-receipts", "-seals", ""};

void putInPlace(const std::string& from, const std::string& to)
{
    for (const auto* ending : placed) {
        if (fs::exists(from + ending))
            fs::rename(from + ending, to + ending);
    }
    if (const auto failure = DurableFile::settle(fs::absolute(to).parent_path()))
        throw std::system_error{failure, to};
}

}

std::optional<std::string> Restore::carryOut(const std::string& archive, const std::string& file)
{
    if (auto refused = DatabaseFile::whyNotName(file))
        return refused;
    for (const auto* ending : endings) {
        std::error_code ignored;
        if (fs::exists(file + ending, ignored))
            return fmt::format("{}{} is there already: books are restored to an empty place only", file, ending);
    }
    try {
        const UnpackedArchive unpacked{archive, fs::absolute(file).parent_path()};
        putInPlace(unpacked.database(), file);
        return std::nullopt;
    } catch (const std::exception& failure) {
        return fmt::format("cannot restore {}: {}", archive, failure.what());
    }
}

}
