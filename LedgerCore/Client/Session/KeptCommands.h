#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"
#include "LedgerCore/Domain/Records/Requests/DividendCommand.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"

/// An entry whose recording was not confirmed, or not tried because the session had ended. It belongs to one member of
/// one company at one service.
struct KeptEntry {
    std::string endpoint;
    std::string companyID;
    std::string memberID;
    TransactionInput input;
    bool outcomeUnknown = false; // it may have been recorded: only the same input may be sent again
    std::string since = {};      // the stamp of when it was kept first

    bool operator==(const KeptEntry&) const = default;
};

/// A reversal that the service has not accepted yet. The next attempt sends it as it stands.
struct KeptReversal {
    Reversal reversal;
    bool outcomeUnknown = false;          // it may have been posted
    std::optional<APIError> refusal = {}; // why the service did not post it
    std::string since = {};               // the stamp of when it was sent first

    bool operator==(const KeptReversal&) const = default;
};

/// A command on capital or dividends.
using SectionCommand = std::variant<CapitalCommand, DividendCommand>;

/// Such a command that was not confirmed, or not tried because the session had ended.
struct KeptSectionCommand {
    SectionCommand command;
    bool outcomeUnknown = false; // it may have been carried out: only the same may be sent again
    std::string since = {};      // the stamp of when it was kept first

    [[nodiscard]] const std::string& idempotencyKey() const
    {
        return std::visit([](const auto& each) -> const std::string& { return each.idempotencyKey; }, command);
    }
    bool operator==(const KeptSectionCommand&) const = default;
};

/// All that one member sent, or was to send, without a confirmation: each kind oldest first.
struct KeptRequests {
    struct ReversalOf {
        std::string entryID;
        KeptReversal kept;
    };
    std::vector<KeptEntry> entries;
    std::vector<ReversalOf> reversals; // those that may have been posted
    std::vector<KeptSectionCommand> sections;

    [[nodiscard]] std::size_t count() const { return entries.size() + reversals.size() + sections.size(); }
};

/// One member of one company at one service.
struct MemberIdentity {
    std::string endpoint;
    std::string companyID;
    std::string memberID;

    auto operator<=>(const MemberIdentity&) const = default;
};

/// The commands that were not confirmed, each member's apart.
class KeptCommands {
public:
    /// The member's oldest one, or null.
    [[nodiscard]] const KeptEntry* entry(const MemberIdentity& member) const;
    [[nodiscard]] const KeptEntry* entry(const MemberIdentity& member, const std::string& idempotencyKey) const;
    /// Whether anything of anybody may have been recorded or carried out without a confirmation; reversals do not
    /// count.
    [[nodiscard]] bool hasUnconfirmed() const;

    /// Whether there is anything of anybody that was not tried, but for entries that `isSafe`.
    [[nodiscard]] bool hasUntried(const std::function<bool(const KeptEntry&)>& isSafe) const;

    [[nodiscard]] KeptRequests requests(const MemberIdentity& member) const;

    /// Takes the place of one with the same key. `now` is a stamp, here as below.
    void keepEntry(const MemberIdentity& member, TransactionInput input, bool outcomeUnknown, const std::string& now);
    void forgetEntry(const MemberIdentity& member, const std::string& idempotencyKey);
    /// Keeps or forgets an entry after an attempt that met `failure`, or succeeded.
    void settleEntry(const MemberIdentity& member, const TransactionInput& input, const Failure* failure,
                     const std::string& now);

    [[nodiscard]] const KeptReversal* reversal(const MemberIdentity& member, const std::string& entryID) const;
    /// Keeps a reversal that is about to be sent, unless one is kept already.
    void keepReversal(const MemberIdentity& member, const std::string& entryID, Reversal reversal,
                      const std::string& now);
    /// Notes what became of a sent reversal.
    void settleReversal(const MemberIdentity& member, const std::string& entryID, const Failure* failure);

    /// The member's oldest one, or null.
    [[nodiscard]] const KeptSectionCommand* section(const MemberIdentity& member) const;
    /// Takes the place of one with the same key.
    void keepSection(const MemberIdentity& member, KeptSectionCommand kept);
    void forgetSection(const MemberIdentity& member, const std::string& idempotencyKey);
    /// Keeps or forgets such a command after an attempt that met `failure`, or succeeded.
    void settleSection(const MemberIdentity& member, const SectionCommand& command, const Failure* failure,
                       const std::string& now);

    /// Forgets what outlives no session: reversals that were certainly not posted.
    void endSession();

private:
    std::vector<KeptEntry> m_entries; // oldest first
    std::map<MemberIdentity, std::map<std::string, KeptReversal>> m_reversals;
    std::map<MemberIdentity, std::vector<KeptSectionCommand>> m_sections; // oldest first
};
