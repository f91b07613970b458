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
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Period/DayEdit.h"
#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/ExportChangesText.h"
#include "LedgerUI/Presentation/Text/SavingText.h"
#include "LedgerUI/Screens/Exports/LedgerExportPreviewPane.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Source = LedgerExportForm::Source;

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

LedgerExportDialog::LedgerExportDialog(LedgerStore& store, LedgerExport::Page page, QWidget* parent)
    : CommandForm{store, parent}, m_page{std::make_shared<const LedgerExport::Page>(std::move(page))},
      m_form{LedgerExport::opened(*m_page, *snapshot())}, m_sources{LedgerExport::sources(*m_page)}
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
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    layout->setSpacing(Space::fieldToField);
    layout->addWidget(buildSource(body));
    layout->addWidget(buildChoice(body));
    layout->addWidget(buildReceipts(body));
    m_narrowed = new TextLabel(TypeStep::small, Token::text2, body);
    m_narrowed->setObjectName(QStringLiteral("exportNarrowed"));
    m_narrowed->setWordWrap(true);
    layout->addWidget(m_narrowed);
    layout->addStretch(1);
    setBody(body, bodyWidth);
    m_preview = new LedgerExportPreviewPane(this);
    setAside(m_preview, asideWidth);
    m_format = new TextLabel(TypeStep::small, Token::text2, this);
    setFootPart(m_format);
}

/// Where the page shows another set of entries than these fields could name, the file may hold those.
QWidget* LedgerExportDialog::buildSource(QWidget* parent)
{
    auto* source = new QWidget(parent);
    m_source = new SegmentedControl;
    m_source->setObjectName(QStringLiteral("exportSource"));
    for (const auto each : m_sources)
        m_source->addSegment(static_cast<int>(each), {});
    m_sourceField = new FormField(m_source, source);
    m_facts = new TextLabel(TypeStep::body, Token::text, source);
    m_facts->setObjectName(QStringLiteral("exportFacts"));
    m_facts->setWordWrap(true);
    auto* rows = new QVBoxLayout(source);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::fieldToField);
    rows->addWidget(m_sourceField);
    rows->addWidget(m_facts);
    source->setVisible(m_sources.size() > 1);
    return source;
}

QWidget* LedgerExportDialog::buildChoice(QWidget* parent)
{
    m_choice = new QWidget(parent);
    m_accounts = new ChoiceField;
    m_accounts->setObjectName(QStringLiteral("exportAccounts"));
    m_accountsField = new FormField(m_accounts, m_choice);
    m_accountsHint = new TextLabel(TypeStep::small, Token::text2, m_choice);
    m_accountsHint->setWordWrap(true);
    auto keepsItsRoom = m_accountsHint->sizePolicy(); // a dialog that changes its height closes the open list
    keepsItsRoom.setRetainSizeWhenHidden(true);
    m_accountsHint->setSizePolicy(keepsItsRoom);
    m_currencies = new ChoiceField;
    m_currencies->setObjectName(QStringLiteral("exportCurrencies"));
    m_currenciesField = new FormField(m_currencies, m_choice);
    auto* accounts = new QVBoxLayout;
    accounts->setSpacing(Space::labelToField);
    accounts->addWidget(m_accountsField);
    accounts->addWidget(m_accountsHint);
    auto* layout = new QVBoxLayout(m_choice);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Space::fieldToField);
    layout->addWidget(buildDays(m_choice));
    layout->addLayout(accounts);
    layout->addWidget(m_currenciesField);
    layout->addWidget(buildKinds(m_choice));
    return m_choice;
}

QWidget* LedgerExportDialog::buildReceipts(QWidget* parent)
{
    auto* receipts = new QWidget(parent);
    m_receiptIndex = new QCheckBox(receipts);
    m_receiptIndex->setObjectName(QStringLiteral("exportReceiptIndex"));
    m_receiptHint = new TextLabel(TypeStep::small, Token::text2, receipts);
    m_receiptHint->setWordWrap(true);
    m_receiptHint->setContentsMargins(underBox, 0, 0, 0);
    auto* rows = new QVBoxLayout(receipts);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_receiptIndex, 0, Qt::AlignLeft);
    rows->addWidget(m_receiptHint);
    return receipts;
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
    connect(m_source, &SegmentedControl::chosenByUser, this,
            [change = changes(&LedgerExportForm::source)](int id) { change(static_cast<Source>(id)); });
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

void LedgerExportDialog::adoptLanguage(const std::string& /*before*/)
{
    present();
    count(); // what narrows the page is named anew
}

void LedgerExportDialog::present()
{
    const auto& today = store().today();
    const auto problems = LedgerExport::problems(m_form, today, locale());
    setWindowTitle(text("title"));
    m_daysLabel->setText(text("days"));
    m_to->setText(text("to"));
    m_firstDay->present(m_form.firstDay, DayBounds::ofCalendar(today));
    m_firstDay->setNames(text("firstDay"), text("openCalendar"));
    m_lastDay->present(m_form.lastDay, DayBounds::ofCalendar(today));
    m_lastDay->setNames(text("lastDay"), text("openCalendar"));
    m_firstDayError->present(problems.firstDay);
    m_lastDayError->present(problems.lastDay);
    presentSource();
    presentChoices();
    presentKinds();
    m_kindsError->present(problems.kinds);
    m_receiptIndex->setText(text("receiptIndex"));
    m_receiptIndex->setChecked(m_form.includesReceiptIndex);
    m_receiptHint->setText(text("receiptIndexHint"));
    m_receiptIndex->setAccessibleDescription(m_receiptHint->text());
    m_narrowed->setText(text("narrowed"));
    const bool isShownOffered = std::ranges::find(m_sources, Source::shown) != m_sources.end();
    m_narrowed->setVisible(m_form.source == Source::chosen && isShownOffered);
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

QString LedgerExportDialog::sourceText(Source source) const
{
    switch (source) {
    case Source::shown:
        return text("source.shown");
    case Source::selected:
        return word(exportWords(), "source.selected", {groupedNumber(m_page->selectedIDs.size(), locale())});
    case Source::chosen:
        break;
    }
    return text("source.chosen");
}

void LedgerExportDialog::presentSource()
{
    m_sourceField->setLabel(text("source"));
    m_source->setName(text("source"));
    for (const auto each : m_sources)
        m_source->setSegmentText(static_cast<int>(each), sourceText(each));
    m_source->choose(static_cast<int>(m_form.source));
    const bool isChosen = m_form.source == Source::chosen;
    m_choice->setVisible(isChosen);
    m_facts->setVisible(!isChosen);
    QStringList lines;
    if (m_previewed && m_previewed->form.source == m_form.source) {
        for (const auto& fact : m_previewed->facts)
            lines << word(ledgerWords(), "chip", {fact.label.toStdString(), fact.value.toStdString()});
    }
    m_facts->setText(lines.join(QLatin1Char('\n')));
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
    return !m_previewed || m_previewed->books != snapshot() || m_previewed->form != m_form;
}

QString LedgerExportDialog::fileName() const
{
    if (m_form.source != Source::chosen)
        return isCounting() ? QStringLiteral("–")
                            : qString(LedgerCSV::fileName(m_previewed->scope.startDate, m_previewed->scope.endDate));
    if (m_form.firstDay.empty() || m_form.lastDay.empty())
        return QStringLiteral("–");
    return qString(LedgerCSV::fileName(m_form.firstDay, m_form.lastDay));
}

QWidget& LedgerExportDialog::firstField() const
{
    return m_sources.size() > 1 ? static_cast<QWidget&>(*m_source) : m_firstDay->line();
}

void LedgerExportDialog::count()
{
    m_pause->stop();
    if (LedgerExport::problems(m_form, store().today(), locale()).any())
        return;
    const int run = ++m_counting;
    QCoro::connect(
        LedgerExport::preview(
            {.books = snapshot(), .form = m_form, .page = m_page, .locale = locale(), .before = m_previewed}),
        this, [this, run](LedgerExport::Preview previewed) {
            if (run != m_counting)
                return;
            adopt(std::move(previewed));
            if (std::exchange(m_savesWhenCounted, false))
                proceed();
        });
}

void LedgerExportDialog::adopt(LedgerExport::Preview previewed)
{
    const auto changes = exportChangesText(previewed.changes, locale());
    m_previewed = std::move(previewed);
    if (!m_previewed->counts && m_stage == SubmissionStage::editing)
        m_refusal = LedgerExport::failureOf(m_previewed->counts.error());
    else if (!changes.isEmpty())
        m_note = {Banner::Kind::info, word(exportWords(), "renewed", {changes.toStdString()})};
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
    QCoro::connect(LedgerExport::save(&store(), m_page, *m_previewed, path, locale()), this,
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
