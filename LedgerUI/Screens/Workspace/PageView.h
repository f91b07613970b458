#pragma once

#include <utility>
#include <vector>

#include <QList>
#include <QWidget>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"

/// One page of the workspace. It observes the store by itself; the workspace asks it what to say in the status bar and
/// where F6 may go. It may be made before it is shown: what opens over a page waits until the page is seen.
class PageView : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Where the focus goes, pane by pane, in reading order. The first one takes it when the page opens.
    [[nodiscard]] virtual QList<QWidget*> panes() const = 0;

    /// The right end of the status bar: a quiet text, then a figure in bold.
    struct StatusContext {
        QString text;
        QString figure;
    };
    [[nodiscard]] virtual StatusContext statusContext() const { return {}; }

    /// Does what a link to this page asks for. The page is shown by then.
    virtual void follow(const PageLink& /*link*/) {}

    /// Another day has begun. What falls due on it and what is called "this month" may be other things now, of the same
    /// books.
    virtual void followDay() {}

    /// Takes over the open invitations, which were read anew as the person came back.
    virtual void adoptInvitations(const std::vector<PendingInvitation>& /*invitations*/) {}

    /// How much a person changed here that is not saved, and giving it up.
    [[nodiscard]] virtual std::size_t unsavedChanges() const { return 0; }
    virtual void discardChanges() {}

    [[nodiscard]] bool hasBeenSeen() const { return m_hasBeenSeen; }

Q_SIGNALS:
    /// The page is shown for the first time.
    void firstSeen();
    /// A link to another page was pressed.
    void linkPressed(const PageLink& link);
    /// The list of the requests that were not confirmed was asked for.
    void unconfirmedWanted();
    void statusContextChanged();
    /// Something that a person asked for is done: said in the status bar and to readers, until the next of its kind.
    void done(const QString& sentence);

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        if (!std::exchange(m_hasBeenSeen, true))
            Q_EMIT firstSeen();
    }

private:
    bool m_hasBeenSeen = false;
};
