#include "LedgerUI/Screens/Exports/LedgerExportDialog.h"

#include <algorithm>
#include <chrono>

#include <QCheckBox>
#include <QCoro/QCoroTask>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Exports/LedgerCSV.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
#include "LedgerUI/Presentation/Ledger/LedgerFilter.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/SavingText.h"
#include "LedgerUI/Screens/Entry/DayEdit.h"
#include "LedgerUI/Screens/Exports/LedgerExportPreviewPane.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Part = LedgerFilter::Part;

constexpr int bodyWidth = 418;
constexpr int asideWidth = 382;
constexpr int kindColumns = 2;
constexpr int underBox = 24; // where the text of a check box begins
constexpr auto typingPause = std::chrono::milliseconds{150};
constexpr std::size_t namedAtMost = 3;

QString text(std::string_view key)
{
    return word(exportWords(), key);
}

/// The days that the ledger could ever hold.
EntryDayBounds anyDay(const std::string& today)
{
    return {.earliest = std::string{"0001-01-01"}, .latest = "9999-12-31", .today = today};
}

/// "Operating bank, Petty cash and 2 more" shortened to what a field holds: names up to three, else a count.
QString summary(const std::vector<LedgerExport::Choice>& choices, const LedgerExportForm::Choices& chosen,
                std::string_view allKey)
{
    const auto& locale = InterfaceLanguage::tag();
    if (chosen.empty())
        return word(exportWords(), allKey, {groupedNumber(choices.size(), locale)});
    QStringList names;
    for (const auto& choice : choices) {
        if (chosen.contains(choice.id))
            names << choice.text;
    }
    const auto rest = names.size() - static_cast<qsizetype>(namedAtMost);
    if (rest > 0)
        names = names.first(static_cast<qsizetype>(namedAtMost)) << QStringLiteral("+%1").arg(rest);
    return names.join(QStringLiteral(", "));
}

void presentField(ChoiceField& field, std::string_view name, std::string_view allKey,
                  const std::vector<LedgerExport::Choice>& choices, const LedgerExportForm::Choices& chosen)
{
    std::vector<ChoiceList::Choice> rows;
    rows.reserve(choices.size());
    for (const auto& choice : choices)
        rows.push_back({.id = choice.id, .text = choice.text});
    field.present({.name = text(name), .all = text("all"), .search = text("search"), .noMatch = text("noMatch")}, rows,
                  chosen, summary(choices, chosen, allKey));
}

}

LedgerExportDialog::LedgerExportDialog(LedgerStore& store, const LedgerFilter& filter, QWidget* parent)
    : CommandForm{store, parent}, m_form{LedgerExport::opened(filter, *snapshot(), store.today())},
      m_isNarrowedElsewhere{filter.without(Part::kinds).without(Part::accounts).without(Part::currencies).narrows()}
{
    setObjectName(QStringLiteral("ledgerExportDialog"));
    confirmButton().setObjectName(QStringLiteral("exportSave"));
    cancelButton().setObjectName(QStringLiteral("exportCancel"));
    m_pause = new QTimer(this);
    m_pause->setSingleShot(true);
    m_pause->setInterval(typingPause);
    buildBody();
    bindParts();
    present();
    count();
}

void LedgerExportDialog::buildBody()
{
    auto* body = new QWidget;
    m_accounts = new ChoiceField;
    m_accounts->setObjectName(QStringLiteral("exportAccounts"));
    m_accountsField = new FormField(m_accounts, body);
    m_accountsHint = new TextLabel(TypeStep::small, Token::text2, body);
    m_accountsHint->setWordWrap(true);
    auto keepsItsRoom = m_accountsHint->sizePolicy(); // a dialog that changes its height closes the open list
    keepsItsRoom.setRetainSizeWhenHidden(true);
    m_accountsHint->setSizePolicy(keepsItsRoom);
    m_currencies = new ChoiceField;
    m_currencies->setObjectName(QStringLiteral("exportCurrencies"));
    m_currenciesField = new FormField(m_currencies, body);
    m_receiptIndex = new QCheckBox(body);
    m_receiptIndex->setObjectName(QStringLiteral("exportReceiptIndex"));
    m_receiptHint = new TextLabel(TypeStep::small, Token::text2, body);
    m_receiptHint->setWordWrap(true);
    m_receiptHint->setContentsMargins(underBox, 0, 0, 0);
    m_narrowed = new TextLabel(TypeStep::small, Token::text2, body);
    m_narrowed->setObjectName(QStringLiteral("exportNarrowed"));
    m_narrowed->setWordWrap(true);
    m_narrowed->setVisible(m_isNarrowedElsewhere);

    auto* accounts = new QVBoxLayout;
    accounts->setSpacing(Space::labelToField);
    accounts->addWidget(m_accountsField);
    accounts->addWidget(m_accountsHint);
    auto* receipts = new QVBoxLayout;
    receipts->setSpacing(0);
    receipts->addWidget(m_receiptIndex, 0, Qt::AlignLeft);
    receipts->addWidget(m_receiptHint);
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    layout->setSpacing(Space::fieldToField);
    layout->addWidget(buildDays(body));
    layout->addLayout(accounts);
    layout->addWidget(m_currenciesField);
    layout->addWidget(buildKinds(body));
    layout->addLayout(receipts);
    layout->addWidget(m_narrowed);
    layout->addStretch(1);
    setBody(body, bodyWidth);
    m_preview = new LedgerExportPreviewPane(this);
    setAside(m_preview, asideWidth);
    m_format = new TextLabel(TypeStep::small, Token::text2, this);
    setFootPart(m_format);
}

QWidget* LedgerExportDialog::buildDays(QWidget* parent)
{
    auto* days = new QWidget(parent);
    m_daysLabel = new TextLabel(TypeStep::small, Token::text2, days);
    m_firstDay = new DayEdit(days);
    m_firstDay->line().setObjectName(QStringLiteral("exportFirstDay"));
    m_lastDay = new DayEdit(days);
    m_lastDay->line().setObjectName(QStringLiteral("exportLastDay"));
    m_to = new TextLabel(TypeStep::body, Token::text2, days);
    m_firstDayError = new FieldError(&m_firstDay->line(), days);
    m_lastDayError = new FieldError(&m_lastDay->line(), days);
    auto* row = new QHBoxLayout;
    row->setSpacing(Space::step2);
    row->addWidget(m_firstDay, 1);
    row->addWidget(m_to);
    row->addWidget(m_lastDay, 1);
    auto* rows = new QVBoxLayout(days);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::labelToField);
    rows->addWidget(m_daysLabel);
    rows->addLayout(row);
    rows->addWidget(m_firstDayError);
    rows->addWidget(m_lastDayError);
    return days;
}

QWidget* LedgerExportDialog::buildKinds(QWidget* parent)
{
    auto* kinds = new QWidget(parent);
    m_kindsLabel = new TextLabel(TypeStep::small, Token::text2, kinds);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(Space::step3);
    grid->setVerticalSpacing(Space::step1);
    for (const auto kind : EntryKind::all) {
        auto* box = new QCheckBox(kinds);
        box->setObjectName(QStringLiteral("exportKind.") + qString(kind));
        const auto at = static_cast<int>(m_kinds.size());
        grid->addWidget(box, at / kindColumns, at % kindColumns);
        m_kinds.push_back({std::string{kind}, box});
    }
    m_kindsError = new FieldError(m_kinds.front().box, kinds);
    m_kindsError->setObjectName(QStringLiteral("exportKindsError"));
    auto* rows = new QVBoxLayout(kinds);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::labelToField);
    rows->addWidget(m_kindsLabel);
    rows->addLayout(grid);
    rows->addWidget(m_kindsError);
    return kinds;
}

void LedgerExportDialog::bindParts()
{
    connect(m_pause, &QTimer::timeout, this, &LedgerExportDialog::count);
    connect(this, &FormDialog::confirmed, this, &LedgerExportDialog::proceed);
    const auto changes = [this](auto field) {
        return [this, field](const auto& value) {
            auto form = m_form;
            form.*field = value;
            edit(std::move(form));
        };
    };
    connect(m_firstDay, &DayEdit::dayChanged, this, changes(&LedgerExportForm::firstDay));
    connect(m_lastDay, &DayEdit::dayChanged, this, changes(&LedgerExportForm::lastDay));
    const auto follow = [this, changes](const ChoiceField* field, auto member) {
        connect(field, &ChoiceField::chosenChanged, this,
                [field, change = changes(member)] { change(field->chosen()); });
    };
    follow(m_accounts, &LedgerExportForm::accountIDs);
    follow(m_currencies, &LedgerExportForm::currencies);
    connect(m_receiptIndex, &QCheckBox::clicked, this, changes(&LedgerExportForm::includesReceiptIndex));
    for (const auto& each : m_kinds) {
        connect(each.box, &QCheckBox::clicked, this, [this, kind = each.kind](bool isOn) {
            auto form = m_form;
            if (isOn)
                form.kinds.insert(kind);
            else
                form.kinds.erase(kind);
            edit(std::move(form));
        });
    }
}

void LedgerExportDialog::edit(LedgerExportForm form)
{
    if (m_stage != SubmissionStage::editing || form == m_form)
        return;
    m_form = std::move(form);
    m_refusal.reset();
    m_note = {};
    m_savesWhenCounted = false;
    present();
    m_pause->start();
}

void LedgerExportDialog::adoptSnapshot()
{
    takeSnapshot();
    present();
    count();
}

void LedgerExportDialog::present()
{
    const auto& today = store().today();
    const auto problems = LedgerExport::problems(m_form, today, locale());
    setWindowTitle(text("title"));
    m_daysLabel->setText(text("days"));
    m_to->setText(text("to"));
    m_firstDay->present(m_form.firstDay, anyDay(today));
    m_firstDay->setNames(text("firstDay"), text("openCalendar"));
    m_lastDay->present(m_form.lastDay, anyDay(today));
    m_lastDay->setNames(text("lastDay"), text("openCalendar"));
    m_firstDayError->present(problems.firstDay);
    m_lastDayError->present(problems.lastDay);
    presentChoices();
    presentKinds();
    m_kindsError->present(problems.kinds);
    m_receiptIndex->setText(text("receiptIndex"));
    m_receiptIndex->setChecked(m_form.includesReceiptIndex);
    m_receiptHint->setText(text("receiptIndexHint"));
    m_receiptIndex->setAccessibleDescription(m_receiptHint->text());
    m_narrowed->setText(text("narrowed"));
    const auto columns = LedgerCSV::columnCount({.includesReceiptIndex = m_form.includesReceiptIndex});
    m_format->setText(word(exportWords(), "format", {std::to_string(columns)}));
    const auto counts = m_previewed && m_previewed->counts ? std::optional{*m_previewed->counts} : std::nullopt;
    m_preview->present(counts, isCounting(), fileName());
    presentStanding({.stage = m_stage,
                     .refusal = m_refusal,
                     .note = m_note,
                     .confirm = text("save"),
                     .glyph = QStringLiteral("box-arrow-up")});
    if (problems.any())
        confirmButton().setEnabled(false);
}

void LedgerExportDialog::presentChoices()
{
    m_accountsField->setLabel(text("accounts"));
    presentField(*m_accounts, "accounts", "accounts.all", LedgerExport::accounts(*snapshot()), m_form.accountIDs);
    m_accountsHint->setText(text("accounts.allHint"));
    m_accountsHint->setVisible(m_form.accountIDs.empty());
    m_currenciesField->setLabel(text("currencies"));
    presentField(*m_currencies, "currencies", "currencies.all", LedgerExport::currencies(*snapshot()),
                 m_form.currencies);
}

void LedgerExportDialog::presentKinds()
{
    m_kindsLabel->setText(text("kinds"));
    for (const auto& [kind, box] : m_kinds) {
        box->setText(word(ledgerWords(), "kind." + kind));
        box->setIcon(Icon::of(entryKindGlyph(kind), entryKindColor(kind, *snapshot())));
        box->setChecked(m_form.kinds.contains(kind));
    }
}

/// Whether what the preview says is about other books or another choice than those in force.
bool LedgerExportDialog::isCounting() const
{
    return !m_previewed || m_previewed->books != snapshot() || m_previewed->scope != LedgerExport::scopeOf(m_form);
}

QString LedgerExportDialog::fileName() const
{
    if (m_form.firstDay.empty() || m_form.lastDay.empty())
        return QStringLiteral("–");
    return qString(LedgerCSV::fileName(m_form.firstDay, m_form.lastDay));
}

QWidget& LedgerExportDialog::firstField() const
{
    return m_firstDay->line();
}

void LedgerExportDialog::count()
{
    m_pause->stop();
    if (LedgerExport::problems(m_form, store().today(), locale()).any())
        return;
    const int run = ++m_counting;
    QCoro::connect(LedgerExport::preview(snapshot(), LedgerExport::scopeOf(m_form)), this,
                   [this, run](LedgerExport::Preview previewed) {
                       if (run != m_counting)
                           return;
                       adopt(std::move(previewed));
                       if (std::exchange(m_savesWhenCounted, false))
                           proceed();
                   });
}

void LedgerExportDialog::adopt(LedgerExport::Preview previewed)
{
    const bool isRenewed = m_previewed && m_previewed->scope == previewed.scope && m_previewed->counts &&
                           previewed.counts && *m_previewed->counts != *previewed.counts;
    m_previewed = std::move(previewed);
    if (m_stage == SubmissionStage::editing) {
        if (!m_previewed->counts)
            m_refusal = LedgerExport::failureOf(m_previewed->counts.error());
        else if (isRenewed)
            m_note = {Banner::Kind::info, text("renewed")};
    }
    present();
}

/// What is saved is what the preview counted: until that is there, the file waits for it.
void LedgerExportDialog::proceed()
{
    if (m_stage != SubmissionStage::editing)
        return;
    if (isCounting()) {
        m_savesWhenCounted = true;
        count();
        return;
    }
    if (m_previewed->counts)
        askForFile();
}

void LedgerExportDialog::askForFile()
{
    FileChoice::save(
        {.name = QStringLiteral("exportFileDialog"), .title = text("saveDialog"), .filter = FileChoice::csvFiles()},
        fileName(), this, [this](const std::filesystem::path& path) { saveTo(path); });
}

void LedgerExportDialog::saveTo(const std::filesystem::path& path)
{
    if (m_stage != SubmissionStage::editing || isCounting() || !m_previewed->counts)
        return;
    m_stage = SubmissionStage::saving;
    m_refusal.reset();
    m_note = {};
    present();
    QCoro::connect(LedgerExport::save(&store(), *m_previewed, path, locale()), this,
                   [this, path](const LedgerExport::Outcome& outcome) { finish(outcome, path); });
}

void LedgerExportDialog::finish(const LedgerExport::Outcome& outcome, const std::filesystem::path& path)
{
    if (!store().snapshot())
        return; // with the session the dialog closes
    m_stage = SubmissionStage::editing;
    if (std::holds_alternative<LedgerExport::Saved>(outcome)) {
        Q_EMIT saved(qString(path.filename().string()));
        leave();
        return;
    }
    if (const auto* failure = std::get_if<Failure>(&outcome)) {
        m_refusal = *failure;
    } else {
        const auto problem = std::get<SavingProblem>(outcome);
        m_note = {Banner::Kind::error, notSavedText(locale(), text("failed"), problem)};
    }
    present();
    confirmButton().setFocus(Qt::OtherFocusReason);
}
