#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailBody.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/SelectableText.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Receipts/ReceiptButton.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int labelColumn = 96;
constexpr int codeColumn = 36;
constexpr int digitsColumn = 130; // so that codes stand in one line down the pane

TextLabel* label(const QString& text, TypeStep step, Token tone, QWidget* parent)
{
    auto* made = new TextLabel(step, tone, parent);
    made->setTextFormat(Qt::PlainText);
    made->setText(text);
    return made;
}

QPushButton* linkButton(const QString& text, const LedgerDetailBody::Action& action, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setProperty("kind", QStringLiteral("link"));
    button->setCursor(Qt::PointingHandCursor);
    QObject::connect(button, &QPushButton::clicked, parent, action);
    return button;
}

/// Code at the left, digits at the right edge.
TextLabel* addAmountRow(QGridLayout* grid, int row, const MoneyText& amount, QWidget* parent)
{
    auto* digits = label(amount.figure(), TypeStep::body, Token::text, parent);
    grid->addWidget(label(amount.currency, TypeStep::micro, Token::text3, parent), row, 1);
    grid->addWidget(digits, row, 2, Qt::AlignRight);
    return digits;
}

}

LedgerDetailBody::LedgerDetailBody(QWidget* parent) : QWidget{parent}
{
    m_rows = new QVBoxLayout(this);
    m_rows->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, Space::pageMargin);
    m_rows->setSpacing(0);
}

void LedgerDetailBody::addAmount(const MoneyText& amount, const ThemeColor& ink, bool isReversed)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(Space::step2);
    auto* code = label(amount.currency, TypeStep::body, Token::text3, this);
    auto* digits = label(amount.figure(), TypeStep::display, Token::text, this);
    digits->setInk(ink);
    auto font = digits->font();
    font.setStrikeOut(isReversed);
    digits->setFont(font);
    digits->setObjectName(QStringLiteral("detailAmount"));
    // The code stands on the baseline of the digits.
    const int drop = QFontMetrics{digits->font()}.descent() - QFontMetrics{code->font()}.descent();
    code->setContentsMargins(0, 0, 0, drop);
    row->addWidget(code, 0, Qt::AlignBottom);
    row->addWidget(digits, 1, Qt::AlignBottom);
    m_rows->addLayout(row);
}

SelectableText* LedgerDetailBody::addText(const QString& text, Token tone)
{
    auto* added = new SelectableText(text, TypeStep::body, tone, this);
    m_rows->addWidget(added);
    return added;
}

void LedgerDetailBody::addLines(const std::vector<LedgerEntryDetail::Line>& lines)
{
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, Space::step3, 0, 0);
    grid->setHorizontalSpacing(Space::step2);
    grid->setVerticalSpacing(Space::step2 - 2);
    grid->setColumnMinimumWidth(0, labelColumn);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const auto& line : lines) {
        auto* name = label(line.label, TypeStep::small, Token::text2, this);
        name->setWordWrap(true);
        name->setFixedWidth(labelColumn);
        grid->addWidget(name, row, 0, Qt::AlignTop);
        grid->addWidget(new SelectableText(line.value, TypeStep::body, Token::text, this), row++, 1, Qt::AlignTop);
    }
    m_rows->addLayout(grid);
}

void LedgerDetailBody::addSection(const QString& title, const QString& count)
{
    m_rows->addSpacing(Space::sectionGap);
    auto* row = new QHBoxLayout;
    auto* head = label(title, TypeStep::body, Token::text, this);
    head->setBold(true);
    row->addWidget(head, 1);
    row->addWidget(label(count, TypeStep::small, Token::text2, this));
    m_rows->addLayout(row);
    m_rows->addSpacing(Space::step1);
    addLine();
}

void LedgerDetailBody::addLeg(const LedgerEntryDetail::Leg& leg, const QString& afterLabel)
{
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, Space::step2, 0, Space::step2);
    grid->setHorizontalSpacing(Space::step2);
    grid->setVerticalSpacing(Space::step1);
    grid->setColumnStretch(0, 1);
    grid->addWidget(new SelectableText(leg.account, TypeStep::body, Token::text, this), 0, 0, Qt::AlignTop);
    grid->addWidget(label(leg.amount.text(), TypeStep::body, Token::text, this), 0, 1, Qt::AlignRight | Qt::AlignTop);
    if (leg.balanceAfter) {
        auto* after = label(afterLabel, TypeStep::small, Token::text2, this);
        after->setWordWrap(true);
        grid->addWidget(after, 1, 0);
        grid->addWidget(label(leg.balanceAfter->text(), TypeStep::small, Token::text2, this), 1, 1, Qt::AlignRight);
    }
    m_rows->addLayout(grid);
    addLine();
}

void LedgerDetailBody::addReceipt(const LedgerEntryDetail::Receipt& receipt, const Action& open)
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 1, 0, 1);
    row->setSpacing(Space::step1);
    auto* name = new ReceiptButton(this);
    name->setObjectName(QStringLiteral("detailReceipt"));
    name->present(receipt.name, !receipt.isImage);
    name->setAccessibleName(listed({receipt.name, receipt.size}, InterfaceLanguage::tag()));
    connect(name, &QAbstractButton::clicked, this, open);
    auto* look = new IconButton(QStringLiteral("eye"), IconButton::Frame::none, this);
    look->setObjectName(QStringLiteral("detailReceiptLook"));
    look->setName(word(receiptWords(), "preview", {receipt.name.toStdString()}));
    connect(look, &QAbstractButton::clicked, this, open);
    row->addWidget(name, 1);
    row->addWidget(label(receipt.size, TypeStep::micro, Token::text2, this));
    row->addWidget(look);
    m_rows->addLayout(row);
    addLine();
}

void LedgerDetailBody::addButton(const QString& objectName, const QString& glyph, const QString& text,
                                 const Action& action)
{
    auto* button = new QPushButton(Icon::of(glyph, Token::accent), text, this);
    button->setObjectName(objectName);
    button->setProperty("kind", QStringLiteral("flat"));
    button->setIconSize({Space::iconBeforeText, Space::icon});
    connect(button, &QPushButton::clicked, this, action);
    m_rows->addSpacing(Space::step1);
    m_rows->addWidget(button, 0, Qt::AlignLeft);
}

void LedgerDetailBody::addLink(const QString& name, const QString& text, const Action& action)
{
    auto* column = new QVBoxLayout;
    column->setContentsMargins(0, Space::step2, 0, Space::step2);
    column->setSpacing(2);
    column->addWidget(label(name, TypeStep::small, Token::text2, this));
    if (action) {
        auto* button = linkButton(text, action, this);
        button->setObjectName(QStringLiteral("entryLink"));
        button->setAccessibleName(listed({name, text}, InterfaceLanguage::tag()));
        column->addWidget(button, 0, Qt::AlignLeft);
    } else {
        column->addWidget(new SelectableText(text, TypeStep::body, Token::text, this));
    }
    m_rows->addLayout(column);
    addLine();
}

void LedgerDetailBody::addGroup(const QString& title)
{
    m_rows->addWidget(label(title, TypeStep::small, Token::text2, this));
    m_rows->addSpacing(Space::step1);
    addLine();
}

std::vector<TextLabel*> LedgerDetailBody::addAccount(const QString& name, const std::vector<MoneyText>& amounts,
                                                     const Action& action)
{
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, Space::step2 - 2, 0, Space::step2 - 2);
    grid->setHorizontalSpacing(Space::step2);
    grid->setVerticalSpacing(1);
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, codeColumn);
    grid->setColumnMinimumWidth(2, digitsColumn);
    auto* button = linkButton(name, action, this);
    button->setObjectName(QStringLiteral("balanceAccount"));
    grid->addWidget(button, 0, 0, 1, 3, Qt::AlignLeft);
    std::vector<TextLabel*> figures;
    for (const auto& amount : amounts) {
        figures.push_back(addAmountRow(grid, static_cast<int>(figures.size()) + 1, amount, this));
        presentFigure(*figures.back(), amount);
    }
    m_rows->addLayout(grid);
    addLine();
    return figures;
}

std::vector<TextLabel*> LedgerDetailBody::addTotals(const std::vector<MoneyText>& amounts, const QString& name)
{
    m_rows->addSpacing(Space::sectionGap);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(Space::step2);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, codeColumn);
    grid->setColumnMinimumWidth(2, digitsColumn);
    if (!name.isEmpty()) {
        auto* head = label(name, TypeStep::body, Token::text, this);
        head->setBold(true);
        grid->addWidget(head, 0, 0);
    }
    std::vector<TextLabel*> figures;
    for (const auto& amount : amounts) {
        figures.push_back(addAmountRow(grid, static_cast<int>(figures.size()), amount, this));
        figures.back()->setBold(true);
    }
    m_rows->addLayout(grid);
    return figures;
}

void LedgerDetailBody::presentFigure(TextLabel& label, const MoneyText& amount)
{
    label.setText(amount.figure());
    label.setTone(amount.sign == MoneyText::Sign::minus ? Token::danger : Token::text);
}

void LedgerDetailBody::addPart(QWidget* part)
{
    part->setParent(this);
    m_rows->addWidget(part);
}

void LedgerDetailBody::addGap(int height)
{
    m_rows->addSpacing(height);
}

void LedgerDetailBody::addLine()
{
    m_rows->addWidget(new Line(Qt::Horizontal, this));
}

void LedgerDetailBody::finish()
{
    m_rows->addStretch(1);
}
