#include "LedgerCLI/AllocateCommand.h"

#include <array>

#include <fmt/core.h>

#include "LedgerCLI/CommandWords.h"
#include "LedgerCLI/TextTable.h"
#include "LedgerCore/Domain/Csv/CsvDocument.h"
#include "LedgerCore/Domain/Dividends/DividendAllocationCalculator.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

namespace LedgerCLI {

namespace {

using Lines = std::vector<DividendLine>;

std::vector<DividendShare> ownRatios(const std::vector<DividendParticipant>& participants)
{
    std::vector<DividendShare> shares;
    for (const auto& participant : participants) {
        if (!participant.archived)
            shares.push_back({participant.id, participant.ratioBps});
    }
    return shares;
}

std::string_view wordFor(DividendError error)
{
    switch (error) {
    case DividendError::invalidAmount:
    case DividendError::invalidShares:
    case DividendError::participantUnavailable:
        return rawValue(error);
    case DividendError::invalidState:
    case DividendError::amountOverflow:
        return "figuresUnavailable";
    }
    return {};
}

std::string csv(const Lines& lines, std::string_view currency)
{
    constexpr std::array<std::string_view, 6> columns{"participant_id", "participant_name", "ratio_bps",
                                                      "currency",       "amount",           "amount_minor"};
    CsvDocument document{columns};
    for (const auto& line : lines)
        document.record({line.participantID, line.participantName, std::to_string(line.ratioBps), currency,
                         Money::decimalString(line.amountMinor, currency), std::to_string(line.amountMinor)});
    return document.take();
}

std::string text(const Lines& lines, std::string_view currency, std::string_view locale)
{
    TextTable table{{{std::string{CommandWords::text("participant", locale)}},
                     {std::string{CommandWords::text("ratio", locale)}, TextTable::Alignment::right},
                     {std::string{CommandWords::text("amount", locale)}, TextTable::Alignment::right}}};
    for (const auto& line : lines) {
        const auto percent =
            fmt::format("{}{}{:02} %", line.ratioBps / 100, Money::separators(locale).decimal, line.ratioBps % 100);
        table.add({line.participantName, percent, Money::format(line.amountMinor, currency, locale)});
    }
    return table.text();
}

}

CommandResult AllocateCommand::run(const LedgerSnapshot& snapshot, Request request, const OutputStyle& style)
{
    const auto refused = [&](std::string_view key) {
        return std::unexpected(CommandFailure{ExitCode::refused, std::string{CommandWords::text(key, style.locale)}});
    };
    if (!snapshot.dividends)
        return refused("noDividends");
    const auto total = Money::parse(request.total, request.currency, "en-US");
    if (!total)
        return std::unexpected(
            CommandFailure{ExitCode::usage, std::string{friendlyMessage(total.error(), style.locale)}});
    const auto& participants = snapshot.dividends->participants;
    if (request.shares.empty())
        request.shares = ownRatios(participants);
    const auto lines = DividendAllocationCalculator::allocate(*total, request.shares, participants);
    if (!lines)
        return refused(wordFor(lines.error()));
    switch (style.format) {
    case OutputFormat::json:
        return CommandAnswer{Json::encode(*lines) + "\n"};
    case OutputFormat::csv:
        return CommandAnswer{csv(*lines, request.currency)};
    case OutputFormat::text:
        break;
    }
    return CommandAnswer{text(*lines, request.currency, style.locale)};
}

}
