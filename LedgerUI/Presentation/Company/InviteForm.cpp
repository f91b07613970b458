#include "LedgerUI/Presentation/Company/InviteForm.h"

#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

InviteForm InviteForm::fresh()
{
    InviteForm form;
    form.access.role = MemberRole::employee;
    return form;
}

Member InviteForm::nobody()
{
    Member member;
    member.role = MemberRole::employee;
    member.active = true;
    member.permissions.emplace();
    member.accountGrants.emplace();
    return member;
}

bool InviteForm::hasChanges() const
{
    auto asOpened = fresh();
    asOpened.isChecked = isChecked;
    return *this != asOpened;
}

std::map<InviteForm::Field, QString> InviteForm::messages(std::string_view locale) const
{
    std::map<Field, QString> messages;
    if (!isChecked)
        return messages;
    if (!Naming::isName(TextFold::trimmed(name)))
        messages[Field::name] = wordIn(locale, companyWords(), "nameMissing");
    if (!Naming::isEmail(TextFold::trimmed(email)))
        messages[Field::email] = wordIn(locale, companyWords(), "emailMissing");
    return messages;
}

Invite InviteForm::command(const LedgerSnapshot& snapshot) const
{
    return MemberAccess::invitation(std::string{TextFold::trimmed(name)}, std::string{TextFold::trimmed(email)}, access,
                                    snapshot);
}
