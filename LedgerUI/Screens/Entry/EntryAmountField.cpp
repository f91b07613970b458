#include "LedgerUI/Screens/Entry/EntryAmountField.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Fields/AmountEdit.h"
#include "LedgerUI/Components/Fields/CurrencyPicker.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/BalanceTone.h"
#include "LedgerUI/Theme/Space.h"

EntryAmountField::EntryAmountField(const QString& name, QWidget* parent) : QWidget{parent}
{
    m_label = new TextLabel(TypeStep::small, Token::text2, this);
    m_currency = new CurrencyPicker(this);
    m_currency->setObjectName(name + QStringLiteral("Currency"));
    m_amount = new AmountEdit(this);
    m_amount->setObjectName(name + QStringLiteral("Amount"));
    m_label->setBuddy(m_amount);
    m_error = new FieldError(m_amount, this);
    m_error->setObjectName(name + QStringLiteral("AmountError"));
    m_result = new TextLabel(TypeStep::body, Token::text, this);
    m_result->setObjectName(name + QStringLiteral("Result"));
    m_result->setAlignment(Qt::AlignRight);
    m_notice = new TextLabel(TypeStep::small, Token::warn, this);
    m_notice->setWordWrap(true);
    m_caution = new TextLabel(TypeStep::small, Token::warn, this);
    m_caution->setObjectName(name + QStringLiteral("Caution"));
    m_caution->setWordWrap(true);
    m_look = new QPushButton(this);
    m_look->setObjectName(name + QStringLiteral("Look"));
    m_look->setProperty("kind", QStringLiteral("link"));
    m_look->setCheckable(true);
    m_earlier = new TextLabel(TypeStep::small, Token::text, this);
    m_earlier->setObjectName(name + QStringLiteral("Earlier"));
    m_earlier->setTextFormat(Qt::PlainText);
    m_earlier->setWordWrap(true);
    connect(m_look, &QPushButton::toggled, m_earlier, &QWidget::setVisible);
    m_balanceLabel = new TextLabel(TypeStep::small, Token::text2, this);
    m_balance = new TextLabel(TypeStep::small, Token::text2, this);
    m_balance->setObjectName(name + QStringLiteral("Balance"));

    auto* row = new QHBoxLayout;
    row->setSpacing(Space::step2);
    row->addWidget(m_currency);
    row->addWidget(m_amount, 1);
    auto* below = new QHBoxLayout;
    below->setContentsMargins(0, Space::step1, 0, 0);
    m_balanceLabel->setWordWrap(true);
    m_balance->setAlignment(Qt::AlignRight | Qt::AlignTop);
    below->addWidget(m_balanceLabel, 1);
    below->addWidget(m_balance);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_label->setContentsMargins(0, 0, 0, Space::labelToField);
    layout->addWidget(m_label);
    layout->addLayout(row);
    layout->addWidget(m_result);
    layout->addWidget(m_error);
    layout->addWidget(m_notice);
    layout->addLayout(below);
    layout->addWidget(m_caution);
    layout->addWidget(m_look, 0, Qt::AlignLeft);
    layout->addWidget(m_earlier);
}

void EntryAmountField::present(const EntryMoneyContent& content, Balance balance)
{
    const bool hasError = m_error->isShown();
    m_label->setText(content.amountLabel);
    m_label->setVisible(content.showsAmountLabel);
    m_amount->setAccessibleName(content.amountLabel);
    const auto currency = word(entryFormWords(), "currency");
    nameComboBox(*m_currency, listed({currency, content.amountLabel}, InterfaceLanguage::tag()));
    m_currency->present(content.currencies, content.currency, currency);
    m_amount->setCurrency(content.currency);
    m_amount->setAmount(content.amount);
    m_amount->setPlaceholderText(content.placeholder);
    m_notice->setText(content.notice);
    m_notice->setVisible(!content.notice.isEmpty() && !hasError);
    m_result->setText(content.result);
    m_result->setVisible(!content.result.isEmpty());
    m_caution->setText(content.caution);
    m_caution->setVisible(!content.caution.isEmpty() && !hasError);
    presentEarlier(hasError ? QString{} : content.earlier);
    // Who cannot see the figures hears what stands under the field.
    if (!hasError)
        m_amount->setAccessibleDescription(listed({content.result, content.caution}, InterfaceLanguage::tag()));
    const bool showsBalance =
        balance == Balance::shown && !content.balance.isEmpty() && !hasError && content.notice.isEmpty();
    m_balanceLabel->setText(content.balanceLabel);
    m_balance->setText(content.balance);
    const auto tone = balanceTone(content.balanceMark);
    m_balanceLabel->setTone(tone);
    m_balance->setTone(tone);
    m_balanceLabel->setVisible(showsBalance);
    m_balance->setVisible(showsBalance);
}

/// Folded at first, and again once there is nothing to look at.
void EntryAmountField::presentEarlier(const QString& facts)
{
    if (facts.isEmpty())
        m_look->setChecked(false);
    m_look->setText(word(entryFormWords(), "double.show"));
    m_look->setAccessibleDescription(facts);
    m_look->setVisible(!facts.isEmpty());
    m_earlier->setText(facts);
    m_earlier->setVisible(m_look->isChecked());
}
