#pragma once

#include <functional>
#include <utility>

#include <QCoro/QCoroTask>
#include <QPushButton>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"
#include "LedgerUI/Presentation/Receipts/ReceiptWords.h"
#include "LedgerUI/Screens/Records/RecordFormBody.h"
#include "LedgerUI/Screens/Records/RecordReceipts.h"

/// What is to be known of a command that was accepted.
struct RecordOutcome {
    std::string currency = {};              // in which something was recorded
    std::string entryID = {};               // the entry that it booked; empty for none, or where it is not known
    std::size_t uploaded = 0;               // receipts that are on it
    std::vector<ReceiptUpload> failed = {}; // and those that are not
};

/// A form that sends one command of a section of the books. `Section` says what the form is made of and how it is
/// sent. What is sent was made from the records as they are: a form that was opened on older ones shows that they have
/// changed, keeps what was typed and offers to load them. Deletes itself when it closes; open it with `open()`.
template <class Section>
class RecordActionForm : public CommandForm {
public:
    using Form = typename Section::Form;
    using Command = typename Section::Command;

    RecordActionForm(LedgerStore& store, const typename Section::Route& route, QWidget* parent)
        : RecordActionForm{store,
                           Sending{Section::opened(route, *store.snapshot(), store.today(), InterfaceLanguage::tag())},
                           parent}
    {
    }

    /// For a command of an earlier form that was kept: locked, to be sent again, where nobody knows whether it was
    /// carried out; else as it was before it was sent.
    RecordActionForm(LedgerStore& store, const Command& kept, bool outcomeUnknown, QWidget* parent)
        : RecordActionForm{store, restored(store, kept, outcomeUnknown), parent}
    {
        m_keptKey = kept.idempotencyKey;
        if (outcomeUnknown)
            return;
        m_initial = Section::opened(form().route, *store.snapshot(), store.today(), locale());
        present();
    }

private:
    using Sending = Submission<Form, Command>;

    static Sending restored(LedgerStore& store, const Command& kept, bool outcomeUnknown)
    {
        auto form = Section::restored(kept, *store.snapshot(), InterfaceLanguage::tag());
        return outcomeUnknown ? Sending::uncertain(std::move(form), kept) : Sending{std::move(form)};
    }

    RecordActionForm(LedgerStore& store, Sending submission, QWidget* parent)
        : CommandForm{store, parent}, m_initial{submission.form()}, m_submission{std::move(submission)}
    {
        const auto& route = m_initial.route;
        setObjectName(QStringLiteral("recordForm"));
        confirmButton().setObjectName(QStringLiteral("recordConfirm"));
        cancelButton().setObjectName(QStringLiteral("recordCancel"));
        m_body = new RecordFormBody;
        m_foot = new TextLabel(TypeStep::small, Token::text2);
        m_foot->setWordWrap(true);
        m_reload = new QPushButton(&banner());
        m_reload->setObjectName(QStringLiteral("recordReload"));
        banner().addAction(m_reload);
        setFootPart(m_foot);
        const bool takesReceipts = Section::takesReceipts(route);
        setBody(m_body, takesReceipts ? besideReceipts : Section::hasTable(route) ? tableWidth : plainWidth);
        if (takesReceipts)
            bindReceipts();
        connect(m_body, &RecordFormBody::edited, this, [this](const RecordEdit& edit) { take(edit); });
        connect(m_reload, &QPushButton::clicked, this, [this] { reload(); });
        connect(m_body, &RecordFormBody::amountLeft, this, [this] { judge(Section::leftAmount(form(), locale())); });
        connect(m_body, &RecordFormBody::pasteRefused, this, [this](PasteRefusal refusal, const std::string& personID) {
            judge(Section::refusedPaste(form(), refusal, personID));
        });
        connect(this, &FormDialog::confirmed, this, [this] { submit(); });
        connect(this, &FormDialog::givenUp, this, [this] { this->store().forgetSectionCommand(m_keptKey); });
        present();
    }

public:
    /// Called once the command is accepted and the form has closed.
    void whenDone(std::function<void(const RecordOutcome& outcome)> done) { m_done = std::move(done); }

protected:
    [[nodiscard]] RecordFormBody& body() const { return *m_body; }
    [[nodiscard]] const Form& form() const { return m_submission.form(); }
    void adoptForm(Form form)
    {
        m_submission.edit(std::move(form));
        present();
    }

    void present() override
    {
        const auto content = this->content();
        setWindowTitle(content.title);
        m_body->present(content);
        m_foot->setText(content.foot);
        m_reload->setText(content.reload);
        m_reload->setVisible(!content.reload.isEmpty());
        const bool isEditing = m_submission.isEditing();
        if (m_receipts)
            m_receipts->setLocked(!isEditing);
        presentStanding(
            {.stage = m_submission.stage(),
             .refusal = content.conflict.isEmpty() ? m_submission.refusal() : std::optional<Failure>{},
             .note = noteOf(content),
             .confirm = content.confirm,
             .draftWords = m_receipts ? &EntryWords::words() : nullptr, // they speak of the receipts
             .hasChanges = content.hasChanges || (m_receipts && m_receipts->holdsMoreThan(form().receiptIDs)),
             .whyNot = isEditing ? Section::whyNot(form(), *snapshot(), locale()) : QString{}});
        if (!isEditing || content.whyNotConfirm.isEmpty())
            return;
        confirmButton().setEnabled(false);
        confirmButton().setToolTip(content.whyNotConfirm);
    }

    void adoptSnapshot() override
    {
        // While a reply is awaited the snapshot that comes with it may already hold what was sent.
        if (m_submission.isSaving())
            return;
        takeSnapshot();
        noteChanges();
        present();
    }

    void adoptLanguage(const std::string& before) override
    {
        m_submission.adopt(Section::rewritten(form(), before, locale()));
        m_initial = Section::rewritten(m_initial, before, locale());
        present();
    }

    [[nodiscard]] QWidget& firstField() const override
    {
        auto* const first = m_submission.isEditing() ? m_body->firstStop() : nullptr;
        return first ? *first : static_cast<QWidget&>(confirmButton());
    }

private:
    static constexpr int plainWidth = 600;
    static constexpr int tableWidth = 640;
    static constexpr int besideReceipts = 528;

    [[nodiscard]] RecordFormContent content() const
    {
        return Section::content(m_submission, m_initial, *snapshot(), store().today(), locale());
    }

    void bindReceipts()
    {
        m_receipts = new RecordReceipts(store(), *this, form().receiptIDs);
        setAside(m_receipts->pane(), RecordReceipts::width);
        connect(m_receipts, &RecordReceipts::changed, this, [this] {
            auto now = form();
            now.receiptIDs = m_receipts->attachmentIDs();
            if (m_submission.isEditing() && now != form())
                m_submission.edit(std::move(now));
            present();
        });
        connect(m_receipts, &RecordReceipts::rested, this, [this] { submit(); });
    }

    /// That receipts are waited for, that the records have changed, or what is wrong with the form as a whole.
    [[nodiscard]] Note noteOf(const RecordFormContent& content) const
    {
        if (m_receipts && m_receipts->isWaited() && m_submission.isEditing())
            return {Banner::Kind::info, word(receiptWords(), "wait")};
        if (!content.conflict.isEmpty())
            return {Banner::Kind::warn, content.conflict};
        return {Banner::Kind::error, content.problem};
    }

    void take(const RecordEdit& edit)
    {
        if (!m_submission.isEditing())
            return;
        if (m_receipts)
            m_receipts->stopWaiting();
        adoptForm(Section::edited(form(), edit, *snapshot(), locale()));
    }

    /// Says of the amount what is wrong with it, beside whatever else stands in the form.
    void judge(Form judged)
    {
        if (!m_submission.isEditing() || judged == form())
            return;
        m_submission.adopt(std::move(judged));
        present();
    }

    void noteChanges()
    {
        if (!m_submission.isEditing() || Section::isCurrent(form(), *snapshot()))
            return;
        auto changed = form();
        changed.needsReload = true;
        m_submission.adopt(std::move(changed));
    }

    void reload()
    {
        if (!m_submission.isEditing())
            return;
        QCoro::connect(store().refresh(false), this, [this](const Result<void>& reply) {
            if (!store().snapshot() || !m_submission.isEditing())
                return;
            takeSnapshot();
            if (reply)
                m_submission.edit(Section::reloaded(form(), *snapshot(), store().today(), locale()));
            present();
            firstField().setFocus(Qt::OtherFocusReason);
        });
    }

    void submit()
    {
        if (m_submission.isUncertain()) {
            m_submission.sendAgain();
            send();
            return;
        }
        if (!m_submission.isEditing() || !m_body->isWithinLimits())
            return;
        takeSnapshot();
        noteChanges();
        if (form().needsReload) {
            present();
            return;
        }
        auto made = Section::command(form(), *snapshot(), {store().today(), store().newIdentifier()}, locale());
        auto judged = form();
        judged.problems.clear();
        if (!made)
            judged.problems = std::move(made.error());
        m_submission.edit(std::move(judged));
        if (made && m_receipts && m_receipts->holdsBack()) {
            present();
            return;
        }
        if (made) {
            m_submission.send(std::move(*made));
            send();
            return;
        }
        present();
        if (auto* const wrong = m_body->firstWrong(content()))
            wrong->setFocus(Qt::OtherFocusReason);
    }

    void send()
    {
        const auto command = *m_submission.command();
        if (m_keptKey != command.idempotencyKey)
            store().forgetSectionCommand(m_keptKey); // this one takes its place
        m_keptKey = command.idempotencyKey;
        present();
        QCoro::connect((store().*Section::submit)(command, false), this,
                       [this](const Result<void>& reply) { finish(reply); });
    }

    void finish(const Result<void>& reply)
    {
        // With the session the form closes, and what ended it is told elsewhere.
        if (!m_submission.isSaving() || !store().snapshot())
            return;
        if (reply) {
            m_submission.succeed();
            leave();
            if (m_done)
                m_done(outcome());
            return;
        }
        m_submission.fail(reply.error());
        takeSnapshot();
        if (Section::isConflict(reply.error()) && m_submission.isEditing()) {
            auto changed = form();
            changed.needsReload = true;
            m_submission.adopt(std::move(changed));
        }
        present();
        (m_submission.isUncertain() ? static_cast<QWidget&>(confirmButton()) : firstField())
            .setFocus(Qt::OtherFocusReason);
    }

    [[nodiscard]] RecordOutcome outcome() const
    {
        if (!m_receipts)
            return {.currency = form().currency};
        return {.currency = form().currency,
                .entryID = Section::bookedEntry(form(), *store().snapshot()),
                .uploaded = m_receipts->attachmentIDs().size(),
                .failed = m_receipts->failed()};
    }

    Form m_initial;
    Sending m_submission;
    std::string m_keptKey; // of what was sent last, or of the kept command that the form was opened on
    std::function<void(const RecordOutcome&)> m_done;
    RecordFormBody* m_body = nullptr;
    TextLabel* m_foot = nullptr;
    QPushButton* m_reload = nullptr;
    RecordReceipts* m_receipts = nullptr; // of an action that books an entry
};
