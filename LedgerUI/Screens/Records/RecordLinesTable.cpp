#include "LedgerUI/Screens/Records/RecordLinesTable.h"

#include <algorithm>

#include <QCheckBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "LedgerUI/Components/Fields/AmountEdit.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Records/RecordInks.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

enum Column { glyphColumn, nameColumn, besideColumn, typedColumn, markColumn, amountColumn, columnCount };

constexpr int percentWidth = 84;
constexpr int amountWidth = 168;

TextLabel* label(TypeStep step, Token tone, QWidget* parent)
{
    auto* made = new TextLabel(step, tone, parent);
    made->setTextFormat(Qt::PlainText);
    return made;
}

}

RecordLinesTable::RecordLinesTable(QWidget* parent) : QWidget{parent}
{
    m_message = label(TypeStep::small, Token::danger, this);
    m_message->setObjectName(QStringLiteral("recordLinesMessage"));
    m_message->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step2);
    rows->addWidget(m_message);
}

void RecordLinesTable::present(const RecordLines& lines)
{
    const bool isSame = m_frame && std::ranges::equal(lines.lines, m_rows, {}, &RecordLine::id, &Row::id);
    if (!isSame)
        build(lines);
    const QString heads[] = {lines.personHead, lines.besideHead, lines.typedHead, lines.amountHead};
    for (std::size_t at = 0; at < m_heads.size(); ++at)
        m_heads[at]->setText(heads[at]);
    for (std::size_t at = 0; at < m_rows.size(); ++at)
        presentRow(m_rows[at], lines.lines[at], lines);
    m_totalName->setText(word(capitalFormWords(), "total"));
    m_total->setText(lines.total);
    m_total->setTone(lines.isWhole ? Token::text : Token::danger);
    m_amountTotal->setText(lines.amountTotal);
    m_message->setText(lines.message);
    m_message->setVisible(!lines.message.isEmpty());
}

void RecordLinesTable::build(const RecordLines& lines)
{
    delete m_frame;
    m_rows.clear();
    m_heads.clear();
    m_frame = new QFrame(this);
    m_frame->setProperty("card", QStringLiteral("true"));
    m_grid = new QGridLayout(m_frame);
    m_grid->setContentsMargins(Space::step4, Space::step2, Space::step4, Space::step2);
    m_grid->setHorizontalSpacing(Space::step3);
    m_grid->setVerticalSpacing(Space::step1);
    m_grid->setColumnStretch(nameColumn, 2);
    m_grid->setColumnStretch(besideColumn, 1);
    m_grid->setColumnStretch(markColumn, lines.amountHead.isEmpty() ? 0 : 1);
    for (const int column : {static_cast<int>(nameColumn), static_cast<int>(besideColumn),
                             static_cast<int>(typedColumn), static_cast<int>(amountColumn)}) {
        auto* head = label(TypeStep::small, Token::text2, m_frame);
        const bool isFigure = column == typedColumn || column == amountColumn;
        m_grid->addWidget(head, 0, column, isFigure ? Qt::AlignRight : Qt::AlignLeft);
        m_heads.push_back(head);
    }
    int at = 1;
    for (const auto& line : lines.lines) {
        m_grid->addWidget(new Line(Qt::Horizontal, m_frame), at++, 0, 1, columnCount);
        m_rows.push_back(makeRow(line, at, !lines.currency.empty()));
        at += 2;
    }
    m_grid->addWidget(new Line(Qt::Horizontal, m_frame), at++, 0, 1, columnCount);
    m_totalName = label(TypeStep::body, Token::text, m_frame);
    m_total = label(TypeStep::body, Token::text, m_frame);
    m_total->setObjectName(QStringLiteral("recordTotal"));
    m_amountTotal = label(TypeStep::body, Token::text, m_frame);
    m_amountTotal->setObjectName(QStringLiteral("recordAmountTotal"));
    for (auto* each : {m_totalName, m_total, m_amountTotal})
        each->setBold(true);
    m_grid->addWidget(m_totalName, at, nameColumn);
    m_grid->addWidget(m_total, at, typedColumn, Qt::AlignRight);
    m_grid->addWidget(m_amountTotal, at, amountColumn, Qt::AlignRight);
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, m_frame);
    m_frame->show();
}

/// Amounts are typed as everywhere: grouped, in either language's form, with arithmetic.
QLineEdit* RecordLinesTable::makeEdit(const std::string& personID, bool takesAmounts)
{
    const auto say = [this, personID](const QString& text) {
        Q_EMIT edited({.part = RecordPart::people, .text = text.toStdString(), .personID = personID});
    };
    if (!takesAmounts) {
        auto* edit = new QLineEdit(m_frame);
        connect(edit, &QLineEdit::textEdited, this, say);
        connect(edit, &QLineEdit::editingFinished, this, [this, personID] { Q_EMIT left(personID); });
        return edit;
    }
    auto* edit = new AmountEdit(m_frame);
    setStyleProperty(edit, "extent", QString{});
    edit->setFont(TypeScale::font(TypeStep::body));
    connect(edit, &AmountEdit::amountEdited, this, say);
    connect(edit, &AmountEdit::left, this, [this, personID] { Q_EMIT left(personID); });
    connect(edit, &AmountEdit::pasteRefused, this,
            [this, personID](PasteRefusal refusal) { Q_EMIT pasteRefused(refusal, personID); });
    return edit;
}

/// To the next row that can be typed in, and below the last one to what follows the table.
void RecordLinesTable::goBelow(const QLineEdit* edit)
{
    auto at = std::ranges::find(m_rows, edit, &Row::typed);
    for (++at; at != m_rows.end(); ++at) {
        if (at->typed->isEnabled())
            return at->typed->setFocus(Qt::TabFocusReason);
    }
    focusNextChild();
}

RecordLinesTable::Row RecordLinesTable::makeRow(const RecordLine& line, int at, bool takesAmounts)
{
    const auto number = QString::number(m_rows.size());
    Row row{.id = line.id};
    if (line.isIn) {
        row.tick = new QCheckBox(m_frame);
        row.tick->setObjectName(QStringLiteral("recordIn") + number);
        m_grid->addWidget(row.tick, at, glyphColumn);
        connect(row.tick, &QCheckBox::clicked, this, [this, id = line.id](bool isOn) {
            Q_EMIT edited({.part = RecordPart::zero, .personID = id, .isOn = isOn});
        });
    } else if (line.swatch) {
        m_grid->addWidget(
            new GlyphLabel(QStringLiteral("square-fill"), RecordInks::ofPerson(*line.swatch), Space::chevron, m_frame),
            at, glyphColumn);
    }
    row.name = new ElidedLabel(TypeStep::body, Token::text, Qt::ElideRight, m_frame);
    row.beside = new ElidedLabel(TypeStep::small, Token::text2, Qt::ElideRight, m_frame);
    for (auto* each : {row.name, row.beside})
        each->setTextFormat(Qt::PlainText);
    row.typed = makeEdit(line.id, takesAmounts);
    row.typed->setObjectName(QStringLiteral("recordRow") + number);
    row.typed->setAlignment(Qt::AlignRight);
    row.mark = label(TypeStep::micro, Token::text2, m_frame);
    row.amount = label(TypeStep::body, Token::text, m_frame);
    row.message = label(TypeStep::small, Token::danger, m_frame);
    row.message->setWordWrap(true);
    m_grid->addWidget(row.name, at, nameColumn);
    m_grid->addWidget(row.beside, at, besideColumn);
    m_grid->addWidget(row.typed, at, typedColumn);
    m_grid->addWidget(row.mark, at, markColumn);
    m_grid->addWidget(row.amount, at, amountColumn, Qt::AlignRight);
    m_grid->addWidget(row.message, at + 1, nameColumn, 1, columnCount - 1);
    connect(row.typed, &QLineEdit::returnPressed, this, [this, edit = row.typed] { goBelow(edit); });
    return row;
}

void RecordLinesTable::presentRow(const Row& row, const RecordLine& line, const RecordLines& lines)
{
    row.name->setText(line.name);
    row.beside->setText(line.beside);
    if (row.tick) {
        row.tick->setChecked(line.isIn.value_or(true));
        row.tick->setAccessibleName(line.name);
    }
    row.typed->setFixedWidth(lines.currency.empty() ? percentWidth : amountWidth);
    row.typed->setEnabled(line.isIn.value_or(true));
    if (auto* edit = qobject_cast<AmountEdit*>(row.typed)) {
        edit->setCurrency(lines.currency);
        edit->setAmount(line.typed);
    } else if (row.typed->text() != line.typed) {
        row.typed->setText(line.typed);
    }
    row.typed->setAccessibleName(line.name + QStringLiteral(", ") + lines.typedHead);
    row.typed->setAccessibleDescription(line.message);
    setStyleProperty(row.typed, "invalid", !line.message.isEmpty());
    row.mark->setText(line.mark);
    row.amount->setText(line.amount);
    row.message->setText(line.message);
    row.message->setVisible(!line.message.isEmpty());
}

void RecordLinesTable::comeAfter(QWidget* stop)
{
    for (const auto& row : m_rows) {
        if (row.tick) {
            setTabOrder(stop, row.tick);
            stop = row.tick;
        }
        setTabOrder(stop, row.typed);
        stop = row.typed;
    }
}

QWidget* RecordLinesTable::firstStop() const
{
    return m_rows.empty() ? nullptr : m_rows.front().typed;
}

QWidget* RecordLinesTable::firstWrong(const RecordLines& lines) const
{
    for (std::size_t at = 0; at < m_rows.size() && at < lines.lines.size(); ++at) {
        if (!lines.lines[at].message.isEmpty())
            return m_rows[at].typed;
    }
    return lines.message.isEmpty() ? nullptr : firstStop();
}
