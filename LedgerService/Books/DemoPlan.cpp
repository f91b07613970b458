#include "LedgerService/Books/DemoPlan.h"

#include "LedgerCore/Domain/LedgerTransaction.h"

namespace {

constexpr std::string_view in = EntryKind::income;
constexpr std::string_view out = EntryKind::expense;
constexpr std::string_view move = EntryKind::transfer;
constexpr std::string_view swap = EntryKind::exchange;

constexpr std::string_view owner = "owner";
constexpr std::string_view admin = "admin";
constexpr std::string_view finance = "finance";
constexpr std::string_view partner = "partner";
constexpr std::string_view employee = "employee";

/// Rupiah are rounded to hundreds or thousands, in minor units.
constexpr std::int64_t hundreds = 10'000;
constexpr std::int64_t thousands = 100'000;

/// Kind, day, months, offset and spread; source, target, category; currency, amount, rounding; note and recorder.
constexpr DemoRoutine all[]{
    {in, 4, 1, 0, 28, "", "operating", "sales.wholesale", "IDR", 87'400'000, 5 * thousands, "wholesale", finance},
    {in, 10, 1, 0, 30, "", "operating", "sales.wholesale", "IDR", 64'900'000, 5 * thousands, "wholesale", finance},
    {in, 17, 1, 0, 22, "", "operating", "sales.wholesale", "IDR", 112'300'000, 5 * thousands, "wholesale", finance},
    {in, 13, 1, 0, 24, "", "cash", "sales.retail", "IDR", 26'800'000, 5 * hundreds, "retail", partner},
    {in, 27, 1, 0, 24, "", "cash", "sales.retail", "IDR", 29'150'000, 5 * hundreds, "retail", finance},
    {in, 8, 1, 0, 24, "", "settlement", "sales.export", "USD", 14'820, 50, "export", finance},
    {in, 20, 1, 0, 20, "", "settlement", "sales.export", "USD", 18'460, 50, "export", finance},
    {in, 15, 1, 0, 32, "", "osaka", "sales.export", "JPY", 936'000, 500, "japan", finance},
    {in, 18, 1, 0, 20, "", "hanoi", "services.consulting", "VND", 68'500'000, 500'000, "consulting", admin},
    {in, 12, 3, 1, 25, "", "operating", "services.installation", "IDR", 13'600'000, thousands, "installation", finance},
    {in, 28, 3, 2, 18, "", "operating", "otherIncome.interest", "IDR", 412'300, 100, "interest", finance},
    {in, 22, 6, 4, 20, "", "guangzhou", "otherIncome.rebate", "CNY", 3'860, 100, "rebate", finance},

    {out, 6, 1, 0, 12, "guangzhou", "", "goods.purchase", "CNY", 68'300, 100, "purchase", finance},
    {out, 21, 1, 0, 12, "guangzhou", "", "goods.purchase", "CNY", 58'750, 100, "purchase", finance},
    {out, 9, 1, 0, 25, "operating", "", "goods.purchase", "IDR", 58'700'000, thousands, "localPurchase", finance},
    {out, 23, 1, 0, 20, "operating", "", "goods.purchase", "IDR", 74'350'000, thousands, "localPurchase", finance},
    {out, 16, 1, 0, 18, "settlement", "", "goods.purchase", "USD", 8'420, 50, "purchase", finance},
    {out, 19, 2, 0, 22, "operating", "", "goods.packaging", "IDR", 7'240'000, thousands, "packaging", finance},
    {out, 14, 1, 0, 26, "operating", "", "goods.customs", "IDR", 12'850'000, hundreds, "customs", finance},
    {out, 11, 1, 0, 24, "settlement", "", "logistics.sea", "USD", 2'640, 1, "sea", finance},
    {out, 26, 2, 0, 18, "operating", "", "logistics.delivery", "IDR", 9'380'000, hundreds, "delivery", finance},
    {out, 5, 3, 0, 0, "operating", "", "premises.office", "IDR", 54'000'000, thousands, "office", owner},
    {out, 5, 1, 0, 0, "hanoi", "", "premises.warehouse", "VND", 22'000'000, 1, "warehouse", admin},
    {out, 16, 5, 2, 30, "cash", "", "premises.repairs", "IDR", 2'350'000, thousands, "repairs", partner},
    {out, 20, 1, 0, 12, "operating", "", "utilities.electricity", "IDR", 4'612'000, hundreds, "electricity", finance},
    {out, 3, 1, 0, 0, "operating", "", "utilities.internet", "IDR", 1'443'000, hundreds, "internet", finance},
    {out, 20, 2, 1, 14, "cash", "", "utilities.water", "IDR", 618'400, hundreds, "water", finance},
    {out, 25, 1, 0, 2, "operating", "", "staff.salaries", "IDR", 86'400'000, thousands, "salaries", owner},
    {out, 28, 1, 0, 2, "hanoi", "", "staff.salaries", "VND", 52'600'000, 50'000, "hanoiSalaries", admin},
    {out, 10, 1, 0, 2, "operating", "", "staff.insurance", "IDR", 9'417'600, hundreds, "insurance", finance},
    {out, 23, 4, 1, 30, "settlement", "", "staff.travel", "USD", 684, 1, "travel", finance},
    {out, 12, 7, 3, 15, "operating", "", "office.equipment", "IDR", 6'980'000, thousands, "equipment", finance},
    {out, 2, 1, 0, 0, "settlement", "", "office.software", "USD", 288, 1, "software", finance},
    {out, 17, 2, 1, 25, "operating", "", "marketing.ads", "IDR", 8'750'000, thousands, "ads", finance},
    {out, 19, 6, 3, 8, "osaka", "", "marketing.fairs", "JPY", 268'400, 100, "fair", finance},
    {out, 14, 3, 2, 10, "operating", "", "fees.tax", "IDR", 38'200'000, thousands, "tax", owner},
    {out, 27, 2, 0, 35, "settlement", "", "fees.bank", "USD", 46, 1, "charges", finance},
    {out, 22, 3, 1, 0, "operating", "", "fees.accounting", "IDR", 4'500'000, thousands, "accounting", finance},

    {out, 7, 1, 0, 45, "float", "", "logistics.courier", "IDR", 164'500, 5 * hundreds, "courier", employee},
    {out, 18, 1, 0, 30, "float", "", "staff.meals", "IDR", 386'000, 5 * hundreds, "meals", employee},
    {out, 24, 1, 0, 35, "float", "", "office.supplies", "IDR", 742'500, 5 * hundreds, "supplies", employee},
    {out, 26, 2, 1, 40, "float", "", "logistics.courier", "IDR", 118'000, 5 * hundreds, "courier", employee},

    {move, 2, 1, 0, 0, "operating", "float", "", "IDR", 2'000'000, thousands, "topUp", finance},
    {move, 28, 3, 2, 0, "float", "operating", "", "IDR", 0, 50 * thousands, "handBack", employee, 750'000},
    {move, 28, 1, 0, 0, "cash", "operating", "", "IDR", 0, 500 * thousands, "deposit", finance, 12'000'000},
    {move, 15, 3, 1, 0, "operating", "refunds", "", "IDR", 14'000'000, thousands, "refundFunds", finance},

    {swap, 3, 1, 0, 3, "settlement", "guangzhou", "", "USD", 18'200, 50'000, "supplierFunds", finance, 0, "CNY",
     7'148'000},
    {swap, 12, 2, 1, 0, "settlement", "hanoi", "", "USD", 1'200, 10'000, "hanoiFunds", finance, 0, "VND",
     25'640'000'000},
    {swap, 25, 4, 3, 0, "osaka", "settlement", "", "JPY", 0, 10'000, "yenHome", finance, 850'000, "USD", 6'630},
};

constexpr DemoPlan::Opening balances[]{
    {"operating", "IDR", 64'218'450'000}, {"operating", "USD", 1'250'000},  {"hanoi", "VND", 286'400'000},
    {"settlement", "USD", 3'846'275},     {"settlement", "CNY", 1'980'000}, {"settlement", "JPY", 640'000},
    {"guangzhou", "CNY", 9'465'080},      {"osaka", "JPY", 1'872'500},      {"cash", "IDR", 1'864'300'000},
};

}

std::span<const DemoRoutine> DemoPlan::routines()
{
    return all;
}

std::span<const DemoPlan::Opening> DemoPlan::openings()
{
    return balances;
}
