#include "LedgerUI/Screens/Ledger/Filters/AmountRangeFields.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilterChoices.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int longestAmount = 24;

}

AmountRangeFields::AmountRangeFields(QWidget* parent) : QWidget{parent}
{
    const auto field = [this](const char* name, TextLabel*& label) {
        label = new TextLabel(TypeStep::small, Token::text2, this);
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QString::fromLatin1(name));
        edit->setMaxLength(longestAmount);
        edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        edit->setFixedHeight(Space::control);
        label->setBuddy(edit);
        connect(edit, &QLineEdit::textEdited, this, &AmountRangeFields::take);
        return edit;
    };
    m_least = field("amountLeast", m_leastName);
    m_most = field("amountMost", m_mostName);
    m_error = new FieldError(m_least, this);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
    rows->setSpacing(Space::labelToField);
    rows->addWidget(m_leastName);
    rows->addWidget(m_least);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_mostName);
    rows->addWidget(m_most);
    rows->addWidget(m_error);
    rows->addWidget(m_hint);
    rows->addStretch(1);
}

void AmountRangeFields::present(const LedgerFilter::Amounts& amounts)
{
    const auto& locale = InterfaceLanguage::tag();
    m_leastName->setText(wordIn(locale, ledgerWords(), "amounts.least"));
    m_mostName->setText(wordIn(locale, ledgerWords(), "amounts.most"));
    m_least->setAccessibleName(m_leastName->text());
    m_most->setAccessibleName(m_mostName->text());
    m_hint->setText(wordIn(locale, ledgerWords(), "amounts.hint"));
    m_error->present({});
    m_amounts = amounts;
    m_least->setText(amountBoundText(amounts.least, locale));
    m_most->setText(amountBoundText(amounts.most, locale));
}

QWidget* AmountRangeFields::firstStop() const
{
    return m_least;
}

void AmountRangeFields::take()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto least = readAmountBound(m_least->text(), locale);
    const auto most = readAmountBound(m_most->text(), locale);
    const bool isReadable = least && most;
    m_error->present(isReadable ? QString{} : wordIn(locale, ledgerWords(), "amounts.unreadable"));
    if (!isReadable)
        return;
    const LedgerFilter::Amounts amounts{.least = *least, .most = *most};
    if (amounts == m_amounts)
        return;
    m_amounts = amounts;
    Q_EMIT amountsWanted(amounts);
}
