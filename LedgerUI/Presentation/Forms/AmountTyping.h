#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string_view>

#include <QString>

/// What stands in an amount field, and where the caret is.
struct AmountText {
    QString text;
    int caret = 0; // in UTF-16 units
    // A grouping separator was typed by hand. Grouping is then left alone until the field is emptied or left, so that
    // "12.50" typed where the point groups is refused rather than read as 1250.
    bool separatorsTyped = false;

    bool operator==(const AmountText&) const = default;
};

/// Why a text cannot be pasted as an amount.
enum class PasteRefusal {
    negative, // one amount, but below zero
    several,  // more than one line or cell
    notAnAmount
};

/// How an amount is edited. The text always means what `Money::parse` reads in it: grouping separators are put in and
/// taken out, digits and the decimal separator never change.
namespace AmountTyping {

/// After a keystroke turned `before` into `after`: regrouped, the caret between the same two digits.
AmountText typed(const AmountText& before, const QString& after, int caret, std::string_view locale);

/// What the text comes to in minor units, arithmetic included; nothing while it is no amount.
std::optional<std::int64_t> minor(const QString& text, std::string_view currency, std::string_view locale);

/// When the field is left: written as amounts are displayed if it can be read, arithmetic worked out and marks of the
/// currency taken off; else as it stands.
QString settled(const QString& text, std::string_view currency, std::string_view locale);

/// Whether a paste put something into arithmetic that was being typed, of which `kept` still stands, and it comes out.
/// Arithmetic is not pasted as a whole: a day such as 2026-01-31 would be taken for it.
bool continuesArithmetic(const QString& kept, const QString& after, std::string_view currency, std::string_view locale);

/// A pasted amount in the separators of `locale`. Refused when it is not one amount in this currency: several lines or
/// cells, a sign, blanks that do not part the digits in threes, another currency, words. Marks of the currency,
/// brackets and a closing ",-" are taken off. Either language's form is taken where it can be read in one way only; a
/// single separator before three digits is read as this language reads it.
std::expected<QString, PasteRefusal> pasted(const QString& clipboard, std::string_view currency,
                                            std::string_view locale);

}
