#pragma once

#include <optional>
#include <utility>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Contract.h"

/// Whether a command is sent for the first time, or after a sending of which nobody knows what became.
enum class SubmissionAttempt { first, retry };

/// Whether after this failure nobody knows if the command was carried out. A refused retry settles it only when the
/// refusal judges the command itself; one about the session, the rate or the way there says nothing about the first
/// sending.
bool leavesUncertain(const Failure& failure, SubmissionAttempt attempt);

/// Where a form stands with the one command that it sends.
enum class SubmissionStage {
    editing,
    saving,    // sent; the reply is awaited
    uncertain, // nobody knows whether it was carried out: locked, and only the same command may be sent again
    done
};

/// A form from its first keystroke to the command that the service has accepted. `Form` is what a person fills in,
/// `Command` what is sent for it. While editing, the form changes and the last refusal stands beside it; once sent,
/// both stay as they were.
template <class Form, class Command>
class Submission {
public:
    explicit Submission(Form form) : m_form{std::move(form)} {}

    /// What an earlier form left: a command of which nobody knows whether it was carried out.
    static Submission uncertain(Form form, Command command)
    {
        Submission left{std::move(form)};
        left.m_command = std::move(command);
        left.m_stage = SubmissionStage::uncertain;
        return left;
    }
    /// What an earlier form left: a command that was refused and may still be changed.
    static Submission refused(Form form, Command command, std::optional<Failure> refusal = {})
    {
        Submission left{std::move(form)};
        left.m_command = std::move(command);
        left.m_refusal = std::move(refusal);
        return left;
    }
    /// What failed before it was sent.
    static Submission unsent(Form form, Failure failure)
    {
        Submission left{std::move(form)};
        left.m_refusal = std::move(failure);
        return left;
    }

    [[nodiscard]] SubmissionStage stage() const { return m_stage; }
    [[nodiscard]] bool isEditing() const { return m_stage == SubmissionStage::editing; }
    [[nodiscard]] bool isSaving() const { return m_stage == SubmissionStage::saving; }
    [[nodiscard]] bool isUncertain() const { return m_stage == SubmissionStage::uncertain; }
    [[nodiscard]] bool isDone() const { return m_stage == SubmissionStage::done; }
    [[nodiscard]] const Form& form() const { return m_form; }
    /// What the service said about the command as it was sent last, or why nobody knows what became of it; gone with
    /// the first change.
    [[nodiscard]] const std::optional<Failure>& refusal() const { return m_refusal; }
    /// The command sent last: on its way, of unknown outcome, or, while editing, refused. Nothing before the first.
    [[nodiscard]] const std::optional<Command>& command() const { return m_command; }
    /// The same, where the form stands past its first sending.
    [[nodiscard]] const Command& sent() const { return promised(m_command, "only a form that was sent has a command"); }

    /// What a person changed. Ignored while the form is locked.
    void edit(Form form)
    {
        if (!isEditing())
            return;
        m_form = std::move(form);
        m_refusal.reset();
    }
    /// The same content under other circumstances, such as another language.
    void adopt(Form form) { m_form = std::move(form); }

    /// What stands in the form is on its way as `command`.
    void send(Command command)
    {
        require(isEditing(), "only a form that is being edited sends a command of its own");
        m_command = std::move(command);
        m_attempt = SubmissionAttempt::first;
        m_refusal.reset();
        m_stage = SubmissionStage::saving;
    }
    /// The command of unknown outcome is on its way again, as it stood.
    void sendAgain()
    {
        require(isUncertain(), "only a command of unknown outcome is sent again");
        m_attempt = SubmissionAttempt::retry;
        m_refusal.reset();
        m_stage = SubmissionStage::saving;
    }
    /// A person wants it sent: the command of unknown outcome again, or else the one that `check` makes of the form,
    /// unless it finds something wrong. Answers the command that is on its way by this, and nothing where none is.
    template <class Check>
    [[nodiscard]] const Command* submit(const Check& check)
    {
        if (isUncertain()) {
            sendAgain();
        } else {
            auto command = isEditing() ? std::optional<Command>{check()} : std::nullopt;
            if (!command)
                return nullptr;
            send(std::move(*command));
        }
        return m_command ? &*m_command : nullptr;
    }
    /// The service has accepted the command.
    void succeed()
    {
        require(isSaving(), "a reply belongs to a command that is on its way");
        m_stage = SubmissionStage::done;
    }
    /// The service refused, or the outcome is unknown.
    void fail(const Failure& failure)
    {
        require(isSaving(), "a reply belongs to a command that is on its way");
        m_stage = leavesUncertain(failure, m_attempt) ? SubmissionStage::uncertain : SubmissionStage::editing;
        m_refusal = failure;
    }

private:
    Form m_form;
    std::optional<Command> m_command;
    std::optional<Failure> m_refusal;
    SubmissionStage m_stage = SubmissionStage::editing;
    SubmissionAttempt m_attempt = SubmissionAttempt::first;
};
