#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Forms/AccountChoice.h"
#include "LedgerUI/Presentation/Templates/TemplateForm.h"

/// What a template may say of its entry, whose kind and currencies stand. What it says now is always among it.
namespace TemplateChoices {

/// The accounts that take entries of the kind in the currency.
std::vector<AccountChoice> accounts(const TemplateEntry& entry, const LedgerSnapshot& snapshot,
                                    std::string_view locale);
/// Where a transfer or exchange may go.
std::vector<AccountChoice> destinations(const TemplateEntry& entry, const LedgerSnapshot& snapshot,
                                        std::string_view locale);

struct CategoryChoice {
    std::string id; // empty for one that is chosen each time
    QString name;

    bool operator==(const CategoryChoice&) const = default;
};
std::vector<CategoryChoice> categories(const TemplateEntry& entry, const LedgerSnapshot& snapshot,
                                       std::string_view locale);

}
