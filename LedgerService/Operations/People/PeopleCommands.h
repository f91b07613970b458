#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace LedgerService {

/// The commands `companies` and `users` of the program.
class PeopleCommands {
public:
    explicit PeopleCommands(CLI::App& app);

    /// Carries out what the arguments asked for and gives the exit code; nothing when they asked for something else.
    [[nodiscard]] std::optional<int> run() const;

private:
    using Work = std::function<int(const PeopleCommands&)>;
    CLI::App& declare(CLI::App& parent, const char* name, const char* description, Work work);
    void declareCompanies(CLI::App& app);
    void declareUsers(CLI::App& app);
    [[nodiscard]] int exportCompany() const;
    [[nodiscard]] int importCompany() const;

    std::string m_file; // or the address of a database
    std::string m_files;
    std::string m_timeZone;
    std::string m_company;
    std::string m_email;
    std::string m_archive;
    bool m_closes = false;
    bool m_setsPassword = false;
    std::vector<std::pair<const CLI::App*, Work>> m_commands;
};

}
