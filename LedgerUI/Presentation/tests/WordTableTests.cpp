#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Client/Receipts/AttachmentFilename.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Entries/Reversals/ReversalWords.h"
#include "LedgerCore/Domain/Imports/LedgerImportWords.h"
#include "LedgerCore/Domain/Money/MoneyError.h"
#include "LedgerService/Books/Demonstration/DemoWords.h"
#include "LedgerService/Mail/MailTexts.h"
#include "LedgerUI/Presentation/Keys/KeyHelp.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Text/Values/CalendarWords.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"

namespace {

/// Every table of texts of every program, by the name of its function. A new one that is missing here is found below.
const std::map<std::string, const WordTable*>& tables()
{
    static const std::map<std::string, const WordTable*> all{
        // clang-format off: one on each line, so that new ones never meet
        {"AttachmentFilename::words", &AttachmentFilename::words()},
        {"CalendarWords::longMonths", &CalendarWords::longMonths()},
        {"CalendarWords::patterns", &CalendarWords::patterns()},
        {"CalendarWords::ranges", &CalendarWords::ranges()},
        {"CalendarWords::shortMonths", &CalendarWords::shortMonths()},
        {"CalendarWords::weekdays", &CalendarWords::weekdays()},
        {"CommandWords::table", &LedgerCLI::CommandWords::table()},
        {"DemoWords::names", &LedgerService::DemoWords::names()},
        {"DemoWords::notes", &LedgerService::DemoWords::notes()},
        {"EntryCopy::words", &EntryCopy::words()},
        {"EntryProblem::words", &EntryProblem::words()},
        {"EntryWords::words", &EntryWords::words()},
        {"LedgerImportWords::table", &LedgerImportWords::table()},
        {"MailTexts::table", &LedgerService::MailTexts::table()},
        {"ReversalWords::words", &ReversalWords::words()},
        {"accessWords", &accessWords()},
        {"accountFormWords", &accountFormWords()},
        {"accountWords", &accountWords()},
        {"auditWords", &auditWords()},
        {"bookkeepingWords", &bookkeepingWords()},
        {"capitalFormWords", &capitalFormWords()},
        {"capitalWords", &capitalWords()},
        {"categoryWords", &categoryWords()},
        {"commandWords", &commandWords()},
        {"companyAccessWords", &companyAccessWords()},
        {"companyWords", &companyWords()},
        {"dialogWords", &dialogWords()},
        {"entryFormWords", &entryFormWords()},
        {"exportWords", &exportWords()},
        {"failureWords", &failureWords()},
        {"fileWords", &fileWords()},
        {"importWords", &importWords()},
        {"keyWords", &keyWords()},
        {"ledgerWords", &ledgerWords()},
        {"dayWords", &dayWords()},
        {"moneyErrorWords", &moneyErrorWords()},
        {"periodWords", &periodWords()},
        {"printWords", &printWords()},
        {"receiptWords", &receiptWords()},
        {"reportWords", &reportWords()},
        {"requestWords", &requestWords()},
        {"roleWords", &roleWords()},
        {"serviceMessages", &serviceMessages()},
        {"settingsWords", &settingsWords()},
        {"templateWords", &templateWords()},
        {"signInWords", &signInWords()},
        {"spokenMoney", &spokenMoney()},
        {"storeMessages", &storeMessages()},
        {"workspaceWords", &workspaceWords()},
        // clang-format on
    };
    return all;
}

std::string pathOf(const std::string& module)
{
    return TALLYFOLD_SOURCES "/" + module + "/";
}

/// The sources of all modules by their paths, without tests.
const std::map<std::string, std::string>& sources()
{
    static const auto all = [] {
        std::map<std::string, std::string> read;
        for (const auto* module : {"Tallyfold", "LedgerUI", "LedgerCore", "LedgerService", "LedgerCLI"}) {
            for (const auto& each : std::filesystem::recursive_directory_iterator{pathOf(module)}) {
                const auto path = each.path().string();
                const bool isSource = path.ends_with(".cpp") || path.ends_with(".h");
                const bool isTest = path.find("/tests/") != std::string::npos;
                if (!isSource || isTest || path.find("/testing/") != std::string::npos)
                    continue;
                std::ostringstream text;
                text << std::ifstream{path}.rdbuf();
                read[path] = text.str();
            }
        }
        return read;
    }();
    return all;
}

std::vector<std::smatch> matches(const std::string& text, const std::regex& pattern)
{
    return {std::sregex_iterator{text.begin(), text.end(), pattern}, {}};
}

using Modules = std::vector<std::string>;

bool isAnywhere(const std::string& text, const Modules& modules)
{
    return std::ranges::any_of(sources(), [&](const auto& each) {
        return !each.first.ends_with("Words.cpp") && !each.first.ends_with("StoreMessages.cpp") &&
               std::ranges::any_of(modules, [&](const auto& one) { return each.first.starts_with(pathOf(one)); }) &&
               each.second.find(text) != std::string::npos;
    });
}

/// Whether some source asks for the row: by its whole key, by the stem of a count or by the part before a point to
/// which it adds the rest.
bool isAskedFor(const std::string& key, const Modules& modules)
{
    const auto point = key.rfind('.');
    return isAnywhere('"' + key + '"', modules) ||
           (point != std::string::npos && (isAnywhere('"' + key.substr(0, point + 1) + '"', modules) ||
                                           isAnywhere('"' + key.substr(0, point) + '"', modules)));
}

}

TEST(WordTables, AreAllKnown)
{
    static const std::regex definition{R"(\nconst WordTable& (?:(\w+)::)?(\w+)\(\)\n)"};
    static const std::regex made{R"(\bconst WordTable \w+[{(])"};
    std::size_t found = 0;
    for (const auto& [path, text] : sources()) {
        const auto definitions = matches(text, definition);
        EXPECT_EQ(matches(text, made).size(), definitions.size()) << path << " has a table that nothing can name";
        for (const auto& each : definitions) {
            const auto name = each[1].matched ? each[1].str() + "::" + each[2].str() : each[2].str();
            EXPECT_TRUE(tables().contains(name)) << path << ": " << name << " is missing in the list";
            ++found;
        }
    }
    EXPECT_EQ(found, tables().size());
}

TEST(WordTables, HoldEveryKeyThatIsAskedFor)
{
    static const std::regex alias{R"(const auto& (\w+) = ((?:\w+::)?\w+)\(\);)"};
    static const std::regex question{
        R"re(\b(word|wordIn|countedIn)\(\s*(?:[\w:.>-]+(?:\(\))?,\s*)?((?:\w+::)?\w+)(?:\(\))?,\s*(?:[^"{};]*\?\s*"(\w[\w.]*)"\s*:\s*)?"(\w[\w.]*)")re"};
    std::size_t asked = 0;
    for (const auto& [path, text] : sources()) {
        const auto aliases = matches(text, alias);
        for (const auto& each : matches(text, question)) {
            std::string table = each[2];
            for (const auto& other : aliases) {
                if (other.position() < each.position() && other[1] == each[2].str())
                    table = other[2];
            }
            const auto known = tables().find(table);
            if (known == tables().end()) {
                ADD_FAILURE() << path << " asks " << table;
                continue;
            }
            for (const auto& key : {each[3].str(), each[4].str()}) {
                // A key that ends with a point goes on with something that only the running program knows.
                if (key.empty() || key.ends_with('.'))
                    continue;
                ++asked;
                const auto counted = each[1] == "countedIn" ? key + ".many" : key;
                EXPECT_TRUE(known->second->contains(counted)) << path << ": " << table << " has no " << counted;
            }
        }
    }
    EXPECT_GT(asked, 100U) << "the calls are no longer recognised";
}

TEST(WordTables, HoldNothingThatNobodyAsksFor)
{
    const Modules window{"Tallyfold", "LedgerUI", "LedgerCore"};
    const Modules companion{"LedgerCLI", "LedgerCore"};
    const std::string ofCompanion = "CommandWords::table";
    for (const auto& [name, table] : tables()) {
        // The keys of the others come from data: roles, months, signs.
        if ((!name.ends_with("Words") && name != "storeMessages" && name != ofCompanion) || table == &roleWords())
            continue;
        const auto& modules = name == ofCompanion ? companion : window;
        for (const auto& row : table->rows())
            EXPECT_TRUE(isAskedFor(std::string{row.key}, modules)) << name << ": nobody asks for " << row.key;
    }
}

TEST(WordTables, CallOneThingByOneName)
{
    for (const auto& [name, table] : tables()) {
        for (const auto& row : table->rows()) {
            for (const auto* other : {"转账", "兑换", "启用日期", "记账开始", "账务", "账套", "股利", "凭证"})
                EXPECT_EQ(row.chinese.find(other), std::string_view::npos) << name << ": " << row.chinese;
            for (const auto* other : {"bắt đầu sổ sách", "Nhập bản ghi"})
                EXPECT_EQ(row.vietnamese.find(other), std::string_view::npos) << name << ": " << row.vietnamese;
            for (const auto* other : {"encetak", "eladen", "erute"})
                EXPECT_EQ(row.indonesian.find(other), std::string_view::npos) << name << ": " << row.indonesian;
            if (row.english == "Note" || row.english == "Note (optional)") // "catatan" is the entry itself
                EXPECT_TRUE(row.indonesian.starts_with("Keterangan")) << name << ": " << row.indonesian;
        }
    }
}

TEST(KeyBindings, HoldEveryShortcutOfTheWindow)
{
    // Whatever a source spells by itself is missing in the list of all keys.
    static const std::regex spelled{R"((QShortcut\(|QKeySequence[({])\s*(QKeySequence[({]|Qt::|QStringLiteral))"};
    for (const auto& [path, text] : sources()) {
        if (!path.ends_with("KeyBindings.cpp"))
            EXPECT_FALSE(std::regex_search(text, spelled)) << path;
    }
}
