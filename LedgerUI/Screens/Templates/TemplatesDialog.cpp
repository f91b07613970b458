#include "LedgerUI/Screens/Templates/TemplatesDialog.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include <QCoro/QCoroTask>
#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Templates/TemplateRules.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Templates/TemplateDrafts.h"
#include "LedgerUI/Presentation/Templates/TemplateText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Templates/TemplateFormDialog.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr QSize wanted{840, 460};

QString text(std::string_view key)
{
    return word(templateWords(), key);
}

/// The first open day of the template today.
std::optional<std::string> dueDay(const EntryTemplate& kept, const std::string& today)
{
    auto open = TemplateSchedule::openDays(kept, today);
    return open.empty() ? std::nullopt : std::optional{std::move(open.front())};
}

/// The day that was skipped last, counted by the calendar.
std::optional<std::string> skippedDay(const EntryTemplate& kept)
{
    for (const auto& each : std::views::reverse(kept.settled)) {
        if (!each.entryID)
            return each.day;
    }
    return std::nullopt;
}

/// Why the button of this text does nothing now; its text without a day where there is none.
void presentDayButton(QPushButton& button, const QString& plain, std::string_view key,
                      const std::optional<std::string>& day, bool mayAct)
{
    button.setText(day ? word(templateWords(), key, {DayText::shortDate(*day, InterfaceLanguage::tag()).toStdString()})
                       : plain);
    button.setEnabled(day && mayAct);
}

}

TemplatesDialog::TemplatesDialog(LedgerStore& store, Recording record, QWidget* parent)
    : QDialog{parent}, m_store{store}, m_record{std::move(record)}
{
    setObjectName(QStringLiteral("templatesDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    buildLayout();
    bind();
    present();
    m_table->chooseFirst();
    store.templates().reload();
}

void TemplatesDialog::buildLayout()
{
    const auto button = [this](const char* name) {
        auto* made = new QPushButton(this);
        made->setObjectName(QString::fromLatin1(name));
        made->setAutoDefault(false);
        return made;
    };
    m_banner = new Banner(Banner::Kind::error, this);
    m_banner->hide();
    m_table = new PlainTable(0, this);
    m_table->setObjectName(QStringLiteral("templateTable"));
    m_none = new EmptyState(QStringLiteral("files"), this);
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(m_table);
    m_stack->addWidget(m_none);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    m_recordButton = new PrimaryButton(this);
    m_recordButton->setObjectName(QStringLiteral("templateRecord"));
    m_recordButton->setAutoDefault(false);
    m_skip = button("templateSkip");
    m_undo = button("templateUndo");
    m_change = button("templateChange");
    m_remove = button("templateRemove");
    m_new = button("templateNew");
    m_close = button("templatesClose");
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::dialogMargin, Space::dialogMargin, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::step3);
    rows->addWidget(m_banner);
    rows->addWidget(m_stack, 1);
    rows->addWidget(m_hint);
    rows->addLayout(buildButtons());
    resize(parentWidget() ? wanted.boundedTo(parentWidget()->size()) : wanted);
}

QHBoxLayout* TemplatesDialog::buildButtons()
{
    auto* chosen = new QHBoxLayout;
    chosen->setSpacing(Space::step2);
    for (auto* each : {m_recordButton, m_skip, m_undo, m_change, m_remove})
        chosen->addWidget(each);
    auto* foot = new QHBoxLayout;
    foot->setSpacing(Space::step2);
    foot->addWidget(m_new);
    foot->addStretch(1);
    foot->addWidget(m_close);
    auto* both = new QVBoxLayout;
    both->setSpacing(Space::step3);
    chosen->addStretch(1);
    both->addLayout(chosen);
    both->addLayout(foot);
    auto* row = new QHBoxLayout;
    row->addLayout(both, 1);
    return row;
}

void TemplatesDialog::bind()
{
    connect(&m_store.templates(), &EntryTemplates::changed, this, &TemplatesDialog::present);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &TemplatesDialog::presentButtons);
    connect(&m_store, &LedgerStore::snapshotChanged, this, [this] {
        if (m_store.snapshot())
            present();
        else
            reject(); // the session is over
    });
    connect(m_table, &RowTable::selectionMoved, this, &TemplatesDialog::presentButtons);
    connect(m_table, &RowTable::opened, this, [this] {
        if (m_recordButton->isEnabled())
            recordChosen();
    });
    connect(m_recordButton, &QPushButton::clicked, this, &TemplatesDialog::recordChosen);
    connect(m_skip, &QPushButton::clicked, this, [this] {
        const auto* kept = chosen();
        if (const auto day = kept ? TemplateSchedule::nextDay(*kept, m_store.today()) : std::nullopt)
            setDay(*day, true);
    });
    connect(m_undo, &QPushButton::clicked, this, [this] {
        const auto* kept = chosen();
        if (const auto day = kept ? skippedDay(*kept) : std::nullopt)
            setDay(*day, false);
    });
    connect(m_change, &QPushButton::clicked, this, &TemplatesDialog::changeChosen);
    (new ActionSet(this))->present({keyedAction("changeTemplate", Command::editRecord, [this] { m_change->click(); })});
    connect(m_remove, &QPushButton::clicked, this, &TemplatesDialog::removeChosen);
    connect(m_new, &QPushButton::clicked, this, [this] {
        const auto record = m_record;
        accept();
        record({.kind = std::string{EntryKind::expense}, .accountID = {}, .prefilled = {}});
    });
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);
}

const EntryTemplate* TemplatesDialog::chosen() const
{
    return m_store.templates().find(m_table->chosenID());
}

void TemplatesDialog::present()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    const auto& locale = InterfaceLanguage::tag();
    const auto& templates = m_store.templates();
    setWindowTitle(text("title"));
    m_table->setAccessibleName(text("list"));
    m_table->present(TemplateText::columns(locale),
                     TemplateText::rows(templates.all(), *snapshot, m_store.today(), locale));
    if (m_table->chosenID().empty())
        m_table->chooseFirst();
    m_none->setTexts(text("none"), text("none.text"));
    m_stack->setCurrentWidget(templates.all().empty() ? static_cast<QWidget*>(m_none) : m_table);
    m_hint->setText(text("hint"));
    m_new->setText(text("new"));
    m_close->setText(text("close"));
    presentButtons();
}

void TemplatesDialog::presentButtons()
{
    const auto snapshot = m_store.snapshot();
    const auto* const kept = chosen();
    const bool isFree = snapshot && kept && !m_store.isBusy();
    const bool mayRecord = isFree && TemplateProposals::mayRecord(*kept, *snapshot);
    const bool mayChange = isFree && TemplateRules::mayChange(*kept, snapshot->currentMember);
    m_recordButton->setText(text("record"));
    m_recordButton->setEnabled(mayRecord);
    m_recordButton->setToolTip(isFree && !mayRecord ? text("notRecorder") : QString{});
    auto next = kept ? TemplateSchedule::nextDay(*kept, m_store.today()) : std::nullopt;
    if (next && !TemplateSchedule::takesActionOn(*next, m_store.today()))
        next.reset();
    presentDayButton(*m_skip, text("skip.none"), "skip", next, mayRecord);
    const auto skipped = kept ? skippedDay(*kept) : std::nullopt;
    presentDayButton(*m_undo, {}, "undo", skipped, mayRecord);
    m_undo->setVisible(skipped.has_value());
    m_change->setText(text("change"));
    m_remove->setText(text("remove"));
    for (auto* each : {m_change, m_remove}) {
        each->setEnabled(mayChange);
        each->setToolTip(isFree && !mayChange ? text("notAuthor") : QString{});
    }
    m_new->setEnabled(snapshot && snapshot->currentMember.canRecord());
}

EntryForm::Opening TemplatesDialog::openingOf(const EntryTemplate& kept, const std::optional<std::string>& dueDay)
{
    return {.kind = kept.entry.kind,
            .accountID = {},
            .prefilled = TemplateDrafts::draftOf(kept, dueDay, InterfaceLanguage::tag())};
}

void TemplatesDialog::recordChosen()
{
    const auto* const kept = chosen();
    if (!kept)
        return;
    const auto opening = openingOf(*kept, dueDay(*kept, m_store.today()));
    const auto record = m_record;
    accept();
    record(opening);
}

void TemplatesDialog::changeChosen()
{
    if (const auto* const kept = chosen())
        (new TemplateFormDialog(m_store, TemplateForm::of(*kept, m_store.today(), InterfaceLanguage::tag()), this))
            ->open();
}

void TemplatesDialog::removeChosen()
{
    const auto* const kept = chosen();
    if (!kept)
        return;
    MessageDialog::ask({.title = word(templateWords(), "remove.title", {kept->name}),
                        .text = text("remove.text"),
                        .confirm = text("remove.confirm"),
                        .cancel = text("remove.cancel")},
                       this, [this, id = kept->id] {
                           QCoro::connect(m_store.removeTemplate(id, false), this,
                                          [this](const Result<EntryTemplateList>& reply) { finish(reply); });
                       });
}

void TemplatesDialog::setDay(const std::string& day, bool skipped)
{
    QCoro::connect(m_store.setTemplateDay(m_table->chosenID(), {.day = day, .skipped = skipped}, false), this,
                   [this](const Result<EntryTemplateList>& reply) { finish(reply); });
}

void TemplatesDialog::finish(const Result<EntryTemplateList>& reply)
{
    if (!m_store.snapshot())
        return;
    m_banner->present(Banner::Kind::error, reply ? QString{} : qString(m_store.friendly(reply.error())));
    if (reply)
        m_store.templates().adopt(*reply);
    else
        m_store.templates().reload(); // what came of it is seen there
    presentButtons();
}

void TemplatesDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        present();
    QDialog::changeEvent(event);
}

void TemplatesDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (m_stack->currentWidget() == m_table)
        m_table->enter();
    else
        m_new->setFocus(Qt::OtherFocusReason);
}
