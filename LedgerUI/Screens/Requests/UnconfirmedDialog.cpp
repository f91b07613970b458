#include "LedgerUI/Screens/Requests/UnconfirmedDialog.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroTask>
#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Capital/CapitalActionForm.h"
#include "LedgerUI/Screens/Dividends/DividendActionForm.h"
#include "LedgerUI/Screens/Entry/ReversalDialog.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int bodyWidth = 720;

QString text(std::string_view key)
{
    return word(requestWords(), key);
}

const KeptEntry* entryIn(const KeptRequests& kept, const std::string& id)
{
    const auto found = std::ranges::find(kept.entries, id, [](const auto& each) { return each.input.idempotencyKey; });
    return found == kept.entries.end() ? nullptr : &*found;
}

const KeptRequests::ReversalOf* reversalIn(const KeptRequests& kept, const std::string& id)
{
    const auto found =
        std::ranges::find(kept.reversals, id, [](const auto& each) { return each.kept.reversal.idempotencyKey; });
    return found == kept.reversals.end() ? nullptr : &*found;
}

const KeptSectionCommand* sectionIn(const KeptRequests& kept, const std::string& id)
{
    const auto found = std::ranges::find(kept.sections, id, &KeptSectionCommand::idempotencyKey);
    return found == kept.sections.end() ? nullptr : &*found;
}

}

UnconfirmedDialog::UnconfirmedDialog(LedgerStore& store, QWidget* parent) : FormDialog{parent}, m_store{store}
{
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("unconfirmedDialog"));
    cancelButton().setObjectName(QStringLiteral("unconfirmedClose"));
    setConfirmVisible(false);
    auto* body = new QWidget(bodyPlace());
    m_hint = new TextLabel(TypeStep::small, Token::text2, body);
    m_hint->setWordWrap(true);
    m_none = new TextLabel(TypeStep::body, Token::text2, body);
    m_list = new QWidget(body);
    m_rows = new QVBoxLayout(m_list);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    rows->setSpacing(Space::step2);
    rows->addWidget(m_hint);
    rows->addWidget(m_none);
    rows->addWidget(m_list);
    rows->addStretch(1);
    setBody(body, bodyWidth);
    connect(&m_store, &LedgerStore::keptChanged, this, &UnconfirmedDialog::present);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &UnconfirmedDialog::present);
    connect(&m_store, &LedgerStore::snapshotChanged, this, [this] { m_store.snapshot() ? present() : leave(); });
    present();
}

void UnconfirmedDialog::changeEvent(QEvent* event)
{
    FormDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        present();
}

void UnconfirmedDialog::present()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    setWindowTitle(text("title"));
    cancelButton().setText(word(dialogWords(), "close"));
    m_hint->setText(text("hint"));
    m_none->setText(text("none"));
    m_list->setAccessibleName(text("list"));
    auto requests = UnconfirmedRequests::rows(m_store.keptRequests(), *snapshot, InterfaceLanguage::tag());
    if (std::exchange(m_requests, std::move(requests)) != m_requests || m_rows->count() == 0)
        fill();
    for (auto* button : m_list->findChildren<QPushButton*>()) {
        if (button->objectName().startsWith(QLatin1String{"retry"}))
            button->setEnabled(!m_store.isBusy());
    }
    m_hint->setVisible(!m_requests.empty());
    m_none->setVisible(m_requests.empty());
}

void UnconfirmedDialog::fill()
{
    const bool hadFocus = m_list->isAncestorOf(focusWidget());
    for (auto* each : m_list->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        m_rows->removeWidget(each);
        each->hide();
        each->setObjectName({});
        for (auto* inner : each->findChildren<QWidget*>())
            inner->setObjectName({}); // the row that follows bears the names from now on
        each->deleteLater();
    }
    for (std::size_t at = 0; at < m_requests.size(); ++at) {
        m_rows->addWidget(new Line(Qt::Horizontal, m_list));
        m_rows->addWidget(buildRow(at));
    }
    if (auto* first = m_list->findChild<QPushButton*>(QStringLiteral("retry0")); first && hadFocus)
        first->setFocus(Qt::OtherFocusReason);
    else if (hadFocus)
        cancelButton().setFocus(Qt::OtherFocusReason);
    fitWindow(Fit::following);
}

QWidget* UnconfirmedDialog::buildRow(std::size_t at)
{
    const auto& request = m_requests[at];
    auto* row = new QWidget(m_list);
    auto* what = new TextLabel(TypeStep::body, Token::text, row);
    what->setText(request.what);
    what->setWordWrap(true);
    auto* more = new TextLabel(TypeStep::small, Token::text2, row);
    more->setText(QStringLiteral("%1 · %2").arg(request.standing, request.when));
    more->setWordWrap(true);
    auto* amount = new TextLabel(TypeStep::body, Token::text, row);
    amount->setText(request.amount.currency.isEmpty() ? QString{} : request.amount.text());
    amount->setAccessibleName(request.amount.spoken);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(what);
    texts->addWidget(more);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, Space::step2, 0, Space::step2);
    line->setSpacing(Space::step3);
    line->addWidget(new GlyphLabel(request.glyph, Token::warn, Space::icon, row), 0, Qt::AlignTop);
    line->addLayout(texts, 1);
    line->addWidget(amount, 0, Qt::AlignTop);
    const auto button = [&](const char* key, const QString& name, auto act) {
        auto* made = new QPushButton(text(key), row);
        made->setObjectName(QString::fromLatin1(key) + QString::number(at));
        made->setAccessibleName(name);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, act);
        line->addWidget(made, 0, Qt::AlignTop);
    };
    const auto about = request.what.toStdString();
    if (request.hasForm)
        button("open", word(requestWords(), "openOf", {about}), [this, id = request.id] { openForm(id); });
    if (request.mayRetry)
        button("retry", word(requestWords(), "retryOf", {about}), [this, id = request.id] { retry(id); });
    return row;
}

/// Sends the same again. What the service refuses now was not carried out before either: it stays in the list, to be
/// changed in its form.
void UnconfirmedDialog::retry(const std::string& id)
{
    const auto found = std::ranges::find(m_requests, id, &UnconfirmedRequest::id);
    if (found == m_requests.end() || m_store.isBusy())
        return;
    banner().present(Banner::Kind::info, {});
    const auto kept = m_store.keptRequests();
    const auto done = [this, request = *found, kept](const auto& outcome) {
        finish(request, kept, outcome ? std::nullopt : std::optional{outcome.error()});
    };
    if (const auto* entry = entryIn(kept, id))
        QCoro::connect(m_store.postTransaction(entry->input, false), this, done);
    else if (const auto* reversal = reversalIn(kept, id))
        QCoro::connect(m_store.reverseTransaction(reversal->entryID, reversal->kept.reversal.reason), this, done);
    else if (const auto* section = sectionIn(kept, id)) {
        if (const auto* capital = std::get_if<CapitalCommand>(&section->command))
            QCoro::connect(m_store.submitCapital(*capital, false), this, done);
        else
            QCoro::connect(m_store.submitDividend(std::get<DividendCommand>(section->command), false), this, done);
    }
}

void UnconfirmedDialog::finish(const UnconfirmedRequest& request, const KeptRequests& sent,
                               const std::optional<Failure>& failure)
{
    if (!m_store.snapshot())
        return;                // with the session the dialog closes, and what ended it is told elsewhere
    m_store.dismissMessages(); // the banner says it
    if (!failure) {
        banner().present(Banner::Kind::success, word(requestWords(), "confirmed", {request.what.toStdString()}));
        return;
    }
    const auto why = m_store.friendly(*failure, InterfaceLanguage::tag());
    if (fateOf(*failure) != CommandFate::refused) {
        banner().present(Banner::Kind::warn, qString(why));
        return;
    }
    if (const auto* entry = entryIn(sent, request.id))
        m_store.keepEntry(entry->input, false, entry->since);
    if (const auto* section = sectionIn(sent, request.id); section && request.hasForm)
        m_store.keepSectionCommand(section->command, section->since);
    banner().present(Banner::Kind::error, word(requestWords(), "refused", {why}));
}

void UnconfirmedDialog::openForm(const std::string& id)
{
    const auto kept = m_store.keptRequests();
    const auto snapshot = m_store.snapshot();
    FormDialog* form = nullptr;
    if (const auto* entry = entryIn(kept, id)) {
        form = new TransactionForm(m_store, *entry, this);
    } else if (const auto* reversal = reversalIn(kept, id)) {
        if (const auto* original = snapshot->entry(reversal->entryID))
            form = new ReversalDialog(m_store, *original, this);
    } else if (const auto* section = sectionIn(kept, id)) {
        if (const auto* capital = std::get_if<CapitalCommand>(&section->command))
            form = new CapitalActionForm(m_store, *capital, section->outcomeUnknown, this);
        else
            form = new DividendActionForm(m_store, std::get<DividendCommand>(section->command), section->outcomeUnknown,
                                          this);
    }
    if (form)
        form->open();
}
