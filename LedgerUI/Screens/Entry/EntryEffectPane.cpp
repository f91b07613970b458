#include "LedgerUI/Screens/Entry/EntryEffectPane.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/BalanceTone.h"
#include "LedgerUI/Theme/Space.h"

namespace {

QFrame* card(QWidget* parent, QVBoxLayout*& layout)
{
    auto* frame = new QFrame(parent);
    frame->setProperty("card", QStringLiteral("true"));
    layout = new QVBoxLayout(frame);
    layout->setContentsMargins(Space::step3, Space::step2, Space::step3, Space::step2);
    layout->setSpacing(Space::step1);
    return frame;
}

void addLine(QVBoxLayout& layout, const QString& label, const QString& value, bool isTotal = false,
             EntryBalanceMark mark = EntryBalanceMark::none)
{
    const auto step = isTotal ? TypeStep::body : TypeStep::small;
    const auto tone = balanceTone(mark, isTotal ? Token::text : Token::text2);
    auto* name = new TextLabel(step, tone);
    auto* figure = new TextLabel(step, tone);
    name->setText(label);
    figure->setText(value);
    figure->setBold(isTotal);
    auto* row = new QHBoxLayout;
    row->addWidget(name);
    row->addStretch(1);
    row->addWidget(figure);
    layout.addLayout(row);
}

}

EntryEffectPane::EntryEffectPane(QWidget* parent) : QWidget{parent}
{
    m_title = new TextLabel(TypeStep::small, Token::text2, this);
    m_row = new QHBoxLayout;
    m_row->setSpacing(Space::step2);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Space::labelToField);
    layout->addWidget(m_title);
    layout->addLayout(m_row);
    layout->addWidget(m_hint);
}

void EntryEffectPane::present(const EntryFormContent& content)
{
    const bool showsRate = !content.rates.empty();
    setVisible(showsRate || !content.effects.empty());
    m_title->setText(showsRate ? word(entryFormWords(), "rateTitle") : word(EntryWords::words(), "afterSavingShort"));
    m_hint->setText(showsRate ? word(EntryWords::words(), "enteredRateHint") : content.purpose);
    m_hint->setVisible(!m_hint->text().isEmpty());
    std::vector<QWidget*> cards;
    cards.reserve(content.effects.size());
    for (const auto& effect : content.effects)
        cards.push_back(effectCard(effect));
    if (showsRate) {
        cards.push_back(rateCard(content.sent.currency, content.rates.front()));
        cards.push_back(rateCard(content.received.currency, content.rates.back()));
    }
    replaceCards(cards);
}

QWidget* EntryEffectPane::effectCard(const EntryEffect& effect)
{
    QVBoxLayout* layout = nullptr;
    auto* frame = card(this, layout);
    auto* name = new ElidedLabel(TypeStep::body, Token::text, Qt::ElideRight, frame);
    name->setText(effect.account);
    layout->addWidget(name);
    if (!effect.isSeen) {
        auto* unseen = new TextLabel(TypeStep::small, Token::text2, frame);
        unseen->setWordWrap(true);
        unseen->setText(word(entryFormWords(), "effect.unseen"));
        layout->addWidget(unseen);
        layout->addStretch(1);
        return frame;
    }
    const auto orNone = [](const QString& text) { return text.isEmpty() ? QStringLiteral("–") : text; };
    addLine(*layout, word(entryFormWords(), "effect.before"), effect.before);
    addLine(*layout, effect.changeLabel, orNone(effect.change));
    layout->addWidget(new Line(Qt::Horizontal, frame));
    addLine(*layout, word(entryFormWords(), "effect.after"), orNone(effect.after), true, effect.afterMark);
    if (!effect.warning.isEmpty()) {
        auto* warning = new TextLabel(TypeStep::small, balanceTone(effect.afterMark), frame);
        warning->setWordWrap(true);
        warning->setText(effect.warning);
        layout->addWidget(warning);
    }
    layout->addStretch(1); // the card beside it may be higher
    return frame;
}

QWidget* EntryEffectPane::rateCard(const std::string& currency, const QString& rate)
{
    QVBoxLayout* layout = nullptr;
    auto* frame = card(this, layout);
    addLine(*layout, currency.empty() ? QString{} : QStringLiteral("1 ") + qString(currency), rate);
    return frame;
}

void EntryEffectPane::replaceCards(const std::vector<QWidget*>& cards)
{
    while (auto* item = m_row->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (auto* each : cards)
        m_row->addWidget(each, 1);
}
