#include "LedgerCLI/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <utility>

#include <CLI/CLI.hpp>

#include "LedgerCLI/AllocateCommand.h"
#include "LedgerCLI/BalancesCommand.h"
#include "LedgerCLI/BookFiles.h"
#include "LedgerCLI/CommandHelp.h"
#include "LedgerCLI/CommandWords.h"
#include "LedgerCLI/ExportCommand.h"
#include "LedgerCLI/ImportPlanCommand.h"
#include "LedgerCLI/ReportCommand.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Reports/ReportSource.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace LedgerCLI {

namespace {

const std::vector<std::string> entryKinds{EntryKind::all.begin(), EntryKind::all.end()};

/// The language of the terminal; English where the environment names none.
std::string terminalLocale()
{
    for (const auto* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const auto* const given = std::getenv(name);
        const std::string value{given == nullptr ? "" : given};
        if (value == "POSIX" || value == "C" || value.starts_with("C."))
            break;
        if (!value.empty())
            return value;
    }
    return "en-US";
}

DividendShare parseShare(const std::string& text)
{
    const auto equals = text.rfind('=');
    DividendShare share;
    if (equals != std::string::npos) {
        const auto* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data() + equals + 1, end, share.ratioBps);
        if (read.ec == std::errc{} && read.ptr == end) {
            share.participantID = text.substr(0, equals);
            return share;
        }
    }
    throw CLI::ValidationError{"--share", "expected PARTICIPANT=BASISPOINTS, not " + text};
}

/// The options of all commands and what to do about the one that was chosen.
class Program {
public:
    Program()
    {
        CommandHelp::install(m_app);
        m_app.set_version_flag("--version", TALLYFOLD_VERSION);
        m_app.require_subcommand(1);
        addBalances();
        addReport();
        addExport();
        addImportPlan();
        addTemplate();
        addAllocate();
    }

    int run(int argumentCount, const char* const* arguments)
    {
        try {
            m_app.parse(argumentCount, arguments);
            m_style.locale = AppLanguage::locale(m_style.locale);
            return finish(m_command());
        } catch (const CLI::ParseError& error) {
            if (m_app.exit(error) != 0)
                return std::to_underlying(ExitCode::usage);
            return std::cout.flush() ? 0 : unwritable();
        }
    }

private:
    CLI::App* command(CLI::App& above, const char* name, const char* description)
    {
        auto* added = above.add_subcommand(name, description);
        const auto isNested = &above != &m_app;
        added->footer(CommandHelp::footer(isNested ? above.get_name() + " " + name : name));
        added
            ->add_option("--locale", m_style.locale,
                         "Language of texts: zh, en, id or vi, any other being zh; by default the terminal's")
            ->option_text("LOCALE");
        return added;
    }

    /// A command on the books of a snapshot file, or on that part of them which it takes.
    template <class Books = LedgerSnapshot, class Run>
    CLI::App* command(CLI::App& above, const char* name, const char* description, Run run)
    {
        auto* added = command(above, name, description);
        added->add_option("--snapshot", m_snapshotPath, "The books, as the service returns them; - for standard input")
            ->required()
            ->option_text("FILE");
        added->callback([this, run = std::move(run)] {
            m_command = [this, run]() -> CommandResult {
                const auto books = BookFiles::readSnapshot<Books>(m_snapshotPath, m_style.locale);
                if (!books)
                    return std::unexpected(books.error());
                return run(**books);
            };
        });
        return added;
    }

    /// An option that takes one of a few words and nothing else.
    template <class Value>
    static void addChoice(CLI::App& command, const char* name, Value& target, const char* description,
                          std::vector<std::pair<std::string, Value>> choices)
    {
        std::vector<std::string> words(choices.size());
        std::ranges::transform(choices, words.begin(), &std::pair<std::string, Value>::first);
        const auto shown = CLI::detail::join(words, "|");
        const auto choose = [&target, choices = std::move(choices)](const std::string& chosen) {
            target = std::ranges::find(choices, chosen, &std::pair<std::string, Value>::first)->second;
        };
        command.add_option_function<std::string>(name, choose, description)
            ->check(CLI::IsMember(std::move(words)))
            ->option_text(shown);
    }

    void addFormat(CLI::App& command)
    {
        addChoice<OutputFormat>(
            command, "--format", m_style.format, "text for people; csv or json for programs",
            {{"text", OutputFormat::text}, {"csv", OutputFormat::csv}, {"json", OutputFormat::json}});
    }

    void addOut(CLI::App& command)
    {
        command
            .add_option("--out", m_target.path,
                        "Where to write; - for standard output, by default the file's own name here")
            ->option_text("FILE");
    }

    void addBalances()
    {
        using Source = BalancesCommand::Source;
        addFormat(*command<Source>(m_app, "balances", "What each account holds, by currency",
                                   [this](const Source& books) { return BalancesCommand::run(books, m_style); }));
    }

    void addReport()
    {
        auto* added = command<ReportSource>(
            m_app, "report", "Opening, income, expense, other movements and closing by period",
            [this](const ReportSource& books) { return ReportCommand::run(books, m_report, m_style); });
        addFormat(*added);
        added->add_option("--currency", m_report.currency, "ISO code")->required()->option_text("CODE");
        added->add_option("--from", m_report.from, "First day")->required()->option_text("DAY");
        added->add_option("--to", m_report.to, "Last day")->required()->option_text("DAY");
        addChoice<Period::Span>(*added, "--by", m_report.by, "Length of a period; month by default",
                                {{"day", Period::Span::day},
                                 {"week", Period::Span::week},
                                 {"month", Period::Span::month},
                                 {"quarter", Period::Span::quarter},
                                 {"year", Period::Span::year},
                                 {"total", Period::Span::dates}});
        added->add_option("--account", m_report.accountIDs, "Only this account; may be repeated")->option_text("ID");
    }

    void addExport()
    {
        auto* exports = m_app.add_subcommand("export", "Write the files that the window exports");
        exports->require_subcommand(1);
        exports->footer(CommandHelp::footer("export"));
        auto* ledger = command(*exports, "ledger", "One record per leg", [this](const LedgerSnapshot& books) {
            m_scope.includesAllVisibleAccounts = m_scope.accountIDs.empty();
            m_scope.includesAllVisibleCurrencies = m_scope.currencies.empty();
            return ExportCommand::ledger(books, m_scope, m_target, m_style.locale);
        });
        addOut(*ledger);
        ledger->add_option("--from", m_scope.startDate, "First day")->required()->option_text("DAY");
        ledger->add_option("--to", m_scope.endDate, "Last day")->required()->option_text("DAY");
        ledger->add_option("--account", m_scope.accountIDs, "Only this account; may be repeated")->option_text("ID");
        ledger->add_option("--currency", m_scope.currencies, "Only this currency; may be repeated")
            ->option_text("CODE");
        ledger->add_option("--kind", m_scope.kinds, "Only this kind of entry; may be repeated")
            ->check(CLI::IsMember(entryKinds))
            ->option_text(CLI::detail::join(entryKinds, "|"));
        ledger->add_flag("--receipt-index", m_scope.includesReceiptIndex, "Add receipt counts and filenames");
        addOut(*command(*exports, "capital", "One record per capital record", [this](const LedgerSnapshot& books) {
            return ExportCommand::capital(books, m_target, m_style.locale);
        }));
        addOut(*command(*exports, "dividends", "One record per dividend record", [this](const LedgerSnapshot& books) {
            return ExportCommand::dividends(books, m_target, m_style.locale);
        }));
    }

    void addImportPlan()
    {
        auto* added = command(m_app, "import-plan", "What an import file would record, or what is wrong with it",
                              [this](const LedgerSnapshot& books) -> CommandResult {
                                  const auto file = BookFiles::read(m_importPath, m_style.locale);
                                  if (!file)
                                      return std::unexpected(file.error());
                                  return ImportPlanCommand::run(*file, books, m_importDay, m_style);
                              });
        added->parse_complete_callback([this] {
            if (m_importPath == "-" && m_snapshotPath == "-")
                throw CLI::ValidationError{"file", "standard input can give the snapshot or the file, not both"};
        });
        addFormat(*added);
        added->add_option("--today", m_importDay, "The day on which the file would be sent; by default this day")
            ->option_text("DAY");
        added->add_option("file", m_importPath, "The file, in the layout of the template; - for standard input")
            ->required()
            ->option_text("FILE");
    }

    void addTemplate()
    {
        auto* added = command(m_app, "template", "Write the file that an import is filled in");
        addOut(*added);
        added->callback([this] {
            m_command = [this] {
                const auto ownName = std::string{LedgerImportCSV::templateName} + ".csv";
                return BookFiles::write(m_target.path.empty() ? ownName : m_target.path,
                                        LedgerImportCSV::templateText(), m_style.locale);
            };
        });
    }

    void addAllocate()
    {
        auto* added = command(m_app, "allocate", "How a dividend would be split", [this](const LedgerSnapshot& books) {
            return AllocateCommand::run(books, m_allocation, m_style);
        });
        addFormat(*added);
        added->add_option("--total", m_allocation.total, "With a decimal point")->required()->option_text("AMOUNT");
        added->add_option("--currency", m_allocation.currency, "ISO code")->required()->option_text("CODE");
        added
            ->add_option_function<std::vector<std::string>>(
                "--share",
                [this](const std::vector<std::string>& texts) {
                    for (const auto& text : texts)
                        m_allocation.shares.push_back(parseShare(text));
                },
                "A participant's part, 10000 being the whole; may be repeated, by default everybody's own ratio")
            ->option_text("ID=BPS");
    }

    [[nodiscard]] int unwritable() const
    {
        return finish(std::unexpected(
            CommandFailure{ExitCode::file, std::string{CommandWords::text("outputUnwritable", m_style.locale)}}));
    }

    [[nodiscard]] int finish(const CommandResult& result) const
    {
        if (!result) {
            std::fprintf(stderr, "tallyfold-cli: %s\n", result.error().message.c_str());
            return std::to_underlying(result.error().code);
        }
        const auto& text = result->text;
        const bool written =
            std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
        return written ? std::to_underlying(result->code) : unwritable();
    }

    CLI::App m_app{"Tallyfold for the terminal: reads a company's books from a snapshot file.", "tallyfold-cli"};
    OutputStyle m_style{.locale = terminalLocale()};
    std::string m_snapshotPath;
    std::string m_importPath;
    std::string m_importDay = LedgerDay::localGregorian().day(std::chrono::system_clock::now());
    ExportCommand::Target m_target{.path = {},
                                   .today = LedgerDay::localGregorian().day(std::chrono::system_clock::now())};
    LedgerExportScope m_scope;
    ReportCommand::Request m_report;
    AllocateCommand::Request m_allocation;
    std::function<CommandResult()> m_command;
};

}

int CommandLine::run(int argumentCount, const char* const* arguments)
{
    return Program{}.run(argumentCount, arguments);
}

}
