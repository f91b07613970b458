#include "LedgerUI/Components/Page/WrapLayout.h"

#include <algorithm>

WrapLayout::WrapLayout(QWidget* parent, int gap) : QLayout{parent}, m_gap{gap} {}

WrapLayout::~WrapLayout()
{
    for (auto* item : m_items)
        delete item;
}

void WrapLayout::addItem(QLayoutItem* item)
{
    m_items.push_back(item);
}

int WrapLayout::count() const
{
    return static_cast<int>(m_items.size());
}

QLayoutItem* WrapLayout::itemAt(int at) const
{
    return at >= 0 && at < count() ? m_items[static_cast<std::size_t>(at)] : nullptr;
}

QLayoutItem* WrapLayout::takeAt(int at)
{
    auto* item = itemAt(at);
    if (item)
        m_items.erase(m_items.begin() + at);
    return item;
}

int WrapLayout::heightForWidth(int width) const
{
    return run({0, 0, width, 0}, Pass::measure);
}

QSize WrapLayout::minimumSize() const
{
    QSize widest;
    for (const auto* item : m_items) {
        if (!item->isEmpty())
            widest = widest.expandedTo(item->minimumSize());
    }
    const auto margins = contentsMargins();
    return widest + QSize{margins.left() + margins.right(), margins.top() + margins.bottom()};
}

void WrapLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    static_cast<void>(run(rect, Pass::place)); // the height was asked for before
}

int WrapLayout::run(const QRect& rect, Pass pass) const
{
    const auto inner = rect.marginsRemoved(contentsMargins());
    int left = inner.left();
    int top = inner.top();
    int rowHeight = 0;
    for (auto* item : m_items) {
        if (item->isEmpty())
            continue;
        const auto size = item->sizeHint().boundedTo({std::max(inner.width(), 1), item->sizeHint().height()});
        if (left > inner.left() && left + size.width() > inner.right() + 1) {
            left = inner.left();
            top += rowHeight + m_gap;
            rowHeight = 0;
        }
        if (pass == Pass::place)
            item->setGeometry({{left, top}, size});
        left += size.width() + m_gap;
        rowHeight = std::max(rowHeight, size.height());
    }
    return top + rowHeight - rect.top() + contentsMargins().bottom();
}
