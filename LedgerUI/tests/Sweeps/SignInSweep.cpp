#include <array>
#include <string>

#include "LedgerUI/testing/Sweep.h"

namespace {

PageRegistry noPages()
{
    return {};
}

void applyForACompany(WindowUnderTest& under)
{
    under.server.answer("POST v1/auth/register",
                        ServerReply::json(R"({"status":"pending","applicationID":"a1","companyName":)"
                                          R"("Công ty TNHH Thương mại và Dịch vụ Hạ Long Xanh",)"
                                          R"("email":"huong.nguyen@halongxanh.vn"})"));
    under.screen.press("mode-register");
    Registration filled{.name = "Hương",
                        .email = "huong@x.vn",
                        .password = "12345678",
                        .companyName = "Hạ Long",
                        .countries = {},
                        .invitationCode = {}};
    std::ignore = resultOf(under.store.registerCompany(std::move(filled)));
    under.screen.press("messageClose");
    under.screen.waitUntilGone("alertDialog");
    under.screen.find("email").setFocus();
}

/// Asks for a code by mail.
void verifyByMail(WindowUnderTest& under, const char* mode)
{
    under.server.replace("POST v1/auth/access/start", ServerReply::json(R"({"challengeID":"c1"})"));
    under.screen.press(mode);
    under.screen.fill("email", "rizky.pratama@lenteraniaga.co.id");
    if (under.screen.shows("invitationCode"))
        under.screen.fill("invitationCode", "ABCD-EFGH-JKLM-NPQR");
    under.screen.keys("Return");
    under.screen.waitForFocus("verificationCode");
}

void handInTheCode(WindowUnderTest& under, bool isKnown)
{
    under.server.replace("POST v1/auth/access/verify",
                         ServerReply::json(std::string{R"({"ticket":"t1","existingAccount":)"} +
                                           (isKnown ? "true" : "false") +
                                           R"(,"companyName":"PT Lentera Niaga Nusantara","email":"r@x.id"})"));
    under.screen.type("481516");
    under.screen.keys("Return");
    under.screen.waitFor("confirmAccess");
    under.screen.press("confirmAccess");
}

const std::array shown{
    SweptScreen{"Register", noPages,
                [](auto& under) {
                    under.screen.press("mode-register");
                    under.screen.press("register"); // with every message
                }},
    SweptScreen{"RegisterPending", noPages, applyForACompany},
    SweptScreen{"Countries", noPages,
                [](auto& under) {
                    under.screen.press("mode-register");
                    under.screen.find("countries").setFocus();
                    under.screen.keys("Space");
                    under.screen.waitForFocus("countriesPopover");
                }},
    SweptScreen{"Join", noPages,
                [](auto& under) {
                    under.screen.press("mode-join");
                    under.screen.press("sendCode");
                }},
    SweptScreen{"JoinWithPassword", noPages,
                [](auto& under) {
                    under.screen.press("mode-join");
                    under.screen.press("hasPassword");
                }},
    SweptScreen{"JoinCode", noPages, [](auto& under) { verifyByMail(under, "mode-join"); }},
    SweptScreen{"JoinConfirm", noPages,
                [](auto& under) {
                    verifyByMail(under, "mode-join");
                    handInTheCode(under, false);
                }},
    SweptScreen{"JoinExisting", noPages,
                [](auto& under) {
                    verifyByMail(under, "mode-join");
                    handInTheCode(under, true);
                }},
    SweptScreen{"ResetStart", noPages,
                [](auto& under) {
                    under.screen.press("forgotPassword");
                    under.screen.press("sendCode"); // with every message
                }},
    SweptScreen{"ResetCode", noPages, [](auto& under) { verifyByMail(under, "mode-reset"); }},
    SweptScreen{"ResetNewPassword", noPages,
                [](auto& under) {
                    verifyByMail(under, "mode-reset");
                    handInTheCode(under, true);
                }},
};

}

SWEEP(SignIn, shown);
