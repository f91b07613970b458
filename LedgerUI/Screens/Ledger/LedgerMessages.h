#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"

class Banner;
class QPushButton;
class TextLabel;

/// What the ledger page has to say above its entries: that another month than this one is shown, that recurring entries
/// are due, and that an entry just recorded is not among them.
class LedgerMessages final : public QWidget {
    Q_OBJECT
public:
    explicit LedgerMessages(QWidget* parent = nullptr);

    void present(const LedgerBrowser& browser);
    /// Says so until the entry is shown or the message closed, and offers to show it.
    void announce(const LedgerBrowser& browser, const std::string& entryID);
    void withdraw();
    /// How many recurring entries wait for a person; nothing is said of none.
    void presentDue(std::size_t count);
    /// Takes the focus to the offer.
    void enter();

Q_SIGNALS:
    void entryWanted(const QString& entryID);
    void dueWanted();
    /// The message went while it had the focus.
    void left();

private:
    void buildDue();
    void buildBox();
    void presentAnnounced(const LedgerBrowser& browser);

    std::string m_announced; // an entry
    TextLabel* m_hint = nullptr;
    QWidget* m_dueRow = nullptr;
    TextLabel* m_due = nullptr;
    QPushButton* m_dueShow = nullptr;
    QWidget* m_box = nullptr;
    Banner* m_banner = nullptr;
    QPushButton* m_show = nullptr;
    class IconButton* m_close = nullptr;
};
