#include "LedgerUI/Presentation/SignIn/SignInState.h"

#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

SignInState signInState(SignInWait wait, std::string_view address, std::string_view locale)
{
    const auto& words = signInWords();
    switch (wait) {
    case SignInWait::session:
        return {.takesInput = true, .maySubmit = false, .progress = wordIn(locale, words, "openingSession")};
    case SignInWait::answer:
        return {.takesInput = false,
                .maySubmit = false,
                .isSending = true,
                .progress = wordIn(locale, words, "connecting", {address})};
    case SignInWait::signOut:
        return {.takesInput = true, .maySubmit = false, .progress = wordIn(locale, words, "signingOut")};
    case SignInWait::nothing:
        break;
    }
    return {};
}
