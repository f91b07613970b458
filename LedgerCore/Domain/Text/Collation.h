#pragma once

#include <string>
#include <string_view>

/// The order in which readers of a language expect names: "Dịch" before "Đảo" in Vietnamese, pinyin in Chinese, and
/// "Till 2" before "Till 10" in all of them. `locale` is resolved to an interface language.
namespace Collation {

/// Whether `left` stands before `right`. Texts that read the same stand in the order of their bytes.
bool isBefore(std::string_view left, std::string_view right, std::string_view locale);

/// Bytes that stand in the order of the texts, for lists that are sorted often.
std::string sortKey(std::string_view text, std::string_view locale);

}
