#include "LedgerUI/Screens/Accounts/AccountCurrencies.h"

#include <QMenu>
#include <QPushButton>

#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/Chip.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

AccountCurrencies::AccountCurrencies(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("accountCurrencies"));
    m_row = new WrapLayout(this, Space::step2);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_add = new QPushButton(this);
    m_add->setObjectName(QStringLiteral("accountAddCurrency"));
    m_add->setProperty("kind", QStringLiteral("flat"));
    m_add->setProperty("extent", QStringLiteral("small"));
    m_add->setIcon(Icon::of(QStringLiteral("plus-lg"), Token::accent));
    m_add->setIconSize({Space::iconBeforeText, Space::icon});
    connect(m_add, &QPushButton::clicked, this, &AccountCurrencies::openChoices);
    m_row->addWidget(m_add);
}

void AccountCurrencies::present(const AccountFormContent& content)
{
    m_addable = content.addable;
    m_add->setText(word(accountFormWords(), "currencies.add"));
    QStringList wanted{m_add->text()};
    for (const auto& each : content.currencies)
        wanted << each.text << (each.isRemovable ? each.removeName : QString{});
    if (wanted == m_shown)
        return;
    m_shown = std::move(wanted);
    fill(content);
}

QWidget* AccountCurrencies::firstControl() const
{
    return m_add;
}

void AccountCurrencies::fill(const AccountFormContent& content)
{
    const bool hadFocus = FocusChain::hasFocus(this);
    while (auto* item = m_row->takeAt(0))
        delete item;
    for (auto* chip : m_chips) {
        chip->hide();
        chip->setParent(nullptr);
        chip->deleteLater();
    }
    m_chips.clear();
    for (const auto& each : content.currencies) {
        if (!each.isRemovable) {
            auto* chip = new Chip(Chip::Kind::neutral, this);
            chip->setText(each.text);
            chip->setToolTip(word(accountFormWords(), "currencies.fixed"));
            chip->setMinimumHeight(Space::controlSmall);
            m_chips.push_back(chip);
            continue;
        }
        auto* chip = new QPushButton(Icon::of(QStringLiteral("x"), Token::text2), each.text, this);
        chip->setObjectName(QStringLiteral("accountCurrency-") + qString(each.code));
        chip->setProperty("kind", QStringLiteral("chip"));
        chip->setLayoutDirection(Qt::RightToLeft); // the cross stands behind the text
        chip->setAccessibleName(each.removeName);
        chip->setToolTip(each.removeName);
        connect(chip, &QPushButton::clicked, this, [this, code = each.code] { Q_EMIT removed(code); });
        m_chips.push_back(chip);
    }
    for (auto* chip : m_chips) {
        m_row->addWidget(chip);
        chip->show();
    }
    m_row->addWidget(m_add);
    // In the chain of Tab, too, the chips follow what comes before the button.
    auto* before = m_add->previousInFocusChain();
    while (before->focusPolicy() == Qt::NoFocus)
        before = before->previousInFocusChain();
    for (auto* chip : m_chips) {
        if (chip->focusPolicy() == Qt::NoFocus)
            continue;
        setTabOrder(before, chip);
        before = chip;
    }
    if (hadFocus)
        m_add->setFocus(Qt::OtherFocusReason);
    updateGeometry();
}

void AccountCurrencies::openChoices()
{
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("accountCurrencyMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto& choice : m_addable) {
        auto* action = menu->addAction(choice.name);
        action->setObjectName(QStringLiteral("add-") + qString(choice.code));
        connect(action, &QAction::triggered, this, [this, code = choice.code] { Q_EMIT added(code); });
    }
    menu->popup(m_add->mapToGlobal(QPoint{0, m_add->height()}));
}
