#include "LedgerService/Books/Demonstration/DemoPlan.h"

#include <array>

#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerCore/Domain/Records/Permission.h"

namespace LedgerService {

namespace {

constexpr std::string_view in = EntryKind::income;
constexpr std::string_view out = EntryKind::expense;
constexpr std::string_view move = EntryKind::transfer;
constexpr std::string_view swap = EntryKind::exchange;

constexpr std::string_view owner = MemberRole::owner;
constexpr std::string_view admin = MemberRole::admin;
constexpr std::string_view finance = "finance";
constexpr std::string_view partner = "partner";
constexpr std::string_view employee = MemberRole::employee;

/// Rupiah are rounded to hundreds or thousands, in minor units.
constexpr std::int64_t hundreds = 10'000;
constexpr std::int64_t thousands = 100'000;

/// Kind, day, months, offset and spread; source, target, category; currency, amount, rounding; note and recorder.
constexpr DemoRoutine all[]{
    {in, 4, 1, 0, 24, "", "operating", "sales.wholesale", "IDR", 117'400'000, 5 * thousands, "wholesale", finance},
    {in, 17, 1, 0, 22, "", "operating", "sales.wholesale", "IDR", 128'900'000, 5 * thousands, "wholesale", finance},
    {in, 27, 1, 0, 16, "", "cash", "sales.retail", "IDR", 49'850'000, 5 * hundreds, "retail", partner},
    {in, 8, 1, 0, 18, "", "settlement", "sales.export", "USD", 25'300, 50, "export", finance},
    {in, 15, 2, 1, 26, "", "osaka", "sales.export", "JPY", 1'486'000, 500, "japan", finance},
    {in, 18, 2, 0, 14, "", "hanoi", "services.consulting", "VND", 128'500'000, 500'000, "consulting", admin},
    {in, 12, 5, 1, 25, "", "operating", "services.installation", "IDR", 13'600'000, thousands, "installation", finance},
    {in, 28, 6, 2, 18, "", "operating", "otherIncome.interest", "IDR", 824'600, 100, "interest", finance},
    {in, 22, 6, 4, 20, "", "guangzhou", "otherIncome.rebate", "CNY", 3'860, 100, "rebate", finance},

    {out, 21, 2, 0, 10, "guangzhou", "", "goods.purchase", "CNY", 241'600, 100, "purchase", finance},
    {out, 9, 2, 1, 16, "operating", "", "goods.purchase", "IDR", 281'350'000, thousands, "localPurchase", finance},
    {out, 16, 2, 1, 15, "settlement", "", "goods.purchase", "USD", 16'920, 50, "purchase", finance},
    {out, 19, 3, 0, 22, "operating", "", "goods.packaging", "IDR", 9'240'000, thousands, "packaging", finance},
    {out, 14, 2, 1, 18, "operating", "", "goods.customs", "IDR", 21'850'000, hundreds, "customs", finance},
    {out, 11, 2, 1, 20, "settlement", "", "logistics.sea", "USD", 4'360, 1, "sea", finance},
    {out, 26, 3, 2, 18, "operating", "", "logistics.delivery", "IDR", 13'380'000, hundreds, "delivery", finance},
    {out, 5, 3, 0, 0, "operating", "", "premises.office", "IDR", 54'000'000, thousands, "office", owner},
    {out, 5, 3, 0, 0, "hanoi", "", "premises.warehouse", "VND", 63'000'000, 1, "warehouse", admin},
    {out, 16, 5, 2, 30, "cash", "", "premises.repairs", "IDR", 2'350'000, thousands, "repairs", partner},
    {out, 20, 1, 0, 12, "operating", "", "utilities.electricity", "IDR", 4'612'000, hundreds, "electricity", finance},
    {out, 3, 3, 1, 0, "operating", "", "utilities.internet", "IDR", 4'329'000, hundreds, "internet", finance},
    {out, 20, 6, 1, 14, "cash", "", "utilities.water", "IDR", 1'818'400, hundreds, "water", partner},
    {out, 25, 1, 0, 2, "operating", "", "staff.salaries", "IDR", 86'400'000, thousands, "salaries", owner},
    {out, 28, 1, 0, 2, "hanoi", "", "staff.salaries", "VND", 52'600'000, 50'000, "hanoiSalaries", admin},
    {out, 10, 1, 0, 2, "operating", "", "staff.insurance", "IDR", 9'417'600, hundreds, "insurance", finance},
    {out, 23, 6, 1, 30, "operating", "", "staff.travel", "USD", 684, 1, "travel", finance},
    {out, 12, 7, 3, 15, "operating", "", "office.equipment", "IDR", 6'980'000, thousands, "equipment", finance},
    {out, 2, 3, 1, 0, "settlement", "", "office.software", "USD", 864, 1, "software", finance},
    {out, 17, 4, 1, 25, "operating", "", "marketing.ads", "IDR", 14'750'000, thousands, "ads", finance},
    {out, 19, 6, 3, 8, "osaka", "", "marketing.fairs", "JPY", 268'400, 100, "fair", finance},
    {out, 14, 3, 2, 10, "operating", "", "fees.tax", "IDR", 38'200'000, thousands, "tax", owner},
    {out, 27, 4, 0, 35, "settlement", "", "fees.bank", "USD", 86, 1, "charges", finance},
    {out, 22, 3, 1, 0, "operating", "", "fees.accounting", "IDR", 4'500'000, thousands, "accounting", finance},

    {out, 7, 2, 0, 45, "float", "", "logistics.courier", "IDR", 284'500, 5 * hundreds, "courier", employee},
    {out, 18, 3, 1, 30, "float", "", "staff.meals", "IDR", 486'000, 5 * hundreds, "meals", employee},
    {out, 24, 2, 0, 35, "float", "", "office.supplies", "IDR", 742'500, 5 * hundreds, "supplies", employee},

    {move, 2, 2, 0, 0, "operating", "float", "", "IDR", 2'000'000, thousands, "topUp", finance},
    {move, 28, 3, 2, 0, "float", "operating", "", "IDR", 0, 50 * thousands, "handBack", employee, 750'000},
    {move, 28, 1, 0, 0, "cash", "operating", "", "IDR", 0, 500 * thousands, "deposit", finance, 12'000'000},
    {move, 15, 3, 1, 0, "operating", "refunds", "", "IDR", 14'000'000, thousands, "refundFunds", finance},
    {move, 26, 6, 5, 0, "refunds", "operating", "", "IDR", 0, 500 * thousands, "refundSurplus", finance, 12'000'000},

    {swap, 12, 2, 0, 3, "settlement", "guangzhou", "", "USD", 34'300, 50'000, "supplierFunds", finance, 0, "CNY",
     7'148'000},
    {swap, 12, 3, 1, 0, "settlement", "hanoi", "", "USD", 1'100, 10'000, "hanoiFunds", finance, 0, "VND",
     25'640'000'000},
    {swap, 25, 4, 3, 0, "osaka", "settlement", "", "JPY", 0, 10'000, "yenHome", finance, 850'000, "USD", 6'630},
};

/// What a shop and its customers buy by the month, January first: little after the new year, much before the holidays.
constexpr std::array seasonPercent{91, 88, 109, 97, 98, 96, 95, 98, 101, 105, 112, 118};

constexpr DemoPlan::Opening balances[]{
    {"operating", "IDR", 64'218'450'000}, {"operating", "USD", 1'250'000},  {"hanoi", "VND", 286'400'000},
    {"settlement", "USD", 4'246'275},     {"settlement", "CNY", 1'980'000}, {"settlement", "JPY", 640'000},
    {"guangzhou", "CNY", 14'665'080},     {"osaka", "JPY", 1'872'500},      {"cash", "IDR", 1'864'300'000},
};

}

std::span<const DemoRoutine> DemoPlan::routines()
{
    return all;
}

int DemoPlan::seasonPercentOf(const DemoRoutine& routine, std::chrono::month month)
{
    if (!routine.category.starts_with("sales.") && routine.category != "goods.purchase")
        return 100;
    return seasonPercent.at(static_cast<unsigned>(month) - 1);
}

std::span<const DemoPlan::Opening> DemoPlan::openings()
{
    return balances;
}

}
