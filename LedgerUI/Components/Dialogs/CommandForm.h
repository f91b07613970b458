#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "LedgerCore/Client/Session/KeptCommands.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Presentation/Forms/Submission.h"

class LedgerStore;
class WordTable;

/// A form that sends one command of the ledger. It shows how the sending stands (the banner, the busy and the locked
/// form, what leaving would lose) and follows the language and the snapshot. Where the session ends under it, it closes
/// if nothing is lost with it; else it waits unseen and comes back as it was once the same member has signed in again
/// to the same company. A form of its kind fills the body, describes its `Standing`, and sends.
class CommandForm : public FormDialog {
    Q_OBJECT
public:
    /// How many forms with changes wait for their member over the window of `part`.
    static std::size_t countWaiting(QWidget& part);
    /// Whether one of them waits for this member.
    static bool waitsFor(const MemberIdentity& member, QWidget& part);

Q_SIGNALS:
    /// It is seen no more until its member is back.
    void wentAside();

protected:
    CommandForm(LedgerStore& store, QWidget* parent);

    /// A line of the banner beside what the sending itself has to say.
    struct Note {
        Banner::Kind kind = Banner::Kind::info;
        QString text;
    };
    /// How the form stands, as its frame shows it.
    struct Standing {
        SubmissionStage stage = SubmissionStage::editing;
        std::optional<Failure> refusal{};
        Note note{};
        QString confirm;                       // the text of the main button while editing
        QString glyph{};                       // before it
        bool resends = false;                  // the main button sends an earlier command again
        const WordTable* draftWords = nullptr; // of the question before a draft is discarded; null for the usual ones
        const WordTable* uncertainWords = nullptr; // of an outcome that is not known; null for the usual ones
        bool hasChanges = false;
        QString whyNot{}; // what keeps the command from being sent at all; empty when it can be
    };
    void presentStanding(Standing standing);

    /// A person wants what stands in the form to be sent: the command that is on its way by this, as the submission
    /// says, and none while the form is elsewhere.
    template <class Typed, class Sent, class Check>
    [[nodiscard]] const Sent* commandToSend(Submission<Typed, Sent>& submission, const Check& check) const
    {
        return isElsewhere() ? nullptr : submission.submit(check);
    }
    /// Shows everything as it is now, and takes the person to where they go on.
    void presentAnew();

    /// Shows everything as it is now.
    virtual void present() = 0;
    /// A new snapshot of the form's company is there.
    virtual void adoptSnapshot() { present(); }
    /// Another language than `before` is in force; texts that a person typed may want rewriting.
    virtual void adoptLanguage(const std::string& before);
    /// Whether what stands in the form has to wait for its member; else something else keeps it.
    [[nodiscard]] virtual bool waitsForMember() const { return true; }
    /// Where a person begins.
    [[nodiscard]] virtual QWidget& firstField() const = 0;

    [[nodiscard]] LedgerStore& store() const { return m_store; }
    [[nodiscard]] const std::string& locale() const { return m_locale; }
    /// Who opened it.
    [[nodiscard]] const std::optional<MemberIdentity>& whose() const { return m_whose; }
    /// The snapshot that the form was last offered.
    [[nodiscard]] const SnapshotPointer& snapshot() const { return m_snapshot; }
    /// Adopts the snapshot of now; the last one stays after the end of the session.
    void takeSnapshot();
    /// The form says what failed: an alert over it would say it twice. Of a form that is not seen the alert stays.
    void sayHere();
    /// Another company has been opened beside the form. It keeps what was typed for its own, locked meanwhile: nothing
    /// of one company is sent to another.
    [[nodiscard]] bool isElsewhere() const;

    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void followSession();
    void goAside();
    void comeBack();
    [[nodiscard]] Standing seenFromHere(Standing standing) const;
    void presentBanner(const Standing& standing);
    void presentLeaving(const Standing& standing);

    LedgerStore& m_store;
    SnapshotPointer m_snapshot;
    std::optional<MemberIdentity> m_whose;
    std::string m_locale;
    bool m_isAside = false;
    bool m_wasElsewhere = false; // when it was presented last
};
