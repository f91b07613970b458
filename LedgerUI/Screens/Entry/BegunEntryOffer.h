#pragma once

#include <string_view>

#include <QWidget>

#include "LedgerCore/Domain/Entries/Drafts/EntryDraft.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

class Banner;
class EntryDrafts;
class QPushButton;

/// Above the form: an entry that was begun before and not recorded, to be gone on with or discarded.
class BegunEntryOffer final : public QWidget {
    Q_OBJECT
public:
    BegunEntryOffer(EntryDrafts& drafts, QWidget* parent);

    /// Without `snapshot`, or where nothing is left, it is not seen.
    void present(const LedgerSnapshot* snapshot, std::string_view locale);

Q_SIGNALS:
    void continued(const EntryDraft& begun);
    /// A person discarded the last one.
    void gone();

private:
    void askToDiscard();

    EntryDrafts& m_drafts;
    Banner* m_text = nullptr;
    QPushButton* m_continue = nullptr;
    QPushButton* m_discard = nullptr;
};
