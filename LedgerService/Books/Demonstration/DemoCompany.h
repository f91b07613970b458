#pragma once

#include <string_view>

#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerService/Books/Books.h"

namespace LedgerService {

/// A trading company that demonstrates the program, with two years of books. Its members are the five profiles of
/// `DemoIdentity`, each with its profile as role; the same locale and day always make the same company.
struct DemoCompany {
    Company company;
    Books books;

    /// The company whose books end on `lastDay` ("YYYY-MM-DD"), in the interface language of the locale. `visitor`
    /// tells companies of one language apart: lower-case letters and digits, or nothing for the one that all share.
    static DemoCompany make(std::string_view locale, std::string_view lastDay, std::string_view visitor = {});
};

}
