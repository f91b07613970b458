#include "LedgerUI/Screens/Entry/BegunEntryOffer.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Entry/BegunEntry.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

BegunEntryOffer::BegunEntryOffer(EntryDrafts& drafts, QWidget* parent) : QWidget{parent}, m_drafts{drafts}
{
    m_text = new Banner(Banner::Kind::info, this);
    m_text->setObjectName(QStringLiteral("entryBegun"));
    const auto button = [this](const char* name) {
        auto* made = new QPushButton(m_text);
        made->setObjectName(QString::fromLatin1(name));
        made->setProperty("extent", QStringLiteral("small"));
        made->setAutoDefault(false);
        m_text->addAction(made);
        return made;
    };
    m_continue = button("entryBegunContinue");
    m_discard = button("entryBegunDiscard");
    auto* margins = new QVBoxLayout(this);
    margins->setContentsMargins(Space::dialogMargin, Space::step3, Space::dialogMargin, Space::step3);
    margins->addWidget(m_text);
    hide();
    connect(m_continue, &QPushButton::clicked, this, [this] {
        if (const auto begun = m_drafts.left())
            Q_EMIT continued(*begun);
    });
    connect(m_discard, &QPushButton::clicked, this, &BegunEntryOffer::askToDiscard);
}

void BegunEntryOffer::present(const LedgerSnapshot* snapshot, std::string_view locale)
{
    const auto begun = m_drafts.left();
    m_continue->setText(word(entryFormWords(), "begun.continue"));
    m_discard->setText(word(entryFormWords(), "begun.discard"));
    if (begun && snapshot)
        m_text->present(Banner::Kind::info, BegunEntry::offer(*begun, *snapshot, locale));
    setVisible(begun && snapshot);
}

void BegunEntryOffer::askToDiscard()
{
    const auto begun = m_drafts.left();
    if (!begun)
        return;
    const auto text = [](std::string_view key) { return word(EntryWords::words(), key); };
    MessageDialog::ask({.title = text("discardTitle"),
                        .text = text("discardMessage"),
                        .confirm = text("discard"),
                        .cancel = text("keepEditing")},
                       window(), [this, key = begun->entry.idempotencyKey] {
                           m_drafts.discard(key);
                           if (isHidden())
                               Q_EMIT gone();
                       });
}
