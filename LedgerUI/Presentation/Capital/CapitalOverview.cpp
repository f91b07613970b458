#include "LedgerUI/Presentation/Capital/CapitalOverview.h"

#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Capital/LatestRecords.h"
#include "LedgerUI/Presentation/Records/CapitalSections.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// An owner, the participant of dividends who is the same person, or one of both.
struct Person {
    QString name;
    std::optional<std::size_t> owner;
    std::optional<std::size_t> participant;
};

/// The sums of one currency. A section that the member does not see is null, and its sums are empty.
struct Figures {
    const CapitalState* capital = nullptr;
    const DividendState* dividends = nullptr;
    CapitalSummary contributed;
    DividendSummary distributed;
};

/// The same person by the member whom both stand for, else by the name.
bool isSame(const CapitalParticipant& owner, const DividendParticipant& participant)
{
    if (owner.memberID || participant.memberID)
        return owner.memberID == participant.memberID;
    return owner.name == participant.name;
}

bool hasFigures(const DividendParticipantSummary& row)
{
    return row.paidMinor != 0 || row.returnedMinor != 0 || row.unpaidMinor != 0 || row.advanceMinor != 0 ||
           row.settledMinor != 0;
}

bool hasFigures(const CapitalParticipantSummary& row)
{
    return row.recordedMinor != 0 || row.periodMinor.value_or(0) != 0 || row.ownershipBps.value_or(0) != 0;
}

bool isListedOwner(std::size_t at, const Figures& figures)
{
    return !figures.capital->participants[at].archived || hasFigures(figures.contributed.participants[at]);
}

bool isListedParticipant(std::size_t at, const Figures& figures)
{
    return !figures.dividends->participants[at].archived || hasFigures(figures.distributed.participants[at]);
}

/// Everybody who is not archived, as owner or as participant, and who is archived but has figures.
std::vector<Person> peopleOf(const Figures& figures)
{
    std::vector<Person> people;
    std::vector<bool> isTaken(figures.dividends ? figures.dividends->participants.size() : 0);
    for (std::size_t at = 0; figures.capital && at < figures.capital->participants.size(); ++at) {
        const auto& owner = figures.capital->participants[at];
        Person person{.name = qString(owner.name), .owner = at, .participant = {}};
        for (std::size_t other = 0; other < isTaken.size() && !person.participant; ++other) {
            if (!isTaken[other] && isSame(owner, figures.dividends->participants[other]))
                person.participant = other;
        }
        if (person.participant)
            isTaken[*person.participant] = true;
        if (isListedOwner(at, figures) || (person.participant && isListedParticipant(*person.participant, figures)))
            people.push_back(person);
    }
    for (std::size_t at = 0; figures.dividends && at < isTaken.size(); ++at) {
        if (!isTaken[at] && isListedParticipant(at, figures))
            people.push_back(
                {.name = qString(figures.dividends->participants[at].name), .owner = {}, .participant = at});
    }
    return people;
}

/// A column of figures: what stands in it for a person, and how its sum is written.
struct FigureColumn {
    std::string_view word;
    ColumnRoom room = ColumnRoom::stays;
    enum class Manner { balance, movement, due } manner = Manner::balance;
    std::int64_t CapitalParticipantSummary::* capital = nullptr;
    std::optional<std::int64_t> CapitalParticipantSummary::* optional = nullptr;
    std::int64_t DividendParticipantSummary::* dividend = nullptr;
    std::int64_t DividendParticipantSummary::* added = nullptr; // to the dividend

    [[nodiscard]] std::optional<std::int64_t> of(const Person& person, const Figures& figures) const
    {
        if (dividend) {
            if (!person.participant)
                return std::nullopt;
            const auto& row = figures.distributed.participants[*person.participant];
            return added ? Money::add(row.*dividend, row.*added) : std::optional{row.*dividend};
        }
        if (!person.owner)
            return std::nullopt;
        const auto& row = figures.contributed.participants[*person.owner];
        return optional ? row.*optional : std::optional{row.*capital};
    }
};

std::vector<FigureColumn> columnsOf(const Figures& figures)
{
    using Manner = FigureColumn::Manner;
    using Capital = CapitalParticipantSummary;
    using Dividend = DividendParticipantSummary;
    std::vector<FigureColumn> columns;
    if (figures.capital) {
        columns.push_back({.word = "column.recorded", .capital = &Capital::recordedMinor});
        if (figures.contributed.historyKnown)
            columns.push_back({.word = "column.total", .room = ColumnRoom::mayGo, .optional = &Capital::totalMinor});
        columns.push_back({.word = "column.period", .manner = Manner::movement, .optional = &Capital::periodMinor});
    }
    if (figures.dividends) {
        columns.push_back({.word = "column.netPaid", .dividend = &Dividend::netPaidMinor});
        columns.push_back({.word = "column.returned", .room = ColumnRoom::mayGo, .dividend = &Dividend::returnedMinor});
        columns.push_back({.word = "column.entitlement",
                           .room = ColumnRoom::mayGo,
                           .dividend = &Dividend::settledMinor,
                           .added = &Dividend::unpaidMinor});
        columns.push_back({.word = "column.settled", .dividend = &Dividend::settledMinor});
        columns.push_back({.word = "column.unpaid", .manner = Manner::due, .dividend = &Dividend::unpaidMinor});
        columns.push_back({.word = "column.advances", .dividend = &Dividend::advanceMinor});
    }
    return columns;
}

RecordCell written(const FigureColumn& column, std::int64_t minor, std::string_view currency, std::string_view locale)
{
    using Manner = FigureColumn::Manner;
    auto cell = column.manner == Manner::movement ? RecordText::movement(minor, currency, locale)
                                                  : RecordText::amount(minor, currency, locale);
    if (column.manner == Manner::due && minor != 0) {
        cell.tone = RecordTone::due;
        cell.isBold = true;
    }
    return cell;
}

QString word(std::string_view key, std::string_view locale)
{
    return wordIn(locale, capitalWords(), key);
}

/// The sum of a column; a dash where it does not fit, which the limits of the sections rule out.
RecordCell sumOf(const FigureColumn& column, const std::vector<Person>& people, const Figures& figures,
                 std::string_view currency, std::string_view locale)
{
    std::optional<std::int64_t> sum = 0;
    for (const auto& person : people)
        sum = sum ? Money::add(*sum, column.of(person, figures).value_or(0)) : sum;
    return sum ? RecordText::bold(written(column, *sum, currency, locale)) : RecordText::dash();
}

RecordRow rowOf(const Person& person, const std::vector<FigureColumn>& columns, const Figures& figures,
                std::string_view currency, std::string_view locale)
{
    RecordRow row;
    if (person.owner)
        row.id = "owner:" + figures.capital->participants[*person.owner].id;
    else if (person.participant)
        row.id = "participant:" + figures.dividends->participants[*person.participant].id;
    row.cells.push_back({.text = person.name, .swatch = person.owner});
    if (figures.capital) {
        const auto share =
            person.owner ? figures.contributed.participants[*person.owner].ownershipBps : std::optional<int>{};
        row.cells.push_back(share ? RecordText::percentCell(*share, locale) : RecordText::dash());
    }
    for (const auto& column : columns) {
        const auto minor = column.of(person, figures);
        row.cells.push_back(minor ? written(column, *minor, currency, locale) : RecordText::dash());
    }
    return row;
}

RecordRows ownersOf(const std::vector<Person>& people, const Figures& figures, std::string_view currency,
                    std::string_view locale)
{
    RecordRows table;
    const auto columns = columnsOf(figures);
    table.columns.push_back(
        {.head = word(figures.capital ? "column.owner" : "column.participant", locale), .room = ColumnRoom::stretches});
    if (figures.capital)
        table.columns.push_back({.head = word("column.ownership", locale), .isAtRight = true});
    for (const auto& column : columns)
        table.columns.push_back({.head = word(column.word, locale), .room = column.room, .isAtRight = true});
    for (const auto& person : people)
        table.rows.push_back(rowOf(person, columns, figures, currency, locale));

    RecordRow total{.id = "total", .cells = {RecordText::bold({.text = word("total", locale)})}};
    if (figures.capital) {
        int shares = 0;
        for (const auto& row : figures.contributed.participants)
            shares += row.ownershipBps.value_or(0);
        total.cells.push_back(shares > 0 ? RecordText::bold(RecordText::percentCell(shares, locale))
                                         : RecordText::dash());
    }
    for (const auto& column : columns)
        total.cells.push_back(sumOf(column, people, figures, currency, locale));
    table.total = std::move(total);
    return table;
}

std::expected<Figures, CapitalOverviews::Unavailable> figuresOf(const LedgerSnapshot& snapshot,
                                                                const CapitalQuestion& question)
{
    const auto from = question.fromDay();
    const auto through = question.throughDay();
    Figures figures;
    figures.capital = CapitalSections::capital(snapshot);
    figures.dividends = CapitalSections::dividends(snapshot);
    if (figures.capital) {
        auto summary = CapitalSummary::create(*figures.capital, question.currency, from, through);
        if (!summary)
            return std::unexpected(CapitalOverviews::Unavailable::capital);
        figures.contributed = *std::move(summary);
    }
    if (figures.dividends) {
        auto summary = DividendSummary::create(*figures.dividends, question.currency, from, through);
        if (!summary)
            return std::unexpected(CapitalOverviews::Unavailable::dividends);
        figures.distributed = *std::move(summary);
    }
    return figures;
}

}

std::expected<CapitalOverview, CapitalOverviews::Unavailable>
CapitalOverviews::overview(const LedgerSnapshot& snapshot, const CapitalQuestion& question, std::string_view today,
                           std::string_view locale)
{
    const auto made = figuresOf(snapshot, question);
    if (!made)
        return std::unexpected(made.error());
    const auto& figures = *made;
    CapitalOverview overview;
    overview.title = word(figures.capital ? "owners" : "participants", locale);
    overview.showsOwnership = figures.capital != nullptr;
    const auto people = peopleOf(figures);
    overview.owners = ownersOf(people, figures, question.currency, locale);
    for (const auto& person : people)
        overview.participants.push_back(person.participant ? figures.dividends->participants[*person.participant].id
                                                           : std::string{});
    overview.latest = LatestRecords::rows(snapshot, question, today, locale);
    if (figures.capital) {
        if (const auto& version = figures.contributed.ownershipVersion)
            overview.since = wordIn(locale, capitalWords(), "ownership.since",
                                    {DayText::longDay(version->date, locale).toStdString()});
        overview.ownership = ownership(*figures.capital, question, locale);
        if (!figures.contributed.historyKnown)
            overview.warning = word("history.unknown", locale);
        overview.notes.push_back(word("note.recorded", locale));
        overview.notes.push_back(word("note.apart", locale));
    }
    overview.printedNotes = overview.notes;
    if (figures.dividends) {
        overview.notes.push_back(word("note.unpaid", locale));
        overview.printedNotes.push_back(word("note.unpaidOnPaper", locale));
    }
    return overview;
}
