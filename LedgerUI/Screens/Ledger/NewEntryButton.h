#pragma once

#include <string>
#include <vector>

#include "LedgerUI/Components/Buttons/SplitButton.h"

class LedgerStore;
class QAction;
class QMenu;

/// Records an entry: the main part the first kind that the member may record, the arrow any of them. Gone for members
/// who may not record at all.
class NewEntryButton final : public SplitButton {
    Q_OBJECT
public:
    NewEntryButton(LedgerStore& store, QWidget* parent);

    /// Adjusts to the member, the language and whether something runs.
    void present();
    /// As a press of the main part.
    void begin() { want({}); }

Q_SIGNALS:
    void kindWanted(const std::string& kind);

private:
    void want(const std::string& kind);

    LedgerStore& m_store;
    QAction* m_main = nullptr;
    QMenu* m_menu = nullptr;
    std::vector<QAction*> m_kinds;
};
