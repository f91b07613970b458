#include "LedgerCore/Domain/Entries/EntryProblem.h"

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

const WordTable& words()
{
    static const WordTable table{
        {"sameCurrency", "请选择两种不同的币种。", "Pilih dua mata uang yang berbeda.",
         "Hãy chọn hai loại tiền tệ khác nhau.", "Choose two different currencies."},
        {"originalRequired", "请选择同币种且未冲销的收入记录，或填写外部退款参考号。",
         "Pilih catatan pemasukan yang belum dibatalkan dalam mata uang yang sama, atau isi referensi pengembalian "
         "dana eksternal.",
         "Hãy chọn khoản thu chưa bị đảo cùng loại tiền tệ, hoặc nhập mã tham chiếu hoàn tiền bên ngoài.",
         "Select an unreversed income record in the same currency, or enter an external refund reference."},
        {"originalUnavailable", "该收入已不能退款，请选择其他收入记录。",
         "Pemasukan ini tidak dapat dikembalikan lagi. Pilih catatan pemasukan lain.",
         "Khoản thu này không còn hoàn được. Hãy chọn khoản thu khác.",
         "This income can no longer be refunded. Select another one."},
        {"refundLimit", "超过原收入尚可退款的金额：%1",
         "Melebihi jumlah yang masih dapat dikembalikan dari pemasukan ini: %1",
         "Vượt quá số tiền còn hoàn được của khoản thu này: %1", "More than this income can still refund: %1"},
        {"openingExists", "该账户在此币种下已有生效的期初余额，请先查看原记录。",
         "Rekening ini sudah memiliki saldo awal aktif dalam mata uang ini. Periksa catatan aslinya.",
         "Tài khoản này đã có số dư đầu kỳ còn hiệu lực bằng loại tiền tệ này. Hãy xem bút toán gốc.",
         "This account already has an active opening balance in this currency. Check the original record."},
        {"openingUnverifiable", "无法核对该账户的完整历史，请刷新后重试。",
         "Riwayat lengkap rekening ini tidak dapat dipastikan. Muat ulang lalu coba lagi.",
         "Không thể xác nhận đầy đủ lịch sử của tài khoản này. Hãy làm mới rồi thử lại.",
         "The full history of this account could not be confirmed. Refresh and try again."},
        {"openingDateUnreadable", "无法读取账套启用日期，请联系公司管理员。",
         "Tanggal mulai pembukuan tidak dapat dibaca. Hubungi administrator perusahaan.",
         "Không đọc được ngày bắt đầu ghi sổ. Hãy liên hệ quản trị viên công ty.",
         "The bookkeeping start date could not be read. Contact your company administrator."},
    };
    return table;
}

std::string_view obstacleText(EntryObstacle obstacle, std::string_view locale)
{
    using enum EntryObstacle;
    switch (obstacle) {
    case accountUnavailable:
        return EntryWords::text("accountUnavailable", locale);
    case categoryUnavailable:
        return EntryCopy::words().text("categoryUnavailable", locale);
    case balanceLimit:
        return EntryWords::text("balanceLimit", locale);
    case sameCurrency:
        return words().text("sameCurrency", locale);
    case originalRequired:
        return words().text("originalRequired", locale);
    case originalUnavailable:
        return words().text("originalUnavailable", locale);
    case openingExists:
        return words().text("openingExists", locale);
    case openingUnverifiable:
        return words().text("openingUnverifiable", locale);
    case openingDateUnreadable:
        return words().text("openingDateUnreadable", locale);
    }
    return {};
}

struct Message {
    std::string_view locale;

    std::string operator()(const EntryValidationError& error) const { return error.message(locale); }
    std::string operator()(MoneyError error) const { return std::string{friendlyMessage(error, locale)}; }
    std::string operator()(EntryObstacle obstacle) const { return std::string{obstacleText(obstacle, locale)}; }
    std::string operator()(const RefundLimit& limit) const
    {
        return words().filled("refundLimit", locale, {Money::format(limit.remaining, limit.currency, locale)});
    }
};

}

std::string EntryProblem::message(std::string_view locale) const
{
    return std::visit(Message{locale}, reason);
}
