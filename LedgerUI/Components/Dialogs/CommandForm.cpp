#include "LedgerUI/Components/Dialogs/CommandForm.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QStringList>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/WindowBehind.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

QString lines(QStringList texts)
{
    texts.removeAll(QString{});
    return texts.join(QLatin1Char{'\n'});
}

}

CommandForm::CommandForm(LedgerStore& store, QWidget* parent)
    : FormDialog{parent}, m_store{store}, m_snapshot{store.snapshot()}, m_whose{store.signedIn()},
      m_locale{InterfaceLanguage::tag()}
{
    setAttribute(Qt::WA_DeleteOnClose);
    connect(&m_store, &LedgerStore::snapshotChanged, this, &CommandForm::followSession);
}

std::size_t CommandForm::countWaiting(QWidget& part)
{
    const auto forms = windowBehind(&part)->findChildren<CommandForm*>();
    return static_cast<std::size_t>(std::ranges::count_if(forms, [](const CommandForm* each) { //
        return each->m_isAside && each->wouldLose();
    }));
}

bool CommandForm::waitsFor(const MemberIdentity& member, QWidget& part)
{
    return std::ranges::any_of(windowBehind(&part)->findChildren<CommandForm*>(), [&](const CommandForm* each) { //
        return each->m_isAside && each->wouldLose() && each->m_whose == member;
    });
}

void CommandForm::followSession()
{
    if (m_store.snapshot() && !m_isAside && isElsewhere())
        present();
    else if (m_store.snapshot() && !m_isAside)
        adoptSnapshot();
    else if (m_store.snapshot())
        QMetaObject::invokeMethod(this, &CommandForm::comeBack, Qt::QueuedConnection);
    else if (m_isAside)
        return;
    else if (waitsForMember() && wouldLose())
        goAside();
    else
        leave(); // nobody is there to be asked
}

void CommandForm::goAside()
{
    m_isAside = true;
    // What it was opened from closes with the session, and would take it along.
    setParent(windowBehind(parentWidget()), windowFlags());
    hide();
    Q_EMIT wentAside();
}

void CommandForm::comeBack()
{
    if (!m_isAside || m_store.signedIn() != m_whose)
        return;
    if (auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        connect(modal, &QDialog::finished, this, &CommandForm::comeBack,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
        return;
    }
    m_isAside = false;
    adoptSnapshot();
    open();
}

void CommandForm::takeSnapshot()
{
    if (const auto now = m_store.snapshot())
        m_snapshot = now;
}

void CommandForm::sayHere()
{
    if (!m_isAside)
        m_store.dismissMessages();
}

bool CommandForm::isElsewhere() const
{
    const auto now = m_store.snapshot();
    return now && m_snapshot && now->company.id != m_snapshot->company.id;
}

/// A form whose own command opens the other company is about to close.
CommandForm::Standing CommandForm::seenFromHere(Standing standing) const
{
    const bool isOver = standing.stage == SubmissionStage::saving || standing.stage == SubmissionStage::done;
    if (isOver || !isElsewhere())
        return standing;
    standing.whyNot = word(commandWords(), "otherCompany", {m_snapshot->company.name});
    standing.note = {Banner::Kind::warn, standing.whyNot};
    return standing;
}

void CommandForm::presentStanding(Standing standing)
{
    standing = seenFromHere(std::move(standing));
    if (!standing.uncertainWords)
        standing.uncertainWords = &commandWords();
    const bool isUncertain = standing.stage == SubmissionStage::uncertain;
    const bool resends = isUncertain || standing.resends;
    setConfirmText(resends ? word(EntryWords::words(), "retryOriginal") : standing.confirm);
    const auto glyph = resends ? QStringLiteral("arrow-repeat") : standing.glyph;
    confirmButton().setIcon(glyph.isEmpty() ? QIcon{} : Icon::of(glyph, Token::onAccent));
    setBusy(standing.stage == SubmissionStage::saving, Leaving::blocked);
    setLocked(resends || standing.stage == SubmissionStage::done || isElsewhere());
    const bool isOffered = standing.whyNot.isEmpty();
    confirmButton().setToolTip(isOffered ? KeyBindings::shown(Command::confirmForm) : standing.whyNot);
    if (!isOffered)
        confirmButton().setEnabled(false);
    presentBanner(standing);
    presentLeaving(standing);
    const bool isGone = isElsewhere();
    if (!isVisible())
        return;
    // The field that had the focus is locked now, or can be used again.
    if (std::exchange(m_wasElsewhere, isGone) != isGone)
        (isGone ? static_cast<QWidget&>(cancelButton()) : firstField()).setFocus(Qt::OtherFocusReason);
    // What was shown just now knows its height once it is polished.
    QMetaObject::invokeMethod(this, [this] { fitWindow(Fit::following); }, Qt::QueuedConnection);
}

void CommandForm::presentBanner(const Standing& standing)
{
    if (standing.stage == SubmissionStage::uncertain)
        banner().present(
            Banner::Kind::warn,
            lines({FailureText::unconfirmed(word(*standing.uncertainWords, "uncertain"), standing.refusal, m_locale),
                   standing.note.text}));
    else if (!standing.whyNot.isEmpty())
        banner().present(Banner::Kind::error, standing.whyNot);
    else if (standing.refusal && !endsSession(*standing.refusal)) // that was said where the member signed in again
        banner().present(Banner::Kind::error,
                         lines({qString(m_store.friendly(*standing.refusal, m_locale)), standing.note.text}));
    else
        banner().present(standing.note.kind, standing.note.text);
}

void CommandForm::presentLeaving(const Standing& standing)
{
    if (standing.stage == SubmissionStage::uncertain) {
        cancelButton().setText(word(commandWords(), "closeUncertain"));
        setLeaveQuestion(word(commandWords(), "uncertainTitle"), word(*standing.uncertainWords, "uncertainDiscard"),
                         word(commandWords(), "closeAnyway"), word(commandWords(), "keepOpen"));
    } else {
        const bool isLeft = standing.stage == SubmissionStage::done || standing.resends;
        cancelButton().setText(word(dialogWords(), isLeft ? "close" : "cancel"));
        const auto text = [&](std::string_view key) {
            return standing.draftWords ? word(*standing.draftWords, key) : QString{};
        };
        setLeaveQuestion(text("discardTitle"), text("discardMessage"), text("discard"), text("keepEditing"));
    }
    setHasChanges([asks = standing.hasChanges || standing.stage == SubmissionStage::uncertain] { return asks; });
}

void CommandForm::presentAnew()
{
    present();
    firstField().setFocus(Qt::OtherFocusReason);
}

void CommandForm::adoptLanguage(const std::string& /*before*/)
{
    present();
}

void CommandForm::changeEvent(QEvent* event)
{
    FormDialog::changeEvent(event);
    if (event->type() != QEvent::LanguageChange || !m_snapshot)
        return;
    // A change comes by more than once, and the dialog has each time put its own words on the buttons.
    if (m_locale == InterfaceLanguage::tag())
        return present();
    const auto before = std::exchange(m_locale, InterfaceLanguage::tag());
    adoptLanguage(before);
}

void CommandForm::showEvent(QShowEvent* event)
{
    FormDialog::showEvent(event);
    firstField().setFocus(Qt::OtherFocusReason);
}
