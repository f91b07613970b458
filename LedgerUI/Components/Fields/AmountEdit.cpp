#include "LedgerUI/Components/Fields/AmountEdit.h"

#include <algorithm>

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include "LedgerCore/Domain/Money/AmountExpression.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int maximumLength = 64;

/// What one edit brought in, and what it left of the text before.
struct Inserted {
    qsizetype count = 0;
    QString kept;
};
Inserted insertedInto(const QString& before, const QString& after)
{
    const auto shorter = std::min(before.size(), after.size());
    qsizetype prefix = 0;
    while (prefix < shorter && before[prefix] == after[prefix])
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < shorter - prefix && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix])
        ++suffix;
    return {.count = after.size() - prefix - suffix, .kept = before.left(prefix) + before.right(suffix)};
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
    // Another amount from outside, such as one cleared with its currency: what stood before is of no use.
    m_undone.clear();
    m_redone.clear();
    m_isInRun = false;
    display({text, static_cast<int>(text.size()), false});
}

void AmountEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Undo))
        return step(m_undone, m_redone);
    if (event->matches(QKeySequence::Redo))
        return step(m_redone, m_undone);
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isPlain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    if (event->text() == QLatin1String{"="} || (isReturn && isPlain && AmountExpression::isOne(text().toStdString())))
        return settle();
    m_amount.caret = cursorPosition();
    const bool isDecimalKey = event->modifiers().testFlag(Qt::KeypadModifier) &&
                              (event->key() == Qt::Key_Period || event->key() == Qt::Key_Comma);
    if (!isDecimalKey)
        return QLineEdit::keyPressEvent(event);
    const QChar decimal = QLatin1Char{Money::separators(InterfaceLanguage::tag()).decimal};
    QKeyEvent typed{event->type(), event->key(), Qt::NoModifier, QString{decimal}};
    QLineEdit::keyPressEvent(&typed);
}

/// The field's own menu, with undo and redo as this field knows them.
void AmountEdit::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto take = [&](const char* name, auto& from, auto& to) {
        auto* action = menu->findChild<QAction*>(QString::fromLatin1(name));
        if (!action)
            return;
        action->disconnect();
        action->setEnabled(!from.empty());
        connect(action, &QAction::triggered, this, [this, &from, &to] { step(from, to); });
    };
    take("edit-undo", m_undone, m_redone);
    take("edit-redo", m_redone, m_undone);
    menu->popup(event->globalPos());
}

void AmountEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    settle();
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        Q_EMIT left();
}

void AmountEdit::settle()
{
    const auto settled = AmountTyping::settled(text(), m_currency, InterfaceLanguage::tag());
    m_amount.separatorsTyped = false;
    if (settled != text()) {
        remember(false);
        display({settled, static_cast<int>(settled.size()), false});
        Q_EMIT amountEdited(settled);
    }
    m_isInRun = false;
}

void AmountEdit::take(const QString& after)
{
    const auto& locale = InterfaceLanguage::tag();
    const auto inserted = insertedInto(m_amount.text, after);
    if (inserted.count <= 1) {
        remember(inserted.count == 1 && after.size() == m_amount.text.size() + 1);
        display(AmountTyping::typed(m_amount, after, cursorPosition(), locale));
    } else if (AmountTyping::continuesArithmetic(inserted.kept, after, m_currency, locale)) {
        remember(false);
        display({after, cursorPosition(), true});
    } else if (const auto pasted = AmountTyping::pasted(after, m_currency, locale)) {
        remember(false);
        display({*pasted, static_cast<int>(pasted->size()), pasted == after});
    } else {
        display(m_amount);
        Q_EMIT pasteRefused(pasted.error());
        return;
    }
    Q_EMIT amountEdited(text());
}

void AmountEdit::remember(bool continuesRun)
{
    m_redone.clear();
    if (!continuesRun || !m_isInRun)
        m_undone.push_back(m_amount);
    m_isInRun = continuesRun;
}

void AmountEdit::step(std::vector<AmountText>& from, std::vector<AmountText>& to)
{
    if (from.empty())
        return;
    to.push_back(m_amount);
    const auto there = from.back();
    from.pop_back();
    m_isInRun = false;
    display(there);
    Q_EMIT amountEdited(text());
}

void AmountEdit::display(const AmountText& amount)
{
    m_amount = amount;
    if (text() != amount.text)
        setText(amount.text);
    setCursorPosition(amount.caret);
}
