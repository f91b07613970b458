#include <algorithm>
#include <array>
#include <cstdlib>
#include <list>
#include <map>
#include <string>
#include <variant>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Attachment.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"
#include "LedgerCore/Domain/Records/Permission.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/MemberCommands.h"
#include "LedgerCore/Domain/Templates/TemplateRules.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/Random/RandomChoices.h"
#include "LedgerService/testing/Random/RandomCommands.h"
#include "LedgerService/testing/Random/RandomSections.h"
#include "LedgerService/testing/Random/RandomSetup.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/SampleReceipts.h"
#include "LedgerService/testing/SampleSections.h"
#include "LedgerService/testing/SnapshotFollower.h"
#include "LedgerService/testing/Staff.h"

namespace LedgerService {

namespace {

struct Sent {
    std::string method;
    std::string path;
    std::string body;
};

/// A command of the set-up as it is sent.
struct AsSent {
    Sent operator()(const AccountCreate& each) const { return {"POST", "/v1/accounts", Json::encode(each)}; }
    Sent operator()(const CategoryCreate& each) const { return {"POST", "/v1/categories", Json::encode(each)}; }
    Sent operator()(const CategoryReorder& each) const
    {
        return {"POST", "/v1/categories/reorder", Json::encode(each)};
    }
    Sent operator()(const FinancialSettingsCommand& each) const
    {
        return {"POST", "/v1/financial-settings/commands", Json::encode(each)};
    }
    Sent operator()(const RandomSetup::AccountChange& each) const
    {
        return {"PATCH", "/v1/accounts/" + each.id, Json::encode(each.update)};
    }
    Sent operator()(const RandomSetup::CategoryChange& each) const
    {
        return {"PATCH", "/v1/categories/" + each.id, Json::encode(each.update)};
    }
};

/// Somebody who works in the company, with what a window would hold of it.
struct Person {
    Person(TestService& service, std::string memberID, const std::string& companyID = "sample")
        : id(std::move(memberID)), follower(service, id, companyID)
    {
    }

    std::string id;
    SnapshotFollower follower;
    std::vector<std::string> loose{}; // receipts
};

/// Several members who do all that can be asked for, over HTTP, while their rights change.
class CompanyWalk : RandomChoices {
public:
    explicit CompanyWalk(std::uint32_t seed)
        : RandomChoices(seed), m_entries(seed), m_setup(seed), m_sections(seed), m_client(m_service.client())
    {
        m_service.write([](Connection& connection) {
            foundSample(connection, "other"); // people who can be invited
            foundSample(connection, "third");
        });
        appoint();
        for (const auto* each : {"mira", "rudi", "guest"})
            m_people.emplace_back(m_service, each);
        for (const auto* company : {"other", "third"})
            for (const auto* each : {"mira", "rudi", "guest"})
                m_strangers.push_back({each, company});
    }

    void step()
    {
        using Act = void (CompanyWalk::*)(Person&);
        static constexpr std::array<Act, 17> acts{
            &CompanyWalk::record, &CompanyWalk::record, &CompanyWalk::record,       &CompanyWalk::record,
            &CompanyWalk::upload, &CompanyWalk::link,   &CompanyWalk::setUp,        &CompanyWalk::setUp,
            &CompanyWalk::setUp,  &CompanyWalk::change, &CompanyWalk::changeMember, &CompanyWalk::invite,
            &CompanyWalk::recur,  &CompanyWalk::join,   &CompanyWalk::submit,       &CompanyWalk::submit,
            &CompanyWalk::submit};
        m_number += 1;
        auto& person = *std::next(m_people.begin(), static_cast<std::ptrdiff_t>(below(m_people.size())));
        person.follower.refresh();
        (this->*acts.at(below(acts.size())))(person);
    }

    /// What holds at every moment.
    void check()
    {
        ASSERT_EQ(m_service.problems(), "");
        for (auto& each : m_people) {
            each.follower.signInAgain(m_service.tokenOf(each.id));
            const auto status = each.follower.refresh();
            if (status == 403)
                continue; // deactivated
            ASSERT_TRUE(status == 200 || status == 226 || status == 304) << each.id << ": " << status;
            ASSERT_EQ(each.follower.held(), each.follower.whole()) << each.id;
        }
        appoint();
    }

    [[nodiscard]] const std::map<std::string, int>& accepted() const { return m_accepted; }

private:
    [[nodiscard]] std::string key() const { return fmt::format("key-{}", m_number); }

    /// Whatever happened, somebody can go on.
    void appoint()
    {
        std::vector<AccountGrant> grants;
        for (const auto& account : m_service.snapshotOf("mira").accounts)
            grants.push_back(Staff::every(account.id));
        for (const auto& account : SampleBooks::books().accounts)
            grants.push_back(Staff::every(account.id));
        Staff::set(m_service, "mira", "owner", {Permission::all.begin(), Permission::all.end()}, std::move(grants));
    }

    HttpAnswer send(const Person& person, const Sent& sent)
    {
        auto answer =
            m_client.send(sent.method, sent.path, person.follower.token(), sent.body, "Prefer: return=minimal\r\n");
        EXPECT_LT(answer.status, 500) << person.id << " " << sent.method << " " << sent.path << " " << sent.body << "\n"
                                      << answer.body;
        EXPECT_NE(answer.status, 0) << sent.path << " " << sent.body;
        if (answer.status == 200) {
            ++m_accepted[sent.path.substr(0, sent.path.find('/', 4))];
            if (once(8) && sent.body.find("Key\"") != std::string::npos) { // a reply that was lost
                const auto again = m_client.send(sent.method, sent.path, person.follower.token(), sent.body,
                                                 "Prefer: return=minimal\r\n");
                EXPECT_EQ(again.status, 200) << sent.path << " " << sent.body << "\n" << again.body;
                EXPECT_EQ(again.body, answer.body);
            }
        }
        return answer;
    }

    std::vector<std::string> takeLoose(Person& person)
    {
        if (person.loose.empty())
            return {};
        std::vector<std::string> taken{std::move(person.loose.back())};
        person.loose.pop_back();
        return taken;
    }

    void record(Person& person)
    {
        Books books;
        books.entries = person.follower.held().transactions.toVector();
        if (books.entries.empty())
            books.entries = SampleBooks::books().entries;
        if (m_entries.reverses()) {
            auto command = SampleBooks::reversal();
            command.idempotencyKey = key();
            send(person,
                 {"POST", fmt::format("/v1/transactions/{}/reverse", m_entries.entryOf(books)), Json::encode(command)});
            return;
        }
        auto input = m_entries.inputFor(books);
        input.idempotencyKey = key();
        const auto& accounts = person.follower.held().accounts;
        if (once(3) && !accounts.empty() && input.sourceAccountID)
            input.sourceAccountID = of(accounts).id;
        if (once(3) && !accounts.empty() && input.targetAccountID)
            input.targetAccountID = of(accounts).id;
        if (once(3))
            input.attachmentIDs = takeLoose(person);
        send(person, {"POST", "/v1/transactions", Json::encode(input)});
    }

    void upload(Person& person)
    {
        const auto content = SampleReceipts::pdf(400 + below(3'000), static_cast<char>('a' + below(26)));
        const auto answer = send(person, {"POST", "/v1/attachments", SampleReceipts::upload(content)});
        if (const auto added = Json::decode<Attachment>(answer.body); answer.status == 200 && added)
            person.loose.push_back(added->id);
    }

    void link(Person& person)
    {
        const auto& entries = person.follower.held().transactions;
        const auto ids = takeLoose(person);
        if (!entries.empty() && !ids.empty())
            send(person, {"POST", fmt::format("/v1/transactions/{}/attachments", entries[below(entries.size())].id),
                          Json::encode(AttachmentLink{ids})});
    }

    void setUp(Person& person)
    {
        if (!person.follower.held().currentMember.id.empty())
            send(person, std::visit(AsSent{}, m_setup.next(person.follower.held())));
    }

    /// Names, colours, choices.
    void change(Person& person)
    {
        const auto name = fmt::format("Name {}", below(40));
        const std::array<Sent, 3> all{
            Sent{"PATCH", "/v1/settings", Json::encode(SettingsUpdate{name, {}, {}})},
            Sent{"PATCH", "/v1/me/profile", Json::encode(ProfileUpdate{name})},
            Sent{"PATCH", "/v1/company/transaction-colors",
                 once(2) ? R"({"kind":"income","colorID":"teal"})" : R"({"kind":"none","colorID":"red"})"}};
        send(person, of(all));
    }

    std::vector<std::string> permissions()
    {
        std::vector<std::string> some;
        for (const auto each : Permission::all) {
            if (once(2))
                some.emplace_back(each);
        }
        return some;
    }

    std::vector<AccountGrant> grants(const Person& person)
    {
        std::vector<AccountGrant> some;
        for (const auto& account : person.follower.held().accounts) {
            auto grant = Staff::every(account.id);
            std::erase_if(grant.actions, [&](const auto& each) { return each != "view" && once(3); });
            if (once(2))
                some.push_back(std::move(grant));
        }
        return some;
    }

    std::string role() { return of(std::array{"owner", "admin", "finance", "finance", "employee", "partner", "king"}); }

    void changeMember(Person& person)
    {
        MemberUpdate update;
        if (once(3))
            update.role = role();
        if (once(4))
            update.active = !once(3);
        if (once(2))
            update.permissions = permissions();
        if (once(2))
            update.accountGrants = grants(person);
        const auto& target = *std::next(m_people.begin(), static_cast<std::ptrdiff_t>(below(m_people.size())));
        send(person, {"PATCH", "/v1/members/" + (once(20) ? "none" : target.id), Json::encode(update)});
    }

    void invite(Person& person)
    {
        if (m_strangers.empty())
            return;
        if (once(4)) {
            const auto listed = m_client.send("GET", "/v1/invites", person.follower.token());
            const auto open = Json::decode<InvitationListResponse>(listed.body);
            if (open && !open->invitations.empty())
                send(person, {"POST", fmt::format("/v1/invites/{}/revoke", open->invitations.front().id), ""});
            return;
        }
        const auto& [who, company] = of(m_strangers);
        const Invite terms{.name = who + " of " + company,
                           .email = fmt::format("{}@{}.example", who, company),
                           .role = role(),
                           .accountIDs = {},
                           .permissions = permissions(),
                           .accountGrants = grants(person)};
        const auto answer = send(person, {"POST", "/v1/invites", Json::encode(terms)});
        if (const auto made = Json::decode<InviteResponse>(answer.body); answer.status == 200 && made)
            m_codes[{who, company}] = made->code;
    }

    /// One of those who were invited comes, or finds the invitation gone.
    void join(Person&)
    {
        if (m_codes.empty())
            return;
        const auto [stranger, code] = *m_codes.begin();
        m_codes.erase(m_codes.begin());
        const auto& [who, company] = stranger;
        const Person visitor{m_service, who, company};
        const auto answer = send(
            visitor, {"POST", "/v1/invites/accept", Json::encode(InvitationAcceptance{.code = code, .locale = "en"})});
        if (answer.status != 200)
            return;
        std::erase(m_strangers, stranger);
        std::string id;
        m_service.write([&](Connection& connection) {
            id = MemberRepository::findByEmail(connection, "sample", fmt::format("{}@{}.example", who, company))
                     .value_or(Member{})
                     .id;
        });
        ASSERT_NE(id, "");
        m_people.emplace_back(m_service, id);
    }

    /// Keeps a template, or does something to one that the person sees.
    void recur(Person& person)
    {
        const auto listed =
            Json::decode<EntryTemplateList>(m_client.send("GET", "/v1/templates", person.follower.token()).body);
        if (!listed || listed->templates.empty() || once(3)) {
            TemplateCreate command{.name = fmt::format("Template {}", m_number),
                                   .shared = !once(3),
                                   .entry = templateEntry(),
                                   .recurrence =
                                       Recurrence{.unit = "month", .every = 1, .firstDay = "2026-01-31", .lastDay = {}},
                                   .idempotencyKey = key()};
            send(person, {"POST", "/v1/templates", Json::encode(command)});
            return;
        }
        const auto& kept = of(listed->templates);
        const auto where = "/v1/templates/" + kept.id;
        const std::string day = of(std::array{"2026-01-31", "2026-02-28", "2026-02-27"});
        auto input = TemplateRules::inputOf(kept.entry, "2026-03-10");
        input.amountMinor = std::max<std::int64_t>(input.amountMinor, 1);
        input.idempotencyKey = TemplateOccurrence{kept.id, day}.key();
        const TemplateUpdate update{.name = "Changed",
                                    .shared = once(2),
                                    .entry = once(2) ? kept.entry : templateEntry(),
                                    .recurrence = kept.recurrence,
                                    .expectedRevision = kept.revision - (once(6) ? 1 : 0)};
        const std::array<Sent, 6> all{
            Sent{"POST", "/v1/transactions", Json::encode(input)},
            Sent{"POST", "/v1/transactions", Json::encode(input)},
            Sent{"PATCH", where, Json::encode(update)},
            Sent{"POST", where + "/remove", ""},
            Sent{"POST", where + "/days", Json::encode(TemplateDay{.day = day, .skipped = true})},
            Sent{"POST", where + "/days", Json::encode(TemplateDay{.day = day, .skipped = false})}};
        send(person, of(all));
    }

    TemplateEntry templateEntry()
    {
        const auto input = m_entries.inputFor(SampleBooks::books());
        return {.kind = input.kind,
                .note = input.note,
                .categoryID = input.categoryID,
                .sourceAccountID = input.sourceAccountID,
                .targetAccountID = input.targetAccountID,
                .currency = input.currency,
                .targetCurrency = input.targetCurrency,
                .amountMinor = once(3) ? std::nullopt : std::optional{input.amountMinor},
                .targetAmountMinor = input.targetAmountMinor};
    }

    void submit(Person& anybody)
    {
        auto& person = once(4) ? anybody : m_people.front(); // few others may
        person.follower.refresh();
        const auto& seen = person.follower.held();
        if (m_sections.changesCapital()) {
            auto command = m_sections.capitalFor(seen.capital.value_or(CapitalState{}));
            command.idempotencyKey = key();
            send(person, {"POST", "/v1/capital/commands", Json::encode(command)});
        } else {
            auto command = m_sections.dividendFor(seen.dividends.value_or(DividendState{}));
            command.idempotencyKey = key();
            send(person, {"POST", "/v1/dividends/commands", Json::encode(command)});
        }
    }

    SectionService m_service;
    RandomCommands m_entries;
    RandomSetup m_setup;
    RandomSections m_sections;
    HttpClient m_client;
    std::list<Person> m_people;
    std::vector<std::pair<std::string, std::string>> m_strangers; // with their companies
    std::map<std::pair<std::string, std::string>, std::string> m_codes;
    std::map<std::string, int> m_accepted; // by family
    int m_number = 0;
};

/// What the environment says; else the number that takes a few seconds.
int stated(const char* variable, int otherwise)
{
    const char* const text = std::getenv(variable);
    return text == nullptr ? otherwise : std::atoi(text);
}

}

/// TALLYFOLD_WALK_STEPS and TALLYFOLD_WALK_SEED make it longer, or another one.
TEST(CompanyWalk, KeepsTheBooksWholeWhateverMembersDo)
{
    constexpr int stretch = 40;
    const int steps = stated("TALLYFOLD_WALK_STEPS", 480);
    const int seed = stated("TALLYFOLD_WALK_SEED", 12);
    SCOPED_TRACE(fmt::format("seed {}", seed));
    CompanyWalk walk{static_cast<std::uint32_t>(seed)};
    for (int number = 1; number <= steps; ++number) {
        SCOPED_TRACE(fmt::format("step {}", number));
        ASSERT_NO_FATAL_FAILURE(walk.step());
        ASSERT_FALSE(HasFailure());
        if (number % stretch == 0)
            ASSERT_NO_FATAL_FAILURE(walk.check());
    }
    for (const auto* family :
         {"/v1/transactions", "/v1/attachments", "/v1/accounts", "/v1/categories", "/v1/settings", "/v1/members",
          "/v1/invites", "/v1/me", "/v1/company", "/v1/capital", "/v1/dividends", "/v1/templates"}) {
        const auto found = walk.accepted().find(family);
        EXPECT_GE(found == walk.accepted().end() ? 0 : found->second, 2) << family;
    }
}

}
