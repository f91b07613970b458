#include "LedgerUI/Screens/Receipts/AddReceiptsDialog.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroTask>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Ledger/EntryText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Receipts/DraftReceipts.h"
#include "LedgerUI/Screens/Receipts/ReceiptsPane.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 480;
constexpr int paneHeight = 400;

std::size_t receiptsOn(const LedgerSnapshot& snapshot, const std::string& entryID)
{
    const auto* entry = snapshot.entry(entryID);
    return entry ? entry->attachmentIDs.size() : 0;
}

}

AddReceiptsDialog::AddReceiptsDialog(LedgerStore& store, Opening opening, QWidget* parent)
    : CommandForm{store, parent}, m_entryID{std::move(opening.entryID)}, m_uploaded{opening.uploaded}
{
    setObjectName(QStringLiteral("addReceipts"));
    confirmButton().setObjectName(QStringLiteral("addReceiptsConfirm"));
    cancelButton().setObjectName(QStringLiteral("addReceiptsCancel"));
    m_receipts = new DraftReceipts(store, receiptsOn(*snapshot(), m_entryID), *this);
    auto* body = new QWidget(bodyPlace());
    m_head = new TextLabel(TypeStep::body, Token::text, body);
    m_head->setTextFormat(Qt::PlainText);
    m_head->setWordWrap(true);
    m_head->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    m_receipts->pane().setMinimumHeight(paneHeight);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(Space::step1, 0, Space::step1, 0);
    column->addWidget(m_head);
    column->addWidget(&m_receipts->pane(), 1);
    setBody(body, dialogWidth);

    connect(m_receipts, &DraftReceipts::changed, this, &AddReceiptsDialog::present);
    connect(m_receipts, &DraftReceipts::arrived, this, &AddReceiptsDialog::submit);
    connect(this, &FormDialog::confirmed, this, &AddReceiptsDialog::submit);
    m_receipts->uploads().adopt(std::move(opening.failed));
    m_receipts->pane().addFiles(opening.sources);
    present();
}

void AddReceiptsDialog::present()
{
    setWindowTitle(word(receiptWords(), "add.title"));
    m_head->setText(word(receiptWords(), "add.entry") + QLatin1Char{' '} +
                    EntryText::brief(m_entryID, *snapshot(), locale()));
    m_hasNone = m_hasNone && m_receipts->uploads().all().empty();
    m_receipts->pane().setLocked(!m_linking.isEditing());
    presentStanding({.stage = m_linking.stage(),
                     .refusal = m_linking.refusal(),
                     .note = note(),
                     .confirm = word(receiptWords(), "add.title"),
                     .draftWords = &EntryWords::words(),
                     .hasChanges = !m_receipts->uploads().all().empty()});
}

CommandForm::Note AddReceiptsDialog::note() const
{
    if (m_receipts->isAwaited())
        return {.text = word(receiptWords(), "wait")};
    if (m_hasNone)
        return {.kind = Banner::Kind::error, .text = word(receiptWords(), "add.none")};
    const auto said = outcome();
    return {.kind = said.isEmpty() ? Banner::Kind::info : Banner::Kind::warn, .text = said};
}

/// How many of them made it and how many did not, once they have come to rest.
QString AddReceiptsDialog::outcome() const
{
    const auto failed = m_receipts->uploads().failed().size();
    if (failed == 0 || m_receipts->uploads().isBusy())
        return {};
    const auto uploaded = m_uploaded + m_receipts->uploads().attachmentIDs().size();
    return word(receiptWords(), "outcome", {std::to_string(uploaded), std::to_string(failed)});
}

QWidget& AddReceiptsDialog::firstField() const
{
    if (m_linking.isUncertain())
        return confirmButton();
    auto* first = FocusChain::firstStop(&m_receipts->pane());
    return first ? *first : cancelButton();
}

void AddReceiptsDialog::adoptSnapshot()
{
    if (!m_linking.isSaving())
        takeSnapshot();
    present();
}

void AddReceiptsDialog::submit()
{
    if (const auto* ids = commandToSend(m_linking, [this] { return checked(); }))
        send(*ids);
}

std::optional<std::vector<std::string>> AddReceiptsDialog::checked()
{
    auto ids = m_receipts->uploads().attachmentIDs();
    const bool isAwaited = m_receipts->await();
    m_hasNone = ids.empty() && m_receipts->uploads().all().empty();
    if (!isAwaited && !ids.empty())
        return ids;
    present();
    return {};
}

void AddReceiptsDialog::send(const std::vector<std::string>& ids)
{
    present();
    QCoro::connect(store().attach(m_entryID, ids, false), this, [this](const Result<void>& reply) { finish(reply); });
}

void AddReceiptsDialog::finish(const Result<void>& reply)
{
    if (!m_linking.isSaving())
        return;
    if (!reply) {
        m_linking.fail(reply.error());
        present();
        confirmButton().setFocus(Qt::OtherFocusReason);
        return;
    }
    m_linking.succeed();
    m_uploaded += m_linking.sent().size();
    Q_EMIT added(qString(m_entryID));
    if (m_receipts->uploads().failed().empty()) {
        leave();
        return;
    }
    // Those that failed can be tried again here: none that is on the entry is sent once more.
    m_linking = Linking{Form{}};
    m_receipts->uploads().markLinked();
    present();
}
