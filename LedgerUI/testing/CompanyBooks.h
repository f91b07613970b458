#pragma once

#include <string>
#include <vector>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

/// A company with people of every role, as its owner sees it.
inline SnapshotBuilder companyBooks()
{
    auto owner = SnapshotBuilder::person("m1", "Budi Santoso", "owner");
    owner.permissions.emplace(Permission::all.begin(), Permission::all.end());
    SnapshotBuilder books;
    books.companyName("PT Lentera Niaga Nusantara").currentMember(owner);
    books.account("Ngân hàng Hà Nội – thanh toán", {"VND"}).account("Singapore settlement", {"SGD", "USD"});
    books.account("Bank operasional Jakarta", {"IDR"});
    books.employeeAccount("Kas kecil – Rizky Pratama", {"IDR"}, "m4").grantAll();
    const auto grant = [](const std::string& account, std::vector<std::string> actions) {
        return AccountGrant{account, std::move(actions)};
    };
    auto finance = SnapshotBuilder::person("m2", "Dewi Anggraini", "finance");
    finance.permissions = {{"viewCompany", "exportData"}};
    finance.accountGrants.emplace();
    auto manager = SnapshotBuilder::person("m3", "Nguyễn Thị Thanh Hương", "partner");
    manager.permissions = {{"exportData", "viewCapital"}};
    manager.accountGrants = {{grant("Ngân hàng Hà Nội – thanh toán", {"view", "income", "expense"}),
                              grant("Singapore settlement", {"view"})}};
    auto employee = SnapshotBuilder::person("m4", "Rizky Pratama");
    employee.permissions.emplace();
    employee.accountGrants = {{grant("Kas kecil – Rizky Pratama", {"view", "expense"})}};
    auto former = SnapshotBuilder::person("m5", "Made Suryani");
    former.active = false;
    books.category("utilities", "expense", "Utilities").category("power", "expense", "Electricity", "utilities");
    books.category("water", "expense", "Water", "utilities").category("rent", "expense", "Rent");
    books.category("sales", "income", "Sales");
    return books.member(finance).member(manager).member(employee).member(former);
}

/// Two invitations as the service lists them.
inline std::string companyInvitations()
{
    return R"({"invitations":[)"
           R"({"id":"i1","name":"Lê Thị Hồng Nhung","email":"nhung@example.com","role":"employee","permissions":[],)"
           R"("accountGrants":[],"createdAt":"2026-11-08T02:00:00.000Z","expiresAt":"2026-11-22T02:00:00.000Z",)"
           R"("status":"pending"},)"
           R"({"id":"i2","name":"Andi Wijaya","email":"andi@example.com","role":"finance","permissions":[],)"
           R"("accountGrants":[],"createdAt":"2026-11-05T02:00:00.000Z","expiresAt":"2026-11-19T02:00:00.000Z",)"
           R"("status":"expired"}]})";
}
