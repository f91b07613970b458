#include "LedgerUI/Screens/Company/FinancialSettingsView.h"

#include <utility>

#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/ToggleSwitch.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/Chip.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Company/Settings/BookkeepingSetupView.h"
#include "LedgerUI/Screens/Company/Settings/SettingRow.h"
#include "LedgerUI/Screens/Company/Settings/SidebarListing.h"
#include "LedgerUI/Screens/Company/Settings/TransactionColorsDialog.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Imports/ImportDialog.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int columnWidth = 812;

}

FinancialSettingsView::FinancialSettingsView(LedgerStore& store, QWidget* parent)
    : CompanyTab{store, parent}, m_saved{SwitchesForm::of(*store.snapshot())}, m_submission{m_saved}
{
    buildLayout();
    bind();
}

void FinancialSettingsView::buildLayout()
{
    m_column = new QWidget;
    m_column->setMaximumWidth(columnWidth);
    m_banner = new Banner(Banner::Kind::error, m_column);
    m_reload = new QPushButton(m_banner);
    m_reload->setObjectName(QStringLiteral("settingsReload"));
    m_banner->addAction(m_reload);
    auto* rows = new QVBoxLayout(m_column);
    rows->setContentsMargins(0, Space::step3, 0, Space::step4);
    rows->setSpacing(0);
    rows->addWidget(m_banner);
    const auto add = [&](SettingRow*& row, std::initializer_list<QWidget*> controls) {
        row = new SettingRow(m_column);
        for (auto* control : controls)
            row->addControl(control);
        rows->addWidget(row);
    };
    m_startDay = new TextLabel(TypeStep::body, Token::text);
    m_startDay->setObjectName(QStringLiteral("startDay"));
    m_startDay->setBold(true);
    m_confirmed = new Chip(Chip::Kind::accent);
    m_setUp = new QPushButton;
    m_setUp->setObjectName(QStringLiteral("setUpBooks"));
    add(m_startRow, {m_startDay, m_confirmed, m_setUp});
    m_recordOpening = new QPushButton;
    m_recordOpening->setObjectName(QStringLiteral("recordOpenings"));
    add(m_openingsRow, {m_recordOpening});
    m_contributions = new ToggleSwitch;
    m_contributions->setObjectName(QStringLiteral("contributionsSwitch"));
    add(m_contributionsRow, {m_contributions});
    m_dividends = new ToggleSwitch;
    m_dividends->setObjectName(QStringLiteral("dividendsSwitch"));
    add(m_dividendsRow, {m_dividends});
    m_listing = new SidebarListing(store(), m_column);
    rows->addWidget(m_listing);
    m_colors = new ColorStrip;
    m_changeColors = new QPushButton;
    m_changeColors->setObjectName(QStringLiteral("changeColors"));
    add(m_colorsRow, {m_colors, m_changeColors});
    m_import = new QPushButton;
    m_import->setObjectName(QStringLiteral("importHistory"));
    m_import->setIcon(Icon::of(QStringLiteral("box-arrow-in-down"), Token::text));
    m_import->setIconSize({Space::iconBeforeText, Space::icon});
    add(m_importRow, {m_import});
    rows->addWidget(buildFoot());
    rows->addStretch(1);

    auto* ground = new QWidget;
    auto* row = new QHBoxLayout(ground);
    row->setContentsMargins(Space::step6, 0, Space::step6, 0);
    row->addWidget(m_column, columnWidth);
    row->addStretch(1);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(ground);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}

QWidget* FinancialSettingsView::buildFoot()
{
    auto* foot = new QWidget(m_column);
    m_revision = new TextLabel(TypeStep::small, Token::text2, foot);
    m_revision->setObjectName(QStringLiteral("settingsRevision"));
    m_revert = new QPushButton(foot);
    m_revert->setObjectName(QStringLiteral("settingsRevert"));
    m_save = new PrimaryButton(foot);
    m_save->setObjectName(QStringLiteral("settingsSave"));
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(0, Space::step3, 0, 0);
    row->setSpacing(Space::step2);
    row->addWidget(m_revision);
    row->addStretch(1);
    row->addWidget(m_revert);
    row->addWidget(m_save);
    return foot;
}

void FinancialSettingsView::bind()
{
    connect(m_contributions, &QAbstractButton::clicked, this, &FinancialSettingsView::edit);
    connect(m_dividends, &QAbstractButton::clicked, this, &FinancialSettingsView::edit);
    connect(m_setUp, &QPushButton::clicked, this, &FinancialSettingsView::setUp);
    connect(m_recordOpening, &QPushButton::clicked, this, &FinancialSettingsView::recordOpening);
    connect(m_changeColors, &QPushButton::clicked, this,
            [this] { (new TransactionColorsDialog(store(), window()))->open(); });
    connect(m_reload, &QPushButton::clicked, this, &FinancialSettingsView::reload);
    connect(m_save, &QPushButton::clicked, this, &FinancialSettingsView::save);
    connect(m_listing, &SidebarListing::done, this, &FinancialSettingsView::done);
    connect(m_import, &QPushButton::clicked, this, &FinancialSettingsView::importEntries);
    connect(m_revert, &QPushButton::clicked, this, &FinancialSettingsView::discardChanges);
}

std::size_t FinancialSettingsView::unsavedChanges() const
{
    // What is sent is not lost, unless the session ends before the reply: that one did not carry it out.
    return m_submission.isSaving() && store().snapshot() ? 0 : m_submission.form().changes(m_saved);
}

void FinancialSettingsView::discardChanges()
{
    if (m_submission.isSaving())
        return;
    m_submission = SwitchesSubmission{m_saved};
    present();
    Q_EMIT standingChanged();
}

PageView::StatusContext FinancialSettingsView::statusContext() const
{
    const auto count = unsavedChanges();
    return {.text = count == 0 ? QString{} : countedIn(InterfaceLanguage::tag(), companyWords(), "changes", count),
            .figure = {}};
}

/// What a person changed stays on top of what the service has now; what is on its way stays as it was sent.
void FinancialSettingsView::adopt()
{
    const auto snapshot = store().snapshot();
    if (m_shown != snapshot) {
        m_shown = snapshot;
        m_openings = FinancialSettingsText::openings(*snapshot);
    }
    const auto now = SwitchesForm::of(*snapshot);
    if (m_submission.isEditing())
        m_submission.adopt(m_submission.form().rebased(m_saved, now));
    m_saved = now;
}

void FinancialSettingsView::present()
{
    adopt();
    presentStart();
    presentOpenings();
    presentSwitches();
    m_listing->present();
    const auto& words = bookkeepingWords();
    m_colorsRow->present(word(words, "colors"), word(words, "colorsText"));
    m_colors->present(*store().snapshot());
    m_changeColors->setText(word(words, "change"));
    m_changeColors->setAccessibleName(word(words, "colors"));
    m_importRow->present(word(words, "import"), word(words, "importText"));
    m_import->setText(word(importWords(), "action"));
    m_import->setEnabled(!store().isBusy());
    m_importRow->setVisible(store().canViewCompany() && store().canRecord());
    const auto& settings = store().snapshot()->financialSettings;
    m_revision->setText(word(words, "revision", {std::to_string(settings ? settings->revision : 0)}));
    presentBanner();
}

void FinancialSettingsView::presentStart()
{
    const auto& words = bookkeepingWords();
    const auto& locale = InterfaceLanguage::tag();
    const auto& settings = store().snapshot()->financialSettings;
    const bool isConfirmed = settings && settings->bookkeepingStartDate;
    const auto since = isConfirmed && settings->initializedAt
                           ? DayText::longDay(DayText::dayOf(*settings->initializedAt), locale)
                           : QString{};
    const bool saysSince = isConfirmed && !since.isEmpty();
    m_startRow->present(word(words, "start"),
                        saysSince ? word(words, "startLocked", {since.toStdString()}) : word(words, "startOpen"));
    m_startDay->setText(isConfirmed ? DayText::longDay(*settings->bookkeepingStartDate, locale) : QString{});
    m_startDay->setVisible(isConfirmed);
    m_confirmed->setText(word(words, "confirmed"));
    m_confirmed->setVisible(isConfirmed);
    m_setUp->setText(word(words, "setUp"));
    m_setUp->setVisible(!isConfirmed);
    m_setUp->setEnabled(!store().isBusy());
}

void FinancialSettingsView::presentOpenings()
{
    const auto& words = bookkeepingWords();
    const auto& locale = InterfaceLanguage::tag();
    m_openingsRow->present(word(words, "openings"), m_openings.areWanted
                                                        ? word(words, "openingsCount",
                                                               {groupedNumber(m_openings.active, locale),
                                                                groupedNumber(m_openings.possible, locale)})
                                                        : word(words, "openingsFromZero"));
    m_recordOpening->setVisible(m_openings.areWanted);
    m_recordOpening->setText(word(words, "openingsButton"));
    m_recordOpening->setEnabled(m_openings.left > 0 && !store().isBusy());
    m_recordOpening->setToolTip(m_openings.left > 0 ? QString{} : word(words, "openingsAll"));
}

void FinancialSettingsView::presentSwitches()
{
    const auto& words = bookkeepingWords();
    const auto& form = m_submission.form();
    const auto note = [&](bool isChanged) { return isChanged ? word(words, "notSaved") : QString{}; };
    m_contributionsRow->present(word(words, "contributions"), word(words, "contributionsText"),
                                note(form.contributions != m_saved.contributions));
    m_dividendsRow->present(word(words, "dividends"), word(words, "dividendsText"),
                            note(form.dividends != m_saved.dividends));
    const auto show = [&](ToggleSwitch& toggle, bool isOn, const char* name) {
        toggle.setChecked(isOn);
        toggle.setWords(word(words, "on"), word(words, "off"));
        toggle.setAccessibleName(word(words, name));
        toggle.setEnabled(m_submission.isEditing() && !store().isBusy());
    };
    show(*m_contributions, form.contributions, "contributions");
    show(*m_dividends, form.dividends, "dividends");
    const bool isUncertain = m_submission.isUncertain();
    m_revert->setText(word(companyWords(), "revert"));
    m_revert->setEnabled(m_submission.isEditing() && form != m_saved);
    m_save->setText(word(words, isUncertain ? "retry" : "save"));
    m_save->setEnabled((isUncertain || (m_submission.isEditing() && form != m_saved)) && !store().isBusy());
}

void FinancialSettingsView::presentBanner()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto& refusal = m_submission.refusal();
    m_reload->setText(word(bookkeepingWords(), "reload"));
    m_reload->setVisible(refusal && FinancialSettingsText::isConflict(*refusal));
    m_reload->setEnabled(!store().isBusy());
    if (m_submission.isUncertain())
        m_banner->present(Banner::Kind::warn,
                          FailureText::unconfirmed(word(commandWords(), "uncertain"), refusal, locale));
    else if (refusal && !endsSession(*refusal)) // that was said where the member signed in again
        m_banner->present(Banner::Kind::error, qString(store().friendly(*refusal, locale)));
    else
        m_banner->present(Banner::Kind::error, {});
}

void FinancialSettingsView::edit()
{
    m_submission.edit({.contributions = m_contributions->isChecked(), .dividends = m_dividends->isChecked()});
    present();
    Q_EMIT standingChanged();
}

void FinancialSettingsView::setUp()
{
    auto* dialog = new BookkeepingSetupView(store(), window());
    connect(dialog, &BookkeepingSetupView::initialized, this,
            [this] { Q_EMIT done(word(bookkeepingWords(), "startConfirmed")); });
    dialog->open();
}

/// One opening balance after the other, until none is left or the person stops.
void FinancialSettingsView::recordOpening()
{
    const auto next = FinancialSettingsText::openings(*store().snapshot());
    if (next.nextAccount.empty()) {
        Q_EMIT done(word(bookkeepingWords(), "openingsDone"));
        return;
    }
    const EntryForm::Opening opening{
        .kind = std::string{EntryKind::opening}, .accountID = next.nextAccount, .prefilled = {}};
    auto* form = new TransactionForm(store(), opening, window());
    connect(form, &TransactionForm::recorded, this, [this] {
        // The form closes first: one dialog follows the other.
        QMetaObject::invokeMethod(this, &FinancialSettingsView::recordOpening, Qt::QueuedConnection);
    });
    form->open();
}

void FinancialSettingsView::importEntries()
{
    auto* dialog = new ImportDialog(store(), window());
    connect(dialog, &ImportDialog::imported, this, [this](const std::vector<std::string>& ids) { m_imported = ids; });
    connect(dialog, &QDialog::finished, this, &FinancialSettingsView::showImported);
    dialog->open();
}

/// Only now: leaving this page for the ledger may ask something, and the dialog had more to tell.
void FinancialSettingsView::showImported()
{
    const auto ids = std::exchange(m_imported, {});
    if (ids.empty() || !store().snapshot())
        return;
    Q_EMIT linkPressed({.page = WorkspacePage::ledger, .action = PageAction::chooseEntries, .subjects = ids});
    Q_EMIT done(countedIn(InterfaceLanguage::tag(), importWords(), "done", ids.size()));
}

void FinancialSettingsView::save()
{
    if (const auto* command = m_submission.submit([this] { return checked(); }))
        send(*command);
}

std::optional<FinancialSettingsCommand> FinancialSettingsView::checked()
{
    const auto& form = m_submission.form();
    auto command = FinancialSettingsRules::configure(*store().snapshot(),
                                                     {.contributions = form.contributions, .dividends = form.dividends},
                                                     store().newIdentifier());
    if (command)
        return *std::move(command);
    m_banner->present(Banner::Kind::error, FinancialSettingsText::refusal(command.error(), InterfaceLanguage::tag()));
    return {};
}

void FinancialSettingsView::send(const FinancialSettingsCommand& command)
{
    present();
    QCoro::connect(store().submitFinancialSettings(command, false), this,
                   [this](const Result<void>& reply) { finish(reply); });
}

void FinancialSettingsView::finish(const Result<void>& reply)
{
    if (!m_submission.isSaving())
        return;
    if (reply) {
        m_saved = m_submission.form();
        m_submission = SwitchesSubmission{m_saved};
    } else {
        m_submission.fail(reply.error());
    }
    if (!store().snapshot())
        return; // shown once its member is back
    if (reply)
        Q_EMIT done(word(bookkeepingWords(), "saved"));
    present();
    Q_EMIT standingChanged();
}

/// The newest settings, with what was changed here on top of them.
void FinancialSettingsView::reload()
{
    QCoro::connect(store().refresh(true), this, [this](const Result<void>& refreshed) {
        if (!refreshed || !store().snapshot() || !m_submission.isEditing())
            return;
        m_submission = SwitchesSubmission{m_submission.form()};
        present();
        Q_EMIT standingChanged();
    });
}
