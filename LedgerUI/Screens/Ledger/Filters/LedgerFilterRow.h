#pragma once

#include <array>

#include <QFrame>
#include <QPointer>
#include <QTimer>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"
#include "LedgerUI/Screens/Ledger/Filters/LedgerFilterPopover.h"

class IconButton;
class LedgerBrowser;
class QToolButton;
class SearchField;

/// What narrows the ledger: the search field and a button for each part; in a narrow window one button for all of them,
/// with the set parts as chips below. Whatever narrows, one button clears it all.
class LedgerFilterRow final : public QFrame {
    Q_OBJECT
public:
    explicit LedgerFilterRow(QWidget* parent = nullptr);

    void present(const LedgerBrowser& browser);
    void retranslate();
    /// In a narrow window the menus fold into one; so they do where they would not fit.
    void setNarrow(bool isNarrow);
    void setDetailShown(bool isShown);

    void focusSearch();
    /// Opens the list of the filter button that has the focus; false when none has it.
    bool openFocused();

Q_SIGNALS:
    void filterWanted(const LedgerFilter& filter);
    void clearWanted();
    void detailToggled();
    void byDayToggled();
    void leftDownwards();
    /// Esc in a search that is empty.
    void leftByEscape();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    using Part = LedgerFilter::Part;

    void buildSearch();
    void buildButtons();
    void adapt();
    void arrange();
    [[nodiscard]] int unfoldedWidth() const;
    [[nodiscard]] QString allText(bool isFolded) const;
    void presentButtons();
    void presentChips();
    void open(QToolButton* button);
    void applyText();

    const LedgerBrowser* m_browser = nullptr;
    LedgerFilter m_filter;
    bool m_isNarrow = false;
    bool m_isFolded = false;
    QTimer m_typing;
    SearchField* m_search = nullptr;
    std::array<QToolButton*, LedgerFilter::chosenParts.size()> m_buttons{};
    QToolButton* m_all = nullptr;
    QToolButton* m_clear = nullptr;
    IconButton* m_byDay = nullptr;
    IconButton* m_detail = nullptr;
    QWidget* m_chips = nullptr;
    QPointer<LedgerFilterPopover> m_popover;
    const QToolButton* m_openedBy = nullptr;
};
