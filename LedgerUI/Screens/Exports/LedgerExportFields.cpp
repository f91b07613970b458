#include "LedgerUI/Screens/Exports/LedgerExportFields.h"

#include <algorithm>
#include <utility>

#include <QCheckBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Period/DayEdit.h"
#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Source = LedgerExportForm::Source;

constexpr int kindColumns = 2;
constexpr int underBox = 24; // where the text of a check box begins
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

/// What is chosen but not seen any more stands below the rest, so that it can be taken out; returns its names.
template <class NameOf>
QStringList addLost(std::vector<LedgerExport::Choice>& choices, const LedgerExportForm::Choices& chosen, NameOf nameOf)
{
    QStringList names;
    for (const auto& id : chosen) {
        if (std::ranges::find(choices, id, &LedgerExport::Choice::id) != choices.end())
            continue;
        names << nameOf(id);
        choices.push_back({id, word(exportWords(), "lost", {names.back().toStdString()})});
    }
    return names;
}

void presentLost(FieldError& error, const QStringList& names, std::string_view key)
{
    const auto listedNames = listed(names, InterfaceLanguage::tag()).toStdString();
    error.present(names.isEmpty() ? QString{} : word(exportWords(), key, {listedNames}));
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

LedgerExportFields::LedgerExportFields(std::vector<Source> sources, QWidget* parent)
    : QWidget{parent}, m_sources{std::move(sources)}
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::fieldToField);
    if (m_sources.size() > 1)
        rows->addWidget(buildSource(this));
    rows->addWidget(buildChoice(this));
    rows->addWidget(buildReceipts(this));
    bindParts();
}

QWidget& LedgerExportFields::first() const
{
    return m_sources.size() > 1 ? static_cast<QWidget&>(*m_source) : m_firstDay->line();
}

/// Where the page shows another set of entries than these fields could name, the file may hold those.
QWidget* LedgerExportFields::buildSource(QWidget* parent)
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
    return source;
}

QWidget* LedgerExportFields::buildChoice(QWidget* parent)
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

QWidget* LedgerExportFields::buildReceipts(QWidget* parent)
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

QWidget* LedgerExportFields::buildDays(QWidget* parent)
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

QWidget* LedgerExportFields::buildKinds(QWidget* parent)
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

void LedgerExportFields::bindParts()
{
    const auto changes = [this](auto field) {
        return [this, field](const auto& value) {
            auto form = m_form;
            form.*field = value;
            Q_EMIT edited(form);
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
    if (m_source)
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
            Q_EMIT edited(form);
        });
    }
}

void LedgerExportFields::present(const Shown& shown)
{
    m_form = shown.form;
    m_daysLabel->setText(text("days"));
    m_to->setText(text("to"));
    m_firstDay->present(m_form.firstDay, DayBounds::ofCalendar(shown.today));
    m_firstDay->setNames(text("firstDay"), text("openCalendar"));
    m_lastDay->present(m_form.lastDay, DayBounds::ofCalendar(shown.today));
    m_lastDay->setNames(text("lastDay"), text("openCalendar"));
    m_firstDayError->present(shown.problems.firstDay);
    m_lastDayError->present(shown.problems.lastDay);
    presentSource(shown);
    presentChoices(shown);
    presentKinds(shown.snapshot);
    m_kindsError->present(shown.problems.kinds);
    m_receiptIndex->setText(text("receiptIndex"));
    m_receiptIndex->setChecked(m_form.includesReceiptIndex);
    m_receiptHint->setText(text("receiptIndexHint"));
    m_receiptIndex->setAccessibleDescription(m_receiptHint->text());
}

QString LedgerExportFields::sourceText(Source source, std::size_t selected)
{
    switch (source) {
    case Source::shown:
        return text("source.shown");
    case Source::selected:
        return word(exportWords(), "source.selected", {groupedNumber(selected, InterfaceLanguage::tag())});
    case Source::chosen:
        break;
    }
    return text("source.chosen");
}

void LedgerExportFields::presentSource(const Shown& shown)
{
    if (!m_source)
        return; // all is chosen here
    m_sourceField->setLabel(text("source"));
    m_source->setName(text("source"));
    for (const auto each : m_sources)
        m_source->setSegmentText(static_cast<int>(each), sourceText(each, shown.selected));
    m_source->choose(static_cast<int>(m_form.source));
    const bool isChosen = m_form.source == Source::chosen;
    m_choice->setVisible(isChosen);
    m_facts->setVisible(!isChosen);
    QStringList lines;
    for (const auto& fact : shown.facts)
        lines << word(ledgerWords(), "chip", {fact.label.toStdString(), fact.value.toStdString()});
    m_facts->setText(lines.join(QLatin1Char('\n')));
}

QString LedgerExportFields::nameOf(const std::string& accountID) const
{
    const auto seen = m_accountNames.find(accountID);
    return seen == m_accountNames.end() ? word(ledgerWords(), "account.hidden") : seen->second;
}

/// What the page is narrowed to without its being seen any more is told where the page has chosen, too.
void LedgerExportFields::presentChoices(const Shown& shown)
{
    auto accounts = LedgerExport::accounts(shown.snapshot);
    for (const auto& [id, name] : accounts)
        m_accountNames[id] = name;
    const auto named = [this](const std::string& id) { return nameOf(id); };
    auto onPage = accounts;
    auto currencies = LedgerExport::currencies(shown.snapshot);
    auto currenciesOnPage = currencies;
    const auto lostOnPage =
        addLost(onPage, shown.onPage.accountIDs, named) + addLost(currenciesOnPage, shown.onPage.currencies, &qString);
    if (m_sourceField)
        presentLost(m_sourceField->error(), m_form.source == Source::chosen ? QStringList{} : lostOnPage,
                    "lost.onPage");
    const auto lostAccounts = addLost(accounts, m_form.accountIDs, named);
    m_accountsField->setLabel(text("accounts"));
    presentField(*m_accounts, "accounts", "accounts.all", accounts, m_form.accountIDs);
    presentLost(m_accountsField->error(), lostAccounts, "lost.takeOut");
    m_accountsHint->setText(text("accounts.allHint"));
    m_accountsHint->setVisible(m_form.accountIDs.empty());
    const auto lostCurrencies = addLost(currencies, m_form.currencies, &qString);
    m_currenciesField->setLabel(text("currencies"));
    presentField(*m_currencies, "currencies", "currencies.all", currencies, m_form.currencies);
    presentLost(m_currenciesField->error(), lostCurrencies, "lost.takeOut");
}

void LedgerExportFields::presentKinds(const LedgerSnapshot& snapshot)
{
    m_kindsLabel->setText(text("kinds"));
    for (const auto& [kind, box] : m_kinds) {
        box->setText(word(ledgerWords(), "kind." + kind));
        box->setIcon(Icon::of(entryKindGlyph(kind), entryKindColor(kind, snapshot)));
        box->setChecked(m_form.kinds.contains(kind));
    }
}
