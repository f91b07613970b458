#pragma once

#include <map>
#include <string>

#include <QString>

#include "LedgerUI/Presentation/Company/MemberAccess.h"
#include "LedgerUI/Presentation/Forms/Submission.h"

/// Somebody who is being invited.
struct InviteForm {
    enum class Field { name, email };

    std::string name;
    std::string email;
    AccessDraft access;
    bool isChecked = false; // it was tried to send: what is missing is said

    bool operator==(const InviteForm&) const = default;

    /// An employee without any rights yet.
    static InviteForm fresh();
    /// The membership that the rules compare the rights with: nobody's.
    static Member nobody();

    [[nodiscard]] bool hasChanges() const;
    /// What is wrong with the fields, once it was tried to send.
    [[nodiscard]] std::map<Field, QString> messages(std::string_view locale) const;
    [[nodiscard]] Invite command(const LedgerSnapshot& snapshot) const;
};

/// An invitation bears no key: sent again after an unknown outcome, it replaces the one that may have been made.
using InviteSubmission = Submission<InviteForm, Invite>;
