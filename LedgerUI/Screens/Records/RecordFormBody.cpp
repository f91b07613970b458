#include "LedgerUI/Screens/Records/RecordFormBody.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Fields/AccountPicker.h"
#include "LedgerUI/Components/Fields/AmountEdit.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Period/DayField.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/NameText.h"
#include "LedgerUI/Screens/Records/RecordEquation.h"
#include "LedgerUI/Screens/Records/RecordLinesTable.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

using Kind = RecordField::Kind;

/// The object name of the control of a part.
QString nameOf(RecordPart part)
{
    static constexpr const char* names[] = {"recordPerson",   "recordName",    "recordMember",   "recordRatio",
                                            "recordArchived", "recordPeriod",  "recordCurrency", "recordBatch",
                                            "recordAdvance",  "recordThrough", "recordStart",    "recordPeople",
                                            "recordZero",     "recordAccount", "recordAmount",   "recordNote"};
    return QString::fromLatin1(names[static_cast<std::size_t>(part)]);
}

/// Fields that come after the table: what is confirmed about it, and the note.
bool isBelowTable(RecordPart part)
{
    return part == RecordPart::zero;
}

void presentChoices(QComboBox& box, const RecordField& field)
{
    const QSignalBlocker quietly{box};
    const bool isSame =
        box.count() == static_cast<int>(field.choices.size()) &&
        std::ranges::all_of(field.choices, [&, at = 0](const RecordChoice& each) mutable {
            const int index = at++;
            return box.itemText(index) == each.text && box.itemData(index).toString().toStdString() == each.id;
        });
    if (!isSame) {
        box.clear();
        for (const auto& each : field.choices)
            box.addItem(each.text, QString::fromStdString(each.id));
    }
    box.setPlaceholderText(field.prompt);
    box.setCurrentIndex(box.findData(QString::fromStdString(field.chosen)));
}

}

RecordFormBody::RecordFormBody(QWidget* parent) : QWidget{parent}
{
    m_explanation = new TextLabel(TypeStep::body, Token::text2, this);
    m_explanation->setWordWrap(true);
    m_equation = new RecordEquation(this);
    m_equation->setObjectName(QStringLiteral("recordEquation"));
    m_grid = new QGridLayout;
    m_tableHead = new QWidget(this);
    m_tableActions = new QHBoxLayout(m_tableHead);
    m_tableActions->setContentsMargins(0, 0, 0, 0);
    m_tableActions->setSpacing(Space::step2);
    m_tableActions->addStretch(1);
    m_tableHead->hide();
    m_lines = new RecordLinesTable(this);
    m_lines->setObjectName(QStringLiteral("recordLines"));
    m_below = new QGridLayout;
    for (auto* grid : {m_grid, m_below}) {
        grid->setContentsMargins(0, 0, 0, 0);
        grid->setHorizontalSpacing(Space::step4);
        grid->setVerticalSpacing(Space::fieldToField);
        grid->setColumnStretch(0, 1);
        grid->setColumnStretch(1, 1);
    }
    m_preview = new TextLabel(TypeStep::body, Token::text, this);
    m_preview->setObjectName(QStringLiteral("recordPreview"));
    m_preview->setTextFormat(Qt::PlainText);
    m_preview->setWordWrap(true);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::fieldToField);
    rows->addWidget(m_explanation);
    rows->addWidget(m_equation);
    rows->addLayout(m_grid);
    rows->addWidget(m_tableHead);
    rows->addWidget(m_lines);
    rows->addLayout(m_below);
    rows->addWidget(m_preview);
    rows->addWidget(m_hint);
    rows->addStretch(1);
    connect(m_lines, &RecordLinesTable::edited, this, &RecordFormBody::edited);
    connect(m_lines, &RecordLinesTable::left, this, &RecordFormBody::amountLeft);
    connect(m_lines, &RecordLinesTable::pasteRefused, this, &RecordFormBody::pasteRefused);
}

void RecordFormBody::addTableAction(QPushButton* button)
{
    m_tableActions->addWidget(button);
    m_tableHead->show();
}

void RecordFormBody::present(const RecordFormContent& content)
{
    const auto show = [](TextLabel& label, const QString& text) {
        label.setText(text);
        label.setVisible(!text.isEmpty());
    };
    show(*m_explanation, content.explanation);
    show(*m_preview, breakingLongWords(content.preview));
    show(*m_hint, content.hint);
    m_equation->present(content.equation);
    for (const auto& field : content.fields)
        presentField(place(field), field);
    m_lines->setVisible(content.lines.has_value());
    if (content.lines)
        m_lines->present(*content.lines);
    arrange(content);
}

RecordFormBody::Place& RecordFormBody::place(const RecordField& field)
{
    auto& place = m_places[field.part];
    if (!place.box)
        place = make(field);
    return place;
}

RecordFormBody::Place RecordFormBody::make(const RecordField& field)
{
    const auto part = field.part;
    const auto say = [this, part](const QString& text) { Q_EMIT edited({.part = part, .text = text.toStdString()}); };
    QWidget* control = nullptr;
    QWidget* named = nullptr;
    if (field.kind == Kind::text) {
        auto* edit = new LimitedEdit(field.limit);
        connect(edit, &QLineEdit::textEdited, this, say);
        control = edit;
    } else if (field.kind == Kind::amount) {
        auto* edit = new AmountEdit;
        setStyleProperty(edit, "extent", QString{});
        edit->setFont(TypeScale::font(TypeStep::body));
        connect(edit, &AmountEdit::amountEdited, this, say);
        connect(edit, &AmountEdit::left, this, [this] { Q_EMIT amountLeft({}); });
        connect(edit, &AmountEdit::pasteRefused, this,
                [this](PasteRefusal refusal) { Q_EMIT pasteRefused(refusal, {}); });
        control = edit;
    } else if (field.kind == Kind::choice) {
        auto* box = new QComboBox;
        dressComboBox(*box);
        box->setMinimumWidth(1); // names give way, not the form
        connect(box, &QComboBox::activated, this, [say, box](int at) { say(box->itemData(at).toString()); });
        control = box;
    } else if (field.kind == Kind::account) {
        auto* picker = new AccountPicker;
        connect(picker, &AccountPicker::accountChosen, this,
                [this, part](const std::string& id) { Q_EMIT edited({.part = part, .text = id}); });
        control = picker;
    } else if (field.kind == Kind::day) {
        auto* day = new DayField;
        connect(day, &DayField::dayChosen, this,
                [this, part](const std::string& chosen) { Q_EMIT edited({.part = part, .text = chosen}); });
        control = day;
        named = day->control();
    } else if (field.kind == Kind::tick) {
        auto* tick = new QCheckBox;
        connect(tick, &QCheckBox::clicked, this,
                [this, part](bool isOn) { Q_EMIT edited({.part = part, .isOn = isOn}); });
        control = tick;
    } else {
        auto* fixed = new QLineEdit;
        fixed->setReadOnly(true);
        control = fixed;
    }
    control->setObjectName(nameOf(part));
    auto* box = new FormField(control, this);
    box->wrapLabel(); // it may hold a name that somebody else has given
    box->error().setObjectName(nameOf(part) + QStringLiteral("Error"));
    return {.box = box, .control = named ? named : control};
}

void RecordFormBody::presentField(Place& place, const RecordField& field)
{
    auto* control = place.control;
    const bool isTick = field.kind == Kind::tick;
    place.box->setLabel(isTick ? QString{} : breakingLongWords(field.label));
    if (field.kind == Kind::amount) {
        auto& edit = static_cast<AmountEdit&>(*control);
        edit.setCurrency(field.currency);
        edit.setAmount(field.value);
    } else if (field.kind == Kind::choice) {
        presentChoices(static_cast<QComboBox&>(*control), field);
        nameComboBox(static_cast<QComboBox&>(*control), field.label);
    } else if (field.kind == Kind::account) {
        static_cast<AccountPicker&>(*control).present(field.accounts, field.chosen, field.prompt);
    } else if (field.kind == Kind::day) {
        auto* day = place.box->findChild<DayField*>();
        day->present(field.day);
    } else if (isTick) {
        auto& tick = static_cast<QCheckBox&>(*control);
        tick.setText(field.label);
        tick.setAccessibleName(field.label);
        tick.setChecked(field.isOn);
    } else if (auto& edit = static_cast<QLineEdit&>(*control); edit.text() != field.value) {
        edit.setText(field.value);
    }
    if (field.kind != Kind::day)
        place.box->error().present(field.message);
}

/// Puts the fields where the content has them; two halves share a row.
void RecordFormBody::arrange(const RecordFormContent& content)
{
    std::vector<RecordPart> order;
    order.reserve(content.fields.size());
    for (const auto& field : content.fields)
        order.push_back(field.part);
    if (order == m_order)
        return;
    m_order = order;
    for (auto* grid : {m_grid, m_below}) {
        while (auto* item = grid->takeAt(0))
            delete item;
    }
    for (auto& [part, place] : m_places)
        place.box->setVisible(std::ranges::find(order, part) != order.end());
    int row = 0;
    bool isRowOpen = false;
    QWidget* before = nullptr;
    for (const auto& field : content.fields) {
        auto& shown = m_places[field.part];
        auto& grid = isBelowTable(field.part) ? *m_below : *m_grid;
        if (!field.isHalf && isRowOpen)
            ++row;
        grid.addWidget(shown.box, row, field.isHalf && isRowOpen ? 1 : 0, 1, field.isHalf ? 1 : 2, Qt::AlignTop);
        isRowOpen = field.isHalf && !isRowOpen;
        if (!isRowOpen)
            ++row;
        if (before)
            setTabOrder(before, shown.control);
        before = shown.control;
    }
    if (before && content.lines)
        m_lines->comeAfter(before);
}

QWidget* RecordFormBody::firstStop() const
{
    for (const auto part : m_order) {
        auto* control = m_places.at(part).control;
        const auto* line = qobject_cast<QLineEdit*>(control);
        const auto* box = qobject_cast<QComboBox*>(control);
        if (line && line->isReadOnly())
            continue;
        if (box && box->currentIndex() > 0)
            continue; // chosen already: the next thing is to be filled in
        return control;
    }
    return m_lines->isHidden() ? nullptr : m_lines->firstStop();
}

QWidget* RecordFormBody::firstWrong(const RecordFormContent& content) const
{
    for (const auto& field : content.fields) {
        if (!field.message.isEmpty())
            return m_places.at(field.part).control;
    }
    return content.lines ? m_lines->firstWrong(*content.lines) : nullptr;
}

bool RecordFormBody::isWithinLimits() const
{
    return std::ranges::all_of(m_places, [](const auto& each) {
        const auto* edit = qobject_cast<LimitedEdit*>(each.second.control);
        return !edit || edit->isWithinLimit();
    });
}
