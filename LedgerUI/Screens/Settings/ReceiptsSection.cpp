#include "LedgerUI/Screens/Settings/ReceiptsSection.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"
#include "LedgerUI/Presentation/Text/Values/ByteText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

ReceiptsSection::ReceiptsSection(LedgerStore& store, QWidget* parent) : SettingsSection{store, parent}
{
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_size = new TextLabel(TypeStep::section, Token::text, this);
    m_size->setObjectName(QStringLiteral("receiptCacheSize"));
    m_clear = new QPushButton(this);
    m_clear->setObjectName(QStringLiteral("clearReceipts"));
    m_clear->setAutoDefault(false);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    auto* head = new QHBoxLayout;
    head->setSpacing(Space::step4);
    head->addWidget(m_title, 1);
    head->addWidget(m_size);
    head->addWidget(m_clear);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step3);
    rows->addLayout(head);
    rows->addWidget(m_hint);
    rows->addStretch(1);
    connect(m_clear, &QPushButton::clicked, this, &ReceiptsSection::askToClear);
    connect(&this->store(), &LedgerStore::attachmentCacheBytesChanged, this, &ReceiptsSection::present);
    this->store().refreshAttachmentCacheSize();
    present();
}

void ReceiptsSection::present()
{
    m_title->setText(word(settingsWords(), "section.receipts"));
    m_size->setText(byteText(store().attachmentCacheBytes(), InterfaceLanguage::tag()));
    m_clear->setText(word(settingsWords(), "clear"));
    m_clear->setEnabled(store().attachmentCacheBytes() > 0);
    m_hint->setText(word(settingsWords(), "receiptsHint"));
}

void ReceiptsSection::askToClear()
{
    MessageDialog::ask({.title = word(settingsWords(), "clearTitle"),
                        .text = word(settingsWords(), "receiptsHint"),
                        .confirm = word(settingsWords(), "clearConfirm"),
                        .cancel = word(dialogWords(), "cancel")},
                       this, [this] { store().clearAttachmentCache(); });
}
