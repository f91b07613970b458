#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Records/RecordForm.h"

/// The pieces that the forms of capital and of dividends are made of alike.
namespace RecordFormParts {

/// All currencies of these accounts, in the order of the pickers.
std::vector<std::string> currenciesOf(const std::vector<const Account*>& accounts);

/// What is no longer on offer is no longer chosen, and nothing takes its place: the rest of the form was meant for it.
void dropUnlessOffered(std::string& chosen, const std::vector<const Account*>& accounts);
/// Where there is nothing to choose from, as long as nothing is chosen.
void chooseOnly(std::string& chosen, const std::vector<const Account*>& accounts);

RecordField text(RecordPart part, const QString& label, std::string_view value);
RecordField amount(const QString& label, std::string_view value, std::string_view currency);
RecordField fixed(RecordPart part, const QString& label, const QString& value);
RecordField tick(RecordPart part, const QString& label, bool isOn);
RecordField choice(RecordPart part, const QString& label, std::vector<RecordChoice> choices, std::string_view chosen,
                   const QString& prompt);
RecordField currency(const QString& label, const std::vector<std::string>& codes, std::string_view chosen,
                     std::string_view locale);
/// With what is on each of the accounts in this currency.
RecordField account(const QString& label, const QString& prompt, const std::vector<const Account*>& accounts,
                    std::string_view currency, std::string_view chosen, std::string_view locale);
RecordField day(RecordPart part, const QString& label, std::string_view day, DayBounds bounds, const QString& prompt,
                std::string_view locale);
/// The members who stand for nobody else, with a row for nobody.
RecordField member(const QString& label, const QString& nobody, const LedgerSnapshot& snapshot,
                   const std::vector<std::string>& taken, const std::optional<std::string>& chosen);
RecordField half(RecordField field);

/// A text of the forms.
QString word(std::string_view key, std::string_view locale);
QString word(std::string_view key, std::string_view locale, std::initializer_list<QString> arguments);
QString money(std::int64_t minor, std::string_view currency, std::string_view locale);

}
