#include "LedgerUI/Components/Fields/AmountEdit.h"

#include <algorithm>

#include <QKeyEvent>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int maximumLength = 64;

/// How many characters one edit brought in.
qsizetype insertedCount(const QString& before, const QString& after)
{
    const auto shorter = std::min(before.size(), after.size());
    qsizetype prefix = 0;
    while (prefix < shorter && before[prefix] == after[prefix])
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < shorter - prefix && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix])
        ++suffix;
    return after.size() - prefix - suffix;
}

}

AmountEdit::AmountEdit(QWidget* parent) : QLineEdit{parent}
{
    setProperty("extent", QStringLiteral("large"));
    setFont(TypeScale::font(TypeStep::display));
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setMaxLength(maximumLength);
    setTextMargins(0, 0, Space::step1, 0);
    connect(this, &QLineEdit::textEdited, this, &AmountEdit::take);
}

void AmountEdit::setAmount(const QString& text)
{
    if (text == this->text())
        return;
    show({text, static_cast<int>(text.size()), false});
}

void AmountEdit::keyPressEvent(QKeyEvent* event)
{
    m_amount.caret = cursorPosition();
    const bool isDecimalKey = event->modifiers().testFlag(Qt::KeypadModifier) &&
                              (event->key() == Qt::Key_Period || event->key() == Qt::Key_Comma);
    if (!isDecimalKey)
        return QLineEdit::keyPressEvent(event);
    const QChar decimal = QLatin1Char{Money::separators(InterfaceLanguage::tag()).decimal};
    QKeyEvent typed{event->type(), event->key(), Qt::NoModifier, QString{decimal}};
    QLineEdit::keyPressEvent(&typed);
}

void AmountEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    const auto settled = EntryAmountText::settled(text(), m_currency, InterfaceLanguage::tag());
    m_amount.separatorsTyped = false;
    if (settled == text())
        return;
    show({settled, static_cast<int>(settled.size()), false});
    Q_EMIT amountEdited(settled);
}

void AmountEdit::take(const QString& after)
{
    const auto& locale = InterfaceLanguage::tag();
    const bool isChunk = insertedCount(m_amount.text, after) > 1;
    const auto pasted = isChunk ? EntryAmountText::pasted(after, m_currency, locale) : std::nullopt;
    if (pasted)
        show({*pasted, static_cast<int>(pasted->size()), pasted == after});
    else
        show(EntryAmountText::typed(m_amount, after, cursorPosition(), locale));
    Q_EMIT amountEdited(text());
}

void AmountEdit::show(const AmountText& amount)
{
    m_amount = amount;
    if (text() != amount.text)
        setText(amount.text);
    setCursorPosition(amount.caret);
}
