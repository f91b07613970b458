#include "LedgerUI/Components/Page/PageTabs.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/Chip.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int tabGap = 20; // as in the style sheet

}

PageTabs::PageTabs(const QString& row, QWidget* parent) : QFrame{parent}
{
    m_row = new QTabBar(this);
    m_row->setObjectName(row);
    m_row->setDrawBase(false);
    m_row->setExpanding(false);
    m_row->setElideMode(Qt::ElideNone);
    m_row->setUsesScrollButtons(true);
    m_row->setFocusPolicy(Qt::TabFocus);
    m_stack = new QStackedWidget(this);
    auto* strip = new QHBoxLayout;
    strip->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    strip->addWidget(m_row, 1); // with room to spare: the chosen tab is wider than it was
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(strip);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(m_stack, 1);
    connect(m_row, &QTabBar::currentChanged, this, &PageTabs::follow);
    for (const auto& [command, by] : {std::pair{Command::nextTab, 1}, std::pair{Command::previousTab, -1}}) {
        for (const auto& keys : KeyBindings::keys(command))
            connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, steps = by] { step(steps); });
    }
}

void PageTabs::setContents(const QString& id, QWidget* contents)
{
    m_contents[id] = contents;
    m_stack->addWidget(contents);
    follow();
}

QWidget* PageTabs::place() const
{
    return m_stack;
}

void PageTabs::present(const std::vector<Tab>& tabs)
{
    {
        const QSignalBlocker quiet{m_row};
        const auto kept = chosen();
        while (m_row->count() > static_cast<int>(tabs.size()))
            m_row->removeTab(m_row->count() - 1);
        for (int at = 0; at < static_cast<int>(tabs.size()); ++at) {
            const auto& tab = tabs[static_cast<std::size_t>(at)];
            if (at == m_row->count())
                m_row->addTab(tab.text);
            m_row->setTabText(at, tab.text);
            m_row->setTabData(at, tab.id);
            presentCount(at, tab.count);
        }
        choose(kept);
    }
    follow();
}

void PageTabs::presentCount(int at, int count)
{
    auto* shown = m_row->tabButton(at, QTabBar::RightSide);
    if (count == 0) {
        m_row->setTabButton(at, QTabBar::RightSide, nullptr);
        delete shown;
        return;
    }
    if (!shown) {
        // The gap to the next tab belongs to the tab: what stands at its end leaves it free.
        shown = new QWidget(m_row);
        auto* row = new QHBoxLayout(shown);
        row->setContentsMargins(0, 0, tabGap, 0);
        row->addWidget(new Chip(Chip::Kind::neutral, shown));
        m_row->setTabButton(at, QTabBar::RightSide, shown);
    }
    shown->findChild<Chip*>()->setText(QString::number(count));
    shown->adjustSize();
}

void PageTabs::setName(const QString& name)
{
    m_row->setAccessibleName(name);
}

void PageTabs::choose(const QString& id)
{
    for (int at = 0; at < m_row->count(); ++at) {
        if (m_row->tabData(at).toString() == id)
            m_row->setCurrentIndex(at);
    }
}

QString PageTabs::chosen() const
{
    return m_row->tabData(m_row->currentIndex()).toString();
}

void PageTabs::step(int by)
{
    const int count = m_row->count();
    if (count > 0)
        m_row->setCurrentIndex((m_row->currentIndex() + by + count) % count);
}

void PageTabs::follow()
{
    const auto id = chosen();
    if (const auto found = m_contents.find(id); found != m_contents.end())
        m_stack->setCurrentWidget(found->second);
    if (id == m_announced)
        return;
    m_announced = id;
    Q_EMIT chosenChanged(id);
}
