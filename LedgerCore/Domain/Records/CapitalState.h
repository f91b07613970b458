#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

/// An owner of the company.
struct CapitalParticipant {
    std::string id;
    std::string name;
    std::optional<std::string> memberID; // the member who is this owner, if any
    bool archived = false;

    bool operator==(const CapitalParticipant&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalParticipant, (), (id, name, memberID, archived))

/// Capital that an owner paid in. Undone by a reversing contribution linked both ways.
struct CapitalContribution {
    std::string id;
    std::string participantID;
    std::string participantName;
    std::string currency;
    std::int64_t amountMinor = 0;
    std::string date;
    std::string createdAt;
    std::string transactionID; // the entry that booked the money
    std::optional<std::string> reversalOf;
    std::optional<std::string> reversedBy;

    bool operator==(const CapitalContribution&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalContribution, (),
                      (id, participantID, participantName, currency, amountMinor, date, createdAt, transactionID,
                       reversalOf, reversedBy))

/// One owner's amount inside a baseline.
struct CapitalAmountLine {
    std::string participantID;
    std::string participantName;
    std::int64_t amountMinor = 0;

    bool operator==(const CapitalAmountLine&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalAmountLine, (), (participantID, participantName, amountMinor))

/// What each owner had paid in before these books began.
struct CapitalBaseline {
    std::string id;
    std::string currency;
    std::string throughDate; // the last day covered
    std::string date;        // the day of recording
    std::string createdAt;
    std::vector<CapitalAmountLine> entries;
    std::optional<std::string> replacesID; // the baseline superseded by this one

    bool operator==(const CapitalBaseline&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalBaseline, (), (id, currency, throughDate, date, createdAt, entries, replacesID))

/// One owner's share, in basis points (10000 = 100 %).
struct CapitalOwnershipLine {
    std::string participantID;
    std::string participantName;
    int ownershipBps = 0;

    bool operator==(const CapitalOwnershipLine&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalOwnershipLine, (), (participantID, participantName, ownershipBps))

/// The owners' shares from `date` on.
struct CapitalOwnershipVersion {
    std::string id;
    std::string date;
    std::string createdAt;
    std::vector<CapitalOwnershipLine> entries;

    bool operator==(const CapitalOwnershipVersion&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalOwnershipVersion, (), (id, date, createdAt, entries))

/// The capital section of a company's books.
struct CapitalState {
    int revision = 0; // sent back as `expectedRevision` by every command
    bool showInSidebar = false;
    std::vector<CapitalParticipant> participants;
    std::vector<CapitalContribution> contributions;
    std::vector<CapitalBaseline> baselines;
    std::vector<CapitalOwnershipVersion> ownershipVersions;
    std::vector<std::string> currencies;

    bool operator==(const CapitalState&) const = default;
};
BOOST_DESCRIBE_STRUCT(CapitalState, (),
                      (revision, showInSidebar, participants, contributions, baselines, ownershipVersions, currencies))
