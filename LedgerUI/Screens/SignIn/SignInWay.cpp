#include "LedgerUI/Screens/SignIn/SignInWay.h"

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Presentation/SignIn/SignInState.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Screens/SignIn/SignInForm.h"

namespace {

bool refusesAddress(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && error->code == ClientCode::invalidServerURL;
}

}

SignInWay::SignInWay(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store} {}

void SignInWay::present(const SignInState& state)
{
    m_maySubmit = state.maySubmit;
}

void SignInWay::submit()
{
    if (!m_maySubmit)
        return;
    auto& page = form();
    const auto draft = page.draft();
    const auto problems = SignInProblems::of(page.page(), draft);
    page.complain(problems);
    if (!problems.empty())
        return;
    Q_EMIT submitting();
    send(draft);
}

void SignInWay::explain(const Failure& failure)
{
    if (std::holds_alternative<Cancelled>(failure))
        return;
    auto& page = form();
    if (refusesAddress(failure)) {
        Q_EMIT addressRefused(qString(m_store.friendly(failure)));
        return;
    }
    const auto problem = SignInProblems::of(page.page(), page.draft(), failure);
    if (!problem) {
        page.focusFirst();
        adoptAlert(failure);
        return;
    }
    m_store.dismissMessages(); // said here
    if (problem->field)
        page.complain({*problem});
    else if (!meet(*problem))
        page.focusFirst();
    if (!problem->field)
        Q_EMIT warned(*problem);
}
