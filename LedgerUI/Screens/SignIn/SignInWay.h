#pragma once

#include <functional>
#include <utility>

#include <QCoro/QCoroTask>
#include <QWidget>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerUI/Presentation/SignIn/SignInMode.h"
#include "LedgerUI/Presentation/SignIn/SignInProblem.h"

class LedgerStore;
class SignInForm;
struct SignInState;

/// One way from signed out to signed in, with all its pages. It sends what a page was filled in with, and says at the
/// page what the page can put right; everything else that fails is left to the alert.
class SignInWay : public QWidget {
    Q_OBJECT
public:
    virtual void present(const SignInState& state);
    [[nodiscard]] virtual QString email() const = 0;
    virtual void setEmail(const QString& email) = 0;
    /// The person goes another way: what nobody else should come to see is dropped.
    virtual void leave() = 0;
    /// The page at hand.
    [[nodiscard]] virtual SignInForm& form() const = 0;
    /// The controls of all pages, in the order in which they follow each other.
    [[nodiscard]] virtual QList<QWidget*> tabStops() const = 0;
    void submit();

Q_SIGNALS:
    /// Emitted before a request, so that other parts of the screen can hand in what is typed.
    void submitting();
    /// The service's address was refused, with the message to show beside it.
    void addressRefused(const QString& message);
    /// What concerns the page as a whole.
    void warned(const SignInProblem& problem);
    void modeWanted(SignInMode mode);
    /// Somebody with an invitation applied: what the page was filled in with belongs to the way of the invited.
    void activationWanted(const SignInDraft& draft);

protected:
    SignInWay(LedgerStore& store, QWidget* parent);

    virtual void send(const SignInDraft& draft) = 0;
    /// A page was refused. Answers whether this way has said so itself.
    virtual bool meet(const SignInProblem& /*problem*/) { return false; }
    /// The failure was left to the alert.
    virtual void adoptAlert(const Failure& /*failure*/) {}

    /// Waits for what `task` is answered with.
    template <class Value, class Done>
    void await(QCoro::Task<Result<Value>> task, Done done)
    {
        QCoro::connect(std::move(task), this, [this, done = std::move(done)](const Result<Value>& outcome) {
            if (!outcome)
                explain(outcome.error());
            else if constexpr (std::is_void_v<Value>)
                done();
            else
                done(*outcome);
        });
    }

    [[nodiscard]] LedgerStore& store() const { return m_store; }

private:
    void explain(const Failure& failure);

    LedgerStore& m_store;
    bool m_maySubmit = true;
};
