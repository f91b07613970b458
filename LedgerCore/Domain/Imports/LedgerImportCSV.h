#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Imports/LedgerImportPlan.h"

struct LedgerSnapshot;

/// The import of older entries from a comma-separated file.
namespace LedgerImportCSV {

inline constexpr std::array<std::string_view, 10> headers{"日期 Date",
                                                          "类型 Type",
                                                          "账户 Account",
                                                          "币种 Currency",
                                                          "金额 Amount",
                                                          "分类 Category",
                                                          "备注 Note",
                                                          "目标账户 Target Account",
                                                          "目标币种 Target Currency",
                                                          "目标金额 Target Amount"};

/// The earlier template: a column of the file's own numbers in front, which nothing is made of.
inline constexpr std::array<std::string_view, 11> legacyHeaders{
    "导入编号 Import ID", headers[0], headers[1], headers[2], headers[3], headers[4],
    headers[5],           headers[6], headers[7], headers[8], headers[9]};

/// A last column that says what is wrong with a row. Nothing is made of it when a file is read.
inline constexpr std::string_view issueHeader = "问题 Issue";

inline constexpr std::string_view templateName = "Brightbook-ledger-import-template-中英";

/// Larger files are not even read, in bytes.
inline constexpr std::size_t maximumFileSize = 5UL * 1024 * 1024;

/// The header alone, as a file to fill in.
std::string templateText();

/// Checks every row against the books and says what it would record, or everything that is wrong with it. The same
/// file and company always give the same idempotency keys. Writes nothing.
LedgerImportPlan plan(std::string_view data, const LedgerSnapshot& snapshot);

/// The same file with a last column of issues, by the lines of the plan, to be mended and read again. Its cells stay
/// as they are, so that its rows keep their keys. Where all issues would make it too large to be read again, it holds
/// the first of them. Only of a file that is not malformed.
std::string withIssues(std::string_view data, const std::map<int, std::string>& issues);

}
