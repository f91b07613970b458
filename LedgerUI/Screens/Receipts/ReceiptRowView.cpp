#include "LedgerUI/Screens/Receipts/ReceiptRowView.h"

#include <QHBoxLayout>
#include <QPainter>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Receipts/ReceiptButton.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

ReceiptRowView::ReceiptRowView(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("receiptRow"));
    m_name = new ReceiptButton(this);
    m_name->setObjectName(QStringLiteral("receiptName"));
    m_name->setCheckable(true);
    m_state = new TextLabel(TypeStep::micro, Token::text2, this);
    m_state->setObjectName(QStringLiteral("receiptState"));
    m_state->setTextFormat(Qt::PlainText);
    m_retry = new IconButton(QStringLiteral("arrow-repeat"), IconButton::Frame::none, this);
    m_retry->setObjectName(QStringLiteral("receiptRetry"));
    m_remove = new IconButton(QStringLiteral("x-lg"), IconButton::Frame::none, this);
    m_remove->setObjectName(QStringLiteral("receiptRemove"));
    m_message = new TextLabel(TypeStep::small, Token::danger, this);
    m_message->setObjectName(QStringLiteral("receiptMessage"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setContentsMargins(Space::step2 + Space::icon + Space::step2, 0, Space::step2, Space::step2);

    auto* line = new QHBoxLayout;
    line->setContentsMargins(1, 1, Space::step1, 1);
    line->setSpacing(Space::step1);
    line->addWidget(m_name, 1);
    line->addWidget(m_state);
    line->addWidget(m_retry);
    line->addWidget(m_remove);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(line);
    rows->addWidget(m_message);

    connect(m_name, &QAbstractButton::clicked, this, &ReceiptRowView::chosen);
    connect(m_retry, &QAbstractButton::clicked, this, &ReceiptRowView::retryWanted);
    connect(m_remove, &QAbstractButton::clicked, this, &ReceiptRowView::removalWanted);
}

void ReceiptRowView::present(const ReceiptRow& row, bool isChosen, bool isLocked)
{
    m_isChosen = isChosen;
    m_name->present(row.name, row.isDocument);
    m_name->setChecked(isChosen);
    m_name->setAccessibleName(listed({row.name, row.state, row.message}, InterfaceLanguage::tag()));
    m_state->setText(row.state);
    m_state->setTone(row.message.isEmpty() ? Token::text2 : Token::danger);
    m_message->setText(row.message);
    m_message->setVisible(!row.message.isEmpty());
    const auto named = [&](const QString& what) {
        return word(receiptWords(), "row.named", {what.toStdString(), row.name.toStdString()});
    };
    m_retry->setName(named(word(EntryCopy::words(), "retry")));
    m_retry->setVisible(row.mayRetry && !isLocked);
    m_remove->setName(named(word(EntryCopy::words(), "removeDraftReceipt")));
    m_remove->setVisible(!isLocked);
    update();
}

void ReceiptRowView::focusName()
{
    m_name->setFocus(Qt::OtherFocusReason);
}

void ReceiptRowView::paintEvent(QPaintEvent* /*event*/)
{
    if (m_isChosen)
        QPainter{this}.fillRect(rect(), Theme::current().color(Token::accentSoft));
}
