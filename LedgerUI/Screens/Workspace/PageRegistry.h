#pragma once

#include <functional>
#include <map>

#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

class LedgerStore;
class PageView;
class QWidget;

/// Which pages are built, and how to make each. A page without a maker is not shown.
class PageRegistry {
public:
    using Maker = std::function<PageView*(LedgerStore& store, QWidget* parent)>;

    /// `View` takes (LedgerStore&, QWidget* parent).
    template <class View>
    void add(WorkspacePage page)
    {
        m_makers[page] = [](LedgerStore& store, QWidget* parent) -> PageView* { return new View(store, parent); };
    }

    [[nodiscard]] bool contains(WorkspacePage page) const { return m_makers.contains(page); }
    [[nodiscard]] PageView* make(WorkspacePage page, LedgerStore& store, QWidget* parent) const
    {
        return m_makers.at(page)(store, parent);
    }

private:
    std::map<WorkspacePage, Maker> m_makers;
};
