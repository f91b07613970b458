#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

/// A folder that is gone with its object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string file(std::string_view name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

/// An empty place for books, gone with its object: a file, or a schema of its own on the server that the tests are run
/// on.
class TestDatabase {
public:
    /// What the tests are run on: the address of a server that the environment names, or nothing for files.
    static std::optional<std::string> server();

    /// What a server's transactions see of each other: as the server has it, or as if they came one after the other.
    enum class Isolation : std::uint8_t { asItIs, strictest };

    /// `folder` outlives it.
    explicit TestDatabase(const TemporaryFolder& folder, Isolation isolation = Isolation::asItIs);
    ~TestDatabase();
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;

    [[nodiscard]] const std::string& name() const { return m_name; }
    /// What receipts and seals are kept beside.
    [[nodiscard]] const std::string& files() const { return m_files; }

private:
    std::string m_files;
    std::string m_schema; // on the server
    std::string m_name;
};

}
