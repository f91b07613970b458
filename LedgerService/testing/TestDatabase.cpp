#include "LedgerService/testing/TestDatabase.h"

#include <cstdlib>
#include <fstream>

#include <fmt/core.h>
#include <unistd.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Sql/Connection.h"

namespace LedgerService {

TemporaryFolder::TemporaryFolder()
{
    auto pattern = (std::filesystem::temp_directory_path() / "tallyfold-XXXXXX").string();
    require(mkdtemp(pattern.data()) != nullptr, "a temporary folder can be made");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::optional<std::string> TestDatabase::server()
{
    const char* const folder = std::getenv("TALLYFOLD_TEST_SERVER");
    if (folder == nullptr)
        return std::nullopt;
    std::ifstream file{std::filesystem::path{folder} / "url"};
    std::string address;
    require(static_cast<bool>(std::getline(file, address)), "scripts/postgresql has started the server");
    return address;
}

TestDatabase::TestDatabase(const TemporaryFolder& folder, Isolation isolation)
    : m_files(folder.file("books.sqlite")), m_name(m_files)
{
    const auto address = server();
    if (!address)
        return;
    m_schema = fmt::format("test_{}", Random::digest(Random::identifier()).substr(0, 24));
    Connection{*address}.execute("CREATE SCHEMA " + m_schema);
    m_name = fmt::format("{}?options=-c%20search_path%3D{}", *address, m_schema);
    if (isolation == Isolation::strictest)
        m_name += "%20-c%20default_transaction_isolation%3Dserializable";
}

TestDatabase::~TestDatabase()
{
    if (m_schema.empty())
        return;
    try {
        Connection{*server()}.execute(fmt::format("DROP SCHEMA {} CASCADE", m_schema));
    } catch (const std::exception& failure) {
        fmt::print(stderr, "the schema {} stays: {}\n", m_schema, failure.what());
    }
}

}
