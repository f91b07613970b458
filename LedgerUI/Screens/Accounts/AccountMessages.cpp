#include "LedgerUI/Screens/Accounts/AccountMessages.h"

#include <utility>

#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

AccountMessages::AccountMessages(QWidget* parent) : QWidget{parent}
{
    m_banner = new Banner(Banner::Kind::info, this);
    m_banner->setObjectName(QStringLiteral("accountMessage"));
    m_go = new QPushButton(m_banner);
    m_go->setObjectName(QStringLiteral("accountMessageGo"));
    m_go->setProperty("extent", QStringLiteral("small"));
    m_close = new IconButton(QStringLiteral("x"), IconButton::Frame::none, m_banner);
    m_close->setObjectName(QStringLiteral("accountMessageClose"));
    m_close->setFixedSize(Space::controlSmall, Space::controlSmall);
    m_banner->addAction(m_go);
    m_banner->addAction(m_close);
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    box->addWidget(m_banner);
    hide();
    connect(m_go, &QPushButton::clicked, this, [this] {
        if (const auto run = m_offer ? m_offer->run : nullptr)
            run();
    });
    connect(m_close, &QToolButton::clicked, this, [this] {
        m_closedText = m_offer ? m_offer->text : QString{};
        present(std::exchange(m_offer, std::nullopt));
        Q_EMIT left();
    });
}

void AccountMessages::present(std::optional<Offer> offer)
{
    m_offer = std::move(offer);
    const bool isShown = m_offer && m_offer->text != m_closedText;
    setVisible(isShown);
    if (!isShown)
        return;
    m_closedText.clear();
    m_go->setText(m_offer->button);
    m_close->setName(word(dialogWords(), "close"));
    if (m_banner->text() != m_offer->text)
        m_banner->present(Banner::Kind::info, m_offer->text); // readers hear it once
}

void AccountMessages::enter()
{
    if (isVisible())
        m_go->setFocus(Qt::OtherFocusReason);
}
