#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "LedgerCLI/TextTable.h"
#include "LedgerCLI/tests/ProgramRun.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace LedgerCLI {

namespace {

LedgerSnapshot books()
{
    auto built = snapshot()
                     .account("bank", {"USD", "JPY"})
                     .account("现金", {"USD"})
                     .category("office", "expense", "Office")
                     .category("rent", "expense", "Rent", "office")
                     .category("sales", "income", "Sales")
                     .grantAll()
                     .income("t1", "2024-01-10", "bank", "USD", 123456, "sales")
                     .expense("t2", "2024-02-01", "bank", "USD", 5000, "rent")
                     .note("=late")
                     .transfer("t3", "2024-02-02", "bank", "现金", "USD", 1000)
                     .income("t4", "2024-03-01", "现金", "USD", 7)
                     .build();
    built.dividends.emplace().participants = {{"ana", "Ana", {}, 6000, false}, {"budi", "Budi", {}, 4000, false}};
    return built;
}

/// The import template, as it was agreed.
constexpr std::string_view importHeader =
    "\xEF\xBB\xBF\"日期 Date\",\"类型 Type\",\"账户 Account\",\"币种 Currency\",\"金额 Amount\",\"分类 Category\","
    "\"备注 Note\",\"目标账户 Target Account\",\"目标币种 Target Currency\",\"目标金额 Target Amount\"\r\n";

/// A folder with the books in "books.json", removed at the end.
class CommandLineProgram : public testing::Test {
protected:
    void SetUp() override
    {
        m_directory = std::filesystem::temp_directory_path() / ("tallyfold-cli-" + std::to_string(getpid()));
        std::filesystem::create_directory(m_directory);
        write("books.json", Json::encode(books()));
    }
    void TearDown() override { std::filesystem::remove_all(m_directory); }

    [[nodiscard]] ProgramRun run(const std::vector<std::string>& arguments, const std::string& piped = {}) const
    {
        return ProgramRun::of(m_directory.string(), arguments, piped);
    }
    [[nodiscard]] std::filesystem::path path(const std::string& name) const { return m_directory / name; }
    void write(const std::string& name, std::string_view content) const
    {
        std::ofstream{path(name), std::ios::binary} << content;
    }
    [[nodiscard]] std::string read(const std::string& name) const
    {
        std::ifstream file{path(name), std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

private:
    std::filesystem::path m_directory;
};

}

TEST_F(CommandLineProgram, PrintsBalancesForPeopleAndPrograms)
{
    EXPECT_EQ(run({"balances", "--snapshot", "books.json"}).output, "Account  Currency   Balance\n"
                                                                    "bank     USD       1,174.56\n"
                                                                    "bank     JPY              0\n"
                                                                    "现金     USD          10.07\n");
    EXPECT_EQ(run({"balances", "--snapshot", "books.json", "--format", "json"}).output,
              R"([{"accountID":"bank","account":"bank","currency":"USD","balanceMinor":117456},)"
              R"({"accountID":"bank","account":"bank","currency":"JPY","balanceMinor":0},)"
              R"({"accountID":"现金","account":"现金","currency":"USD","balanceMinor":1007}])"
              "\n");
    EXPECT_EQ(run({"balances", "--snapshot", "books.json", "--locale", "id"}).output.substr(0, 24),
              "Rekening  Mata uang     ");
}

TEST_F(CommandLineProgram, ReportsPeriodsThatOpenAsTheLastOneClosed)
{
    const std::vector<std::string> report{"report", "--snapshot", "books.json", "--currency", "USD",
                                          "--from", "2024-01-01", "--to",       "2024-02-29"};
    auto asJson = report;
    asJson.insert(asJson.end(), {"--by", "month", "--format", "json"});
    const std::string noOthers = R"("movements":[{"kind":"transfer","amountMinor":0},)"
                                 R"({"kind":"exchange","amountMinor":0},{"kind":"opening","amountMinor":0},)"
                                 R"({"kind":"capital","amountMinor":0},{"kind":"dividend","amountMinor":0},)"
                                 R"({"kind":"other","amountMinor":0}])";
    EXPECT_EQ(run(asJson).output,
              R"([{"from":"2024-01-01","to":"2024-01-31","openingMinor":0,"income":[{"categoryID":"sales",)"
              R"("category":"Sales","amountMinor":123456}],"expense":[],)" +
                  noOthers +
                  R"(,"closingMinor":123456},)"
                  R"({"from":"2024-02-01","to":"2024-02-29","openingMinor":123456,"income":[],)"
                  R"("expense":[{"categoryID":"rent","category":"Office › Rent","amountMinor":-5000}],)" +
                  noOthers +
                  R"(,"closingMinor":118456}])"
                  "\n");

    auto inChinese = report;
    inChinese.insert(inChinese.end(), {"--by", "total", "--locale", "zh"});
    EXPECT_NE(run(inChinese).output.find("支出：Office (zh) › Rent (zh)"), std::string::npos);

    auto unlisted = books();
    unlisted.categories.pop_back();
    write("unlisted.json", Json::encode(unlisted));
    auto ofUnlisted = report;
    ofUnlisted[2] = "unlisted.json";
    EXPECT_NE(run(ofUnlisted).output.find("  Income: sales"), std::string::npos);

    auto ofCash = report;
    ofCash.insert(ofCash.end(), {"--by", "total", "--account", "现金"});
    EXPECT_EQ(run(ofCash).output, "2024-01-01 to 2024-02-29, USD\n"
                                  "  Opening                       0.00\n"
                                  "  Transfers                    10.00\n"
                                  "  Closing                      10.00\n");
}

TEST_F(CommandLineProgram, WritesTheFilesThatTheWindowExports)
{
    const auto done = run({"export", "ledger", "--snapshot", "books.json", "--from", "2024-02-01", "--to", "2024-12-31",
                           "--account", "bank", "--receipt-index", "--locale", "vi", "--out", "ledger.csv"});
    EXPECT_EQ(done.code, 0) << done.errors;
    EXPECT_EQ(done.output, "Đã ghi ledger.csv.\n");
    EXPECT_EQ(read("ledger.csv"),
              "\xEF\xBB\xBF"
              R"("transaction_id","date","kind","account","currency","amount","amount_minor","category","member",)"
              R"("note","reversal_of","reversed_by","original_transaction_id","external_reference",)"
              R"("transfer_purpose","created_at","distribution_kind","participant_name","dividend_movement_id",)"
              R"("capital_contribution_id","receipt_count","receipt_names")"
              "\r\n"
              R"csv("t2","2024-02-01","expense","bank","USD","'-50.00","'-5000","Rent (vi)","Mira Owner","'=late",)csv"
              R"("","","","","","2024-02-01T08:00:00Z","","","","","0","")"
              "\r\n"
              R"("t3","2024-02-02","transfer","bank","USD","'-10.00","'-1000","","Mira Owner","","","","","","",)"
              R"("2024-02-02T08:00:00Z","","","","","0","")"
              "\r\n");

    EXPECT_EQ(run({"export", "ledger", "--snapshot", "books.json", "--from", "2024-02-01", "--to", "2024-02-01"}).code,
              0);
    EXPECT_EQ(std::ranges::count(read("quillet-ledger-2024-02-01.csv"), '\n'), 2);
    EXPECT_EQ(run({"export", "dividends", "--snapshot", "books.json", "--out", "-"}).output,
              "\xEF\xBB\xBF"
              R"("record_id","kind","date","created_at","period","currency","participant_id","participant_name",)"
              R"("ratio_bps","amount","amount_minor","batch_id","advance_id","reversal_of","reversed_by","cancelled",)"
              R"("cancelled_date")"
              "\r\n");
    EXPECT_EQ(run({"template", "--out", "-"}).output, importHeader);
}

TEST_F(CommandLineProgram, ExportsOwnersMoneyOnlyForThoseWhoMay)
{
    auto held = books();
    held.capital.emplace();
    const auto with = [&](std::vector<std::string> permissions, const std::string& file) {
        held.currentMember.permissions = std::move(permissions);
        write("rights.json", Json::encode(held));
        return run({"export", file, "--snapshot", "rights.json", "--out", "-"});
    };
    const auto refused = with({"viewCompany", "viewCapital", "viewDividends"}, "dividends");
    EXPECT_EQ(refused.code, 5);
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, "tallyfold-cli: This member may not export.\n");
    EXPECT_EQ(with({"viewCompany", "exportData"}, "dividends").code, 5) << "exports, but does not see dividends";
    EXPECT_EQ(with({"viewCompany", "viewDividends", "exportData"}, "dividends").code, 0);
    EXPECT_EQ(with({"viewCompany", "viewCapital", "exportData"}, "capital").code, 5);
    EXPECT_EQ(with({"viewCompany", "viewCapital", "exportCapital"}, "capital").code, 0);
}

TEST_F(CommandLineProgram, WritesThroughLinksAndPipesAndKeepsTheRightsOfAFile)
{
    namespace fs = std::filesystem;
    write("kept.csv", "old");
    fs::permissions(path("kept.csv"), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("kept.csv", path("link.csv"));
    EXPECT_EQ(run({"template", "--out", "link.csv"}).code, 0);
    EXPECT_TRUE(fs::is_symlink(path("link.csv")));
    EXPECT_EQ(read("kept.csv"), importHeader);
    EXPECT_EQ(fs::status(path("kept.csv")).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    const int pipe = open(path("pipe").c_str(), O_RDWR | O_NONBLOCK);
    ASSERT_GE(pipe, 0);
    EXPECT_EQ(run({"template", "--out", "pipe"}).code, 0);
    std::string received(4096, '\0');
    received.resize(static_cast<std::size_t>(std::max<ssize_t>(::read(pipe, received.data(), received.size()), 0)));
    close(pipe);
    EXPECT_EQ(received, importHeader);
    EXPECT_TRUE(fs::is_fifo(path("pipe")));
}

TEST_F(CommandLineProgram, PlansAnImportAsTheInterfaceDoes)
{
    const auto good = std::string{importHeader} + "2024-05-01,Income,bank,USD,5,Sales,x,,,\r\n";
    write("good.csv", good);
    const auto planned = run({"import-plan", "good.csv", "--snapshot", "books.json", "--format", "json"});
    EXPECT_EQ(planned.code, 0) << planned.errors;
    EXPECT_EQ(planned.output, R"({"inputs":[{"kind":"income","date":"2024-05-01","note":"x","categoryID":"sales",)"
                              R"("targetAccountID":"bank","currency":"USD","amountMinor":500,"attachmentIDs":[],)"
                              R"("idempotencyKey":"218fbd92-ae57-5839-9111-27e3fbba14a0"}],"issues":[],"refusals":[],)"
                              R"("malformed":false})"
                              "\n");
    EXPECT_EQ(run({"import-plan", "good.csv", "--snapshot", "books.json"}).output, "1 records are ready to import.\n");

    write("bad.csv", std::string{importHeader} + "2024-05-01,Income,bank,USD,0,Sales,x,,,\r\n");
    const auto refused = run({"import-plan", "bad.csv", "--snapshot", "books.json"});
    EXPECT_EQ(refused.code, 6);
    EXPECT_EQ(refused.output, "1 issues found; no data has been written.\n\n"
                              "Line  Value  Problem\n"
                              "   2  0      Amount must be a valid number greater than zero.\n");
    EXPECT_EQ(run({"import-plan", "bad.csv", "--snapshot", "books.json", "--format", "json"}).output,
              R"({"inputs":[],"issues":[{"line":2,"message":"amount","value":"0"}],"refusals":[],"malformed":false})"
              "\n");

    write("large.csv", std::string(LedgerImportCSV::maximumFileSize + 1, 'x'));
    const auto tooLarge = run({"import-plan", "large.csv", "--snapshot", "books.json", "--format", "json"});
    EXPECT_EQ(tooLarge.code, 6);
    EXPECT_EQ(tooLarge.output,
              R"({"inputs":[],"issues":[{"line":1,"message":"fileSize"}],"refusals":[],"malformed":true})"
              "\n");
}

TEST_F(CommandLineProgram, NamesTheRowsThatTheServiceWouldRefuse)
{
    write("late.csv", std::string{importHeader} + "2024-05-01,Income,bank,USD,5,Sales,x,,,\r\n"
                                                  "2024-05-03,Income,bank,USD,5,Sales,x,,,\r\n");
    const std::vector<std::string> plan{"import-plan", "late.csv", "--snapshot", "books.json", "--today", "2024-05-01"};
    const auto refused = run(plan);
    EXPECT_EQ(refused.code, 6);
    EXPECT_EQ(refused.output, "1 issues found; no data has been written.\n\n"
                              "Line  Value  Problem\n"
                              "   3         The day cannot be later than tomorrow.\n");
    auto asJson = plan;
    asJson.insert(asJson.end(), {"--format", "json", "--locale", "id"});
    EXPECT_NE(run(asJson).output.find(R"("issues":[],"refusals":[{"line":3,"message":"inFuture",)"
                                      R"("text":"Tanggal tidak boleh lebih dari besok."}],"malformed":false})"),
              std::string::npos);
    auto nextDay = plan;
    nextDay.back() = "2024-05-02";
    EXPECT_EQ(run(nextDay).code, 0);
    nextDay.back() = "2024-02-30";
    EXPECT_EQ(run(nextDay).code, 2);
}

TEST_F(CommandLineProgram, SplitsADividend)
{
    const std::vector<std::string> allocate{"allocate", "--snapshot", "books.json", "--currency", "USD", "--total"};
    auto own = allocate;
    own.insert(own.end(), {"0.01"});
    EXPECT_EQ(run(own).output, "Participant    Share    Amount\n"
                               "Ana          60.00 %  USD 0.01\n"
                               "Budi         40.00 %  USD 0.00\n");
    auto given = allocate;
    given.insert(given.end(), {"100.01", "--share", "budi=5000", "--share", "ana=5000", "--format", "json"});
    EXPECT_EQ(run(given).output,
              R"([{"participantID":"budi","participantName":"Budi","ratioBps":5000,"amountMinor":5000},)"
              R"({"participantID":"ana","participantName":"Ana","ratioBps":5000,"amountMinor":5001}])"
              "\n");
    given = allocate;
    given.insert(given.end(), {"1", "--share", "ana=9999"});
    const auto refused = run(given);
    EXPECT_EQ(refused.code, 5);
    EXPECT_EQ(refused.errors, "tallyfold-cli: The shares must add up to exactly 10000 basis points, each participant "
                              "once.\n");
}

TEST_F(CommandLineProgram, SaysByItsExitCodeWhatWentWrong)
{
    write("broken.json", R"({"company":)");
    write("marked.json", "\xEF\xBB\xBF" + read("books.json"));
    write("empty.csv", importHeader);
    auto silent = books();
    silent.currentMember.permissions = {"viewCompany"};
    write("silent.json", Json::encode(silent));
    const struct {
        std::vector<std::string> arguments;
        int code;
    } cases[] = {
        {{}, 2},
        {{"nonsense"}, 2},
        {{"balances"}, 2},
        {{"balances", "--snapshot", "books.json", "--format", "xml"}, 2},
        {{"balances", "--snapshot", "books.json", "--format", "2"}, 2},
        {{"report", "--snapshot", "books.json", "--currency", "USD", "--from", "2024-01-01", "--to", "2024-12-31",
          "--by", "4"},
         2},
        {{"import-plan", "-", "--snapshot", "-"}, 2},
        {{"allocate", "--snapshot", "books.json", "--currency", "USD", "--total", "1", "--share", "ana"}, 2},
        {{"allocate", "--snapshot", "books.json", "--currency", "USD", "--total", "1,5"}, 2},
        {{"report", "--snapshot", "books.json", "--currency", "USD", "--from", "2024-02-30", "--to", "2024-12-31"}, 2},
        {{"balances", "--snapshot", "missing.json"}, 3},
        {{"balances", "--snapshot", "."}, 3},
        {{"template", "--out", "no/such/folder.csv"}, 3},
        {{"balances", "--snapshot", "broken.json"}, 4},
        {{"export", "ledger", "--snapshot", "silent.json", "--from", "2024-01-01", "--to", "2024-01-02"}, 5},
        {{"export", "ledger", "--snapshot", "books.json", "--from", "2024-01-01", "--to", "2024-01-02", "--account",
          "x"},
         5},
        {{"export", "capital", "--snapshot", "books.json"}, 5},
        {{"export", "ledger", "--snapshot", "books.json", "--from", "2024-01-01", "--to", "2024-01-02", "--kind",
          "expenses"},
         2},
        {{"report", "--snapshot", "books.json", "--currency", "usd", "--from", "2024-01-01", "--to", "2024-12-31"}, 5},
        {{"report", "--snapshot", "books.json", "--currency", "USD", "--from", "2024-01-01", "--to", "2024-12-31",
          "--account", "bnak"},
         5},
        {{"report", "--snapshot", "books.json", "--currency", "EUR", "--from", "2024-01-01", "--to", "2024-12-31"}, 0},
        {{"balances", "--snapshot", "marked.json"}, 0},
        {{"import-plan", "empty.csv", "--snapshot", "books.json"}, 6},
        {{"--help"}, 0},
    };
    for (const auto& each : cases) {
        const auto done = run(each.arguments);
        EXPECT_EQ(done.code, each.code) << testing::PrintToString(each.arguments) << done.errors;
        EXPECT_EQ(done.errors.empty(), each.code == 0 || each.code == 6) << testing::PrintToString(each.arguments);
    }
}

TEST_F(CommandLineProgram, RefusesBrokenBooksWhateverPartItReads)
{
    const auto whole = Json::encode(books());
    const struct {
        const char* name;
        std::string cut; // of the books, from the first place where it stands
        std::string put;
    } faults[] = {
        {"entries missing", R"("transactions":)", R"("later":)"},
        {"receipts missing", R"("attachments":[],)", ""},
        {"receipts of the wrong kind", R"("attachments":[])", R"("attachments":7)"},
        {"note of an entry missing", R"("note":)", R"("later":)"},
        {"dividends of the wrong kind", R"("dividends":{)", R"("dividends":7,"later":{)"},
        {"company missing", R"("company":)", R"("firm":)"},
        {"comma in an entry missing", R"(,"legs":)", R"( "legs":)"},
        {"bad number in an entry", R"("amountMinor":123456)", R"("amountMinor":1234x6)"},
        {"bad escape in a note", R"("note":"=late")", R"("note":"=\late")"},
        {"line break in a note", R"("note":"=late")", "\"note\":\"=\nlate\""},
        {"the rest missing", R"("t3")" + whole.substr(whole.find(R"("t3")") + 4), R"("t3")"},
        {"something after the end", R"("categories":)", R"("categories":[]} {"categories":)"},
    };
    for (const auto& each : faults) {
        auto text = whole;
        const auto at = text.find(each.cut);
        ASSERT_NE(at, std::string::npos) << each.name;
        write("faulty.json", text.replace(at, each.cut.size(), each.put));
        EXPECT_EQ(run({"balances", "--snapshot", "faulty.json"}).code, 4) << each.name;
        EXPECT_EQ(run({"report", "--snapshot", "faulty.json", "--currency", "USD", "--from", "2024-01-01", "--to",
                       "2024-12-31"})
                      .code,
                  4)
            << each.name;
    }
}

TEST_F(CommandLineProgram, ReadsLargeBooksFromAFileAndFromAPipeAlike)
{
    auto large = books();
    large.transactions.front().note = std::string(300'000, '\\') + "\n";
    large.members.front().name = std::string(200'000, 'm');
    write("large.json", Json::encode(large));
    for (std::vector<std::string> command :
         {std::vector<std::string>{"balances", "--snapshot"},
          {"report", "--currency", "USD", "--from", "2024-01-01", "--to", "2024-12-31", "--snapshot"}}) {
        command.emplace_back("books.json");
        const auto expected = run(command);
        EXPECT_EQ(expected.code, 0) << expected.errors;
        command.back() = "large.json";
        EXPECT_EQ(run(command).output, expected.output);
        command.back() = "-";
        EXPECT_EQ(run(command, "large.json").output, expected.output);
    }
}

TEST_F(CommandLineProgram, NamesWhatItDoesNotUnderstand)
{
    EXPECT_NE(run({"nonsense"}).errors.find("not expected: nonsense\n"), std::string::npos);
    EXPECT_NE(run({"balances", "--snapshto", "x"}).errors.find("not expected: --snapshto x\n"), std::string::npos);
}

TEST_F(CommandLineProgram, SaysThatNobodyTakesWhatItWrites)
{
    for (const auto* arguments : {"template --out -", "--help"}) {
        const auto command = std::string{"LC_ALL=C '"} + TALLYFOLD_CLI_PROGRAM + "' " + arguments +
                             " > /dev/full 2> '" + path("err.txt").string() + "'";
        EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 3) << arguments;
        EXPECT_EQ(read("err.txt"), "tallyfold-cli: Standard output cannot be written.\n");
    }
}

namespace {

/// The words of a text that match `pattern`, each once.
std::set<std::string> wordsIn(const std::string& text, const char* pattern)
{
    const std::regex word{pattern};
    return {std::sregex_token_iterator{text.begin(), text.end(), word}, {}};
}

}

TEST_F(CommandLineProgram, CompletesJustTheOptionsAndChoicesThatItsHelpNames)
{
    const auto completed = [this](const std::string& words) {
        write("complete.sh",
              "compopt() { :; }; . '" TALLYFOLD_CLI_COMPLETION "'\nCOMP_WORDS=(tallyfold-cli " + words +
                  ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_tallyfold_cli; echo \"${COMPREPLY[@]}\"\n");
        const auto script = path("complete.sh").string();
        EXPECT_EQ(std::system(("bash '" + script + "' > '" + script + ".out'").c_str()), 0);
        return read("complete.sh.out");
    };
    for (const std::string command : {"balances", "report", "export ledger", "export capital", "export dividends",
                                      "import-plan", "template", "allocate"}) {
        std::istringstream words{command};
        std::vector<std::string> arguments{std::istream_iterator<std::string>{words}, {}};
        arguments.emplace_back("--help");
        const auto help = run(arguments).output;
        const auto options = help.substr(0, help.find("Exit codes:"));
        EXPECT_EQ(wordsIn(completed(command + " --"), "--[a-z-]+"), wordsIn(options, "--[a-z-]+")) << command;
        for (const auto* choice : {"--format", "--by", "--kind"}) {
            std::smatch named;
            if (std::regex_search(options, named, std::regex{std::string{choice} + " ([a-z|]+)\\s"}))
                EXPECT_EQ(wordsIn(completed(command + " " + choice + " = ''"), "[a-z]+"), wordsIn(named[1], "[a-z]+"))
                    << command << " " << choice;
        }
    }
}

TEST(TextTable, KeepsEachRowOnItsLineWhateverItSays)
{
    TextTable table{{{"Account"}, {"Note"}}};
    table.add({"a\r\nb", "\x1B[2J\xC2\x9B"
                         "c\xE2\x80\xA8"
                         "d\xFF"});
    table.add({"现金", "đồng"});
    EXPECT_EQ(table.text(), "Account  Note\n"
                            "a  b      [2J c d\n"
                            "现金     đồng\n");
}

TEST(TextTable, CutsATextThatWouldWidenEveryRow)
{
    TextTable table{{{.title = "Note", .widest = 5}, {"Day"}}};
    for (const auto* note : {"12345", "123456", "账账账", "账e\xCC\x81账账", ""})
        table.add({note, "1"});
    EXPECT_EQ(table.text(), "Note   Day\n"
                            "12345  1\n"
                            "1234…  1\n"
                            "账账…  1\n"
                            "账e\xCC\x81…   1\n"
                            "       1\n");
}

TEST(TextTable, CountsTheCellsOfATerminal)
{
    EXPECT_EQ(TextTable::width("abc"), 3);
    EXPECT_EQ(TextTable::width("现金"), 4);
    EXPECT_EQ(TextTable::width("đồng"), 4);
    EXPECT_EQ(TextTable::width("e\xCC\x81"), 1);
}

}
