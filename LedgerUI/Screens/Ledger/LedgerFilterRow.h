#pragma once

#include <array>

#include <QFrame>
#include <QTimer>

#include "LedgerUI/Presentation/Ledger/LedgerFilter.h"

class IconButton;
class LedgerBrowser;
class LedgerFilterMenu;
class QMenu;
class QToolButton;
class SearchField;

/// What narrows the ledger: the search field and a menu for each part; in a narrow window one menu of all of them,
/// with the set parts as chips below.
class LedgerFilterRow final : public QFrame {
    Q_OBJECT
public:
    explicit LedgerFilterRow(QWidget* parent = nullptr);

    void present(const LedgerBrowser& browser);
    void retranslate();
    void setFolded(bool isFolded);
    void setDetailShown(bool isShown);

    void focusSearch();
    /// Clears the search text; false when there was none.
    bool clearSearch();
    /// Opens the menu of the filter button that has the focus; false when none has it.
    bool openFocusedMenu();

Q_SIGNALS:
    void filterWanted(const LedgerFilter& filter);
    void detailToggled();
    void leftDownwards();
    /// Esc in a search that is empty.
    void leftByEscape();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildSearch();
    void buildMenus();
    void presentButtons();
    void presentChips();
    void fillMenus();
    void applyText();

    const LedgerBrowser* m_browser = nullptr;
    LedgerFilter m_filter;
    bool m_isFolded = false;
    QTimer m_typing;
    SearchField* m_search = nullptr;
    std::array<QToolButton*, 5> m_buttons{};
    std::array<LedgerFilterMenu*, 5> m_menus{};
    QToolButton* m_all = nullptr;
    QMenu* m_allMenu = nullptr;
    IconButton* m_detail = nullptr;
    QWidget* m_chips = nullptr;
};
