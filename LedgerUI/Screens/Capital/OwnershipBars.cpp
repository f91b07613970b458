#include "LedgerUI/Screens/Capital/OwnershipBars.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/Chip.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Screens/Records/RecordInks.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int barHeight = 10;
constexpr int wholeBps = 10000;

/// The shares side by side, a pixel apart.
class ShareBar final : public QWidget {
public:
    ShareBar(const OwnershipBar& bar, QWidget* parent) : QWidget{parent}, m_bar{bar}
    {
        setFixedHeight(barHeight);
        connect(&Theme::current(), &Theme::changed, this, [this] { update(); });
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter{this};
        int sum = 0;
        for (const auto& share : m_bar.shares) {
            const int left = width() * sum / wholeBps;
            sum += share.basisPoints;
            const int right = width() * sum / wholeBps;
            painter.fillRect(QRect{left, 0, right - left - (sum < wholeBps ? 1 : 0), height()},
                             Theme::current().color(RecordInks::ofPerson(share.swatch)));
        }
    }

private:
    OwnershipBar m_bar;
};

TextLabel* label(const QString& text, TypeStep step, Token tone, QWidget* parent)
{
    auto* made = new TextLabel(step, tone, parent);
    made->setTextFormat(Qt::PlainText);
    made->setText(text);
    return made;
}

/// A square of the owner's colour, the name and the share.
QWidget* shareLabel(const OwnershipBar::Share& share, QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step1);
    row->addWidget(
        new GlyphLabel(QStringLiteral("square-fill"), RecordInks::ofPerson(share.swatch), Space::chevron - 2, box));
    auto* name = new ElidedLabel(TypeStep::small, Token::text2, Qt::ElideRight, box);
    name->setTextFormat(Qt::PlainText);
    name->setText(share.name);
    row->addWidget(name);
    row->addWidget(label(share.percent, TypeStep::small, Token::text, box));
    return box;
}

}

OwnershipBars::OwnershipBars(QWidget* parent) : QWidget{parent}
{
    m_rows = new QVBoxLayout(this);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
}

void OwnershipBars::present(const std::vector<OwnershipBar>& bars, const QString& none)
{
    if (bars == m_bars && none == m_none)
        return;
    m_bars = bars;
    m_none = none;
    for (auto* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        delete child;
    delete layout();
    m_rows = new QVBoxLayout(this);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
    for (const auto& bar : m_bars)
        addBar(bar);
    if (m_bars.empty()) {
        auto* text = label(none, TypeStep::body, Token::text2, this);
        text->setWordWrap(true);
        text->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, 0);
        m_rows->addWidget(text);
    }
    m_rows->addStretch(1);
}

void OwnershipBars::addBar(const OwnershipBar& bar)
{
    auto* box = new QWidget(this);
    box->setAccessibleName(bar.spoken);
    auto* rows = new QVBoxLayout(box);
    rows->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);
    rows->setSpacing(Space::step2);
    auto* head = new QHBoxLayout;
    head->setSpacing(Space::step2);
    auto* day = label(bar.day, TypeStep::body, Token::text, box);
    day->setBold(bar.isInForce);
    head->addWidget(day);
    if (!bar.state.isEmpty()) {
        auto* chip = new Chip(bar.isInForce ? Chip::Kind::accent : Chip::Kind::neutral, box);
        chip->setText(bar.state);
        head->addWidget(chip);
    }
    head->addStretch(1);
    rows->addLayout(head);
    rows->addWidget(new ShareBar(bar, box));
    auto* shares = new QWidget(box);
    auto* wrap = new WrapLayout(shares, Space::step3);
    wrap->setContentsMargins(0, 0, 0, 0);
    for (const auto& share : bar.shares)
        wrap->addWidget(shareLabel(share, shares));
    rows->addWidget(shares);
    m_rows->addWidget(box);
    m_rows->addWidget(new Line(Qt::Horizontal, this));
}
