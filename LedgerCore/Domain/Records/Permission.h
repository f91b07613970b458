#pragma once

#include <array>
#include <string_view>

/// What a member may do in the whole company, as it stands on the wire. `MemberRights` says what each of them allows.
namespace Permission {
inline constexpr std::string_view viewCompany = "viewCompany"; // every account, and the company's reports
inline constexpr std::string_view manageCompany = "manageCompany";
inline constexpr std::string_view exportData = "exportData";
inline constexpr std::string_view viewCapital = "viewCapital";
inline constexpr std::string_view postCapital = "postCapital";
inline constexpr std::string_view correctCapital = "correctCapital";
inline constexpr std::string_view exportCapital = "exportCapital";
inline constexpr std::string_view viewDividends = "viewDividends";
inline constexpr std::string_view postDividends = "postDividends";

inline constexpr std::array<std::string_view, 9> all{viewCompany,   manageCompany, exportData,
                                                     viewCapital,   postCapital,   correctCapital,
                                                     exportCapital, viewDividends, postDividends};
}

/// The roles that the rules or the texts know. Any other word of the service is an ordinary member's.
namespace MemberRole {
inline constexpr std::string_view owner = "owner";
inline constexpr std::string_view admin = "admin";
inline constexpr std::string_view finance = "finance";
inline constexpr std::string_view partner = "partner";
inline constexpr std::string_view employee = "employee";
}

/// What a grant lets a member do on one account, as it stands on the wire.
namespace AccountAction {
inline constexpr std::string_view view = "view";
inline constexpr std::string_view income = "income";
inline constexpr std::string_view expense = "expense";
inline constexpr std::string_view transferOut = "transferOut";
inline constexpr std::string_view transferIn = "transferIn";
inline constexpr std::string_view exchange = "exchange";
inline constexpr std::string_view refund = "refund";
inline constexpr std::string_view correct = "correct"; // reverses entries
inline constexpr std::string_view opening = "opening";
inline constexpr std::string_view distribution = "distribution"; // moves dividend money
inline constexpr std::string_view capitalContribution = "capitalContribution";
}
