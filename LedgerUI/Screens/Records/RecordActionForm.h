#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"
#include "LedgerUI/Presentation/Records/RecordForm.h"

class QPushButton;
class RecordFormBody;
class RecordReceipts;
class TextLabel;

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
/// What it does is in RecordActionFormShowing.h and RecordActionFormSending.h, which only the file of a section's form
/// includes.
template <class Section>
class RecordActionForm : public CommandForm {
public:
    using Form = typename Section::Form;
    using Command = typename Section::Command;

    RecordActionForm(LedgerStore& store, const typename Section::Route& route, QWidget* parent);

    /// For a command of an earlier form that was kept: locked, to be sent again, where nobody knows whether it was
    /// carried out; else as it was before it was sent.
    RecordActionForm(LedgerStore& store, const Command& kept, bool outcomeUnknown, QWidget* parent);

private:
    using Sending = Submission<Form, Command>;

    static Sending restored(LedgerStore& store, const Command& kept, bool outcomeUnknown);
    RecordActionForm(LedgerStore& store, Sending submission, QWidget* parent);

public:
    /// Called once the command is accepted and the form has closed.
    void whenDone(std::function<void(const RecordOutcome& outcome)> done) { m_done = std::move(done); }

protected:
    [[nodiscard]] RecordFormBody& body() const { return *m_body; }
    [[nodiscard]] const Form& form() const { return m_submission.form(); }
    void adoptForm(Form form);
    void present() override;
    void adoptSnapshot() override;
    void adoptLanguage(const std::string& before) override;
    [[nodiscard]] QWidget& firstField() const override;
    /// What was sent is kept with the unconfirmed requests.
    [[nodiscard]] bool waitsForMember() const override { return m_submission.isEditing(); }

private:
    static constexpr int plainWidth = 600;
    static constexpr int tableWidth = 640;
    static constexpr int besideReceipts = 528;

    [[nodiscard]] RecordFormContent content() const;

    /// What keeps the command from being sent at all; empty when it can be.
    [[nodiscard]] QString whyNot() const;

    void bindReceipts();

    /// That the form has to wait for receipts, that the records have changed, what is wrong with the
    /// form as a whole, or what it has done by itself.
    [[nodiscard]] Note noteOf(const RecordFormContent& content) const;

    void take(const RecordEdit& edit);

    /// Says of the amount what is wrong with it, beside whatever else stands in the form.
    void judge(Form judged);
    void noteChanges();
    void reload();
    void submit();
    /// The command that is to be sent, unless something stands against it, which is said then.
    std::optional<Command> checked();
    void send(const Command& command);
    void finish(const Result<void>& reply);
    [[nodiscard]] RecordOutcome outcome() const;

    Form m_initial;
    Sending m_submission;
    std::string m_keptKey; // of what was sent last, or of the kept command that the form was opened on
    std::function<void(const RecordOutcome&)> m_done;
    RecordFormBody* m_body = nullptr;
    TextLabel* m_foot = nullptr;
    QPushButton* m_reload = nullptr;
    RecordReceipts* m_receipts = nullptr; // of an action that books an entry
};
