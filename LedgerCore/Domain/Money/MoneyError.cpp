#include "LedgerCore/Domain/Money/MoneyError.h"

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/WordTable.h"

std::string_view rawValue(MoneyError error)
{
    switch (error) {
    case MoneyError::invalidFormat:
        return "invalidFormat";
    case MoneyError::excessPrecision:
        return "excessPrecision";
    case MoneyError::outOfRange:
        return "outOfRange";
    case MoneyError::unsupportedCurrency:
        return "unsupportedCurrency";
    }
    return {};
}

const WordTable& moneyErrorWords()
{
    static const WordTable words{{
        {"invalidFormat", "金额格式不正确，请按当前语言使用小数点和千位分隔符。",
         "Format jumlah tidak valid. Gunakan pemisah sesuai bahasa saat ini.",
         "Định dạng số tiền không hợp lệ. Dùng dấu phân cách theo ngôn ngữ hiện tại.",
         "Invalid amount format. Use the decimal and thousands separators for the current language."},
        {"excessPrecision", "金额小数位超出该币种精度。", "Jumlah desimal melebihi ketelitian mata uang.",
         "Số chữ số thập phân vượt quá độ chính xác của tiền tệ.",
         "The amount has more decimal places than this currency supports."},
        {"outOfRange", "金额超出支持范围。", "Jumlah melebihi batas yang didukung.",
         "Số tiền vượt quá giới hạn hỗ trợ.", "The amount exceeds the supported range."},
        {"unsupportedCurrency", "暂不支持该币种。", "Mata uang tidak didukung.", "Tiền tệ không được hỗ trợ.",
         "This currency is not supported."},
    }};
    return words;
}

std::string_view friendlyMessage(MoneyError error, std::string_view locale)
{
    return moneyErrorWords().text(rawValue(error), AppLanguage::locale(locale));
}
