#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/WordTable.h"

// The words name these.
static_assert(EntryLimits::noteLength == 2'000 && EntryLimits::referenceLength == 200 && EntryLimits::receipts == 10 &&
              EntryLimits::daysAhead == 1);

const WordTable& EntryProblem::words()
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
        {"limit.amount", "%1上限为 %2。", "%1 Batasnya %2.", "%1 Giới hạn là %2.", "%1 The limit is %2."},
        {"limit.balance", "%1，上限为 %2。", "%1. Batasnya %2.", "%1. Giới hạn là %2.", "%1. The limit is %2."},
        {"openingExists", "该账户在此币种下已有生效的期初余额，请先查看原记录。",
         "Rekening ini sudah memiliki saldo awal aktif dalam mata uang ini. Periksa catatan aslinya.",
         "Tài khoản này đã có số dư đầu kỳ còn hiệu lực bằng loại tiền tệ này. Hãy xem bút toán gốc.",
         "This account already has an active opening balance in this currency. Check the original record."},
        {"historyIncomplete", "无法核对该账户的完整历史，请刷新后重试。",
         "Riwayat lengkap rekening ini tidak dapat dipastikan. Muat ulang lalu coba lagi.",
         "Không thể xác nhận đầy đủ lịch sử của tài khoản này. Hãy làm mới rồi thử lại.",
         "The full history of this account could not be confirmed. Refresh and try again."},
        {"startUnreadable", "无法读取记账起始日期，请联系公司管理员。",
         "Tanggal mulai pembukuan tidak dapat dibaca. Hubungi administrator perusahaan.",
         "Không đọc được ngày bắt đầu ghi sổ. Hãy liên hệ quản trị viên công ty.",
         "The bookkeeping start date could not be read. Contact your company administrator."},
        {"unrecordable", "此记录无法按现在的内容保存。", "Catatan ini tidak dapat disimpan dengan isi seperti ini.",
         "Không thể lưu bút toán này với nội dung hiện tại.", "This entry cannot be recorded as it stands."},
        {"inactiveMember", "您的成员账户已停用。", "Keanggotaan Anda dinonaktifkan.",
         "Tài khoản thành viên của bạn đã bị vô hiệu hóa.", "Your member account is inactive."},
        {"duplicateReference", "已有退款使用此参考号，请核对原记录。",
         "Referensi ini sudah dipakai pengembalian dana lain. Periksa catatan aslinya.",
         "Mã tham chiếu này đã được dùng cho một khoản hoàn tiền khác. Hãy kiểm tra bút toán gốc.",
         "Another refund already carries this reference. Check the original record."},
        {"referenceTooLong", "参考号不能超过 200 个字符。", "Referensi tidak boleh lebih dari 200 karakter.",
         "Mã tham chiếu không được dài quá 200 ký tự.", "The reference cannot be longer than 200 characters."},
        {"noteTooLong", "备注不能超过 2,000 个字符。", "Keterangan tidak boleh lebih dari 2.000 karakter.",
         "Ghi chú không được dài quá 2.000 ký tự.", "The note cannot be longer than 2,000 characters."},
        {"textUnsound", "文字中含有无法保存的字符。", "Teks memuat karakter yang tidak dapat disimpan.",
         "Văn bản chứa ký tự không lưu được.", "The text contains a character that cannot be stored."},
        {"invalidDay", "请选择日期。", "Pilih tanggal.", "Hãy chọn ngày.", "Choose a day."},
        {"inFuture", "日期不能晚于明天。", "Tanggal tidak boleh lebih dari besok.", "Ngày không được sau ngày mai.",
         "The day cannot be later than tomorrow."},
        {"beforeStart", "日期早于记账起始日期。", "Tanggal mendahului tanggal mulai pembukuan.",
         "Ngày này trước ngày bắt đầu ghi sổ.", "The day lies before the bookkeeping start date."},
        {"openingDay", "期初余额必须记在记账起始日期。", "Saldo awal harus dicatat pada tanggal mulai pembukuan.",
         "Số dư đầu kỳ phải ghi vào ngày bắt đầu ghi sổ.",
         "Opening balances are recorded on the bookkeeping start date."},
        {"beforeOriginal", "日期早于所退款的收入。", "Tanggal mendahului pemasukan yang dikembalikan.",
         "Ngày này trước khoản thu được hoàn.", "The day lies before the income that is refunded."},
        {"tooManyReceipts", "每条记录最多附 10 份票据。", "Satu catatan memuat paling banyak 10 bukti.",
         "Mỗi bút toán đính kèm tối đa 10 chứng từ.", "An entry carries at most 10 receipts."},
        {"receiptUnavailable", "有票据已不可用，请移除后重新添加。",
         "Ada bukti yang tidak dapat dipakai lagi. Hapus lalu tambahkan kembali.",
         "Có chứng từ không còn dùng được. Hãy gỡ và thêm lại.",
         "A receipt can no longer be used. Remove it and add it again."},
    };
    return table;
}

namespace {

std::string_view ofAccount(PostingReason reason, std::string_view locale)
{
    switch (reason) {
    case PostingReason::openingExists:
        return EntryProblem::words().text("openingExists", locale);
    case PostingReason::historyIncomplete:
        return EntryProblem::words().text("historyIncomplete", locale);
    case PostingReason::startUnreadable:
        return EntryProblem::words().text("startUnreadable", locale);
    case PostingReason::inactiveMember:
        return EntryProblem::words().text("inactiveMember", locale);
    case PostingReason::unknownKind:
    case PostingReason::foreignField:
    case PostingReason::invalidKey:
        return EntryProblem::words().text("unrecordable", locale);
    default:
        return EntryWords::text("accountUnavailable", locale);
    }
}

std::string_view originalKey(PostingReason reason)
{
    switch (reason) {
    case PostingReason::originalRequired:
        return "originalRequired";
    case PostingReason::duplicateReference:
        return "duplicateReference";
    case PostingReason::textTooLong:
        return "referenceTooLong";
    case PostingReason::textUnsound:
        return "textUnsound";
    default:
        return "originalUnavailable";
    }
}

std::string_view dateKey(PostingReason reason)
{
    switch (reason) {
    case PostingReason::inFuture:
        return "inFuture";
    case PostingReason::beforeStart:
        return "beforeStart";
    case PostingReason::openingDay:
        return "openingDay";
    case PostingReason::beforeOriginal:
        return "beforeOriginal";
    default:
        return "invalidDay";
    }
}

/// Each field words the few reasons that a person can tell apart there; `default` is what they have in common.
std::string_view textAt(EntryField field, PostingReason reason, std::string_view locale)
{
    const auto& words = EntryProblem::words();
    switch (field) {
    case EntryField::account:
        return ofAccount(reason, locale);
    case EntryField::destination:
        return reason == PostingReason::sameCurrency ? words.text("sameCurrency", locale)
                                                     : EntryWords::text("targetReselect", locale);
    case EntryField::amount:
    case EntryField::targetAmount:
        return words.text("unrecordable", locale);
    case EntryField::category:
        return EntryCopy::words().text("categoryUnavailable", locale);
    case EntryField::original:
        return words.text(originalKey(reason), locale);
    case EntryField::date:
        return words.text(dateKey(reason), locale);
    case EntryField::note:
        return words.text(reason == PostingReason::textTooLong ? "noteTooLong" : "textUnsound", locale);
    case EntryField::receipts:
        return words.text(reason == PostingReason::tooManyReceipts ? "tooManyReceipts" : "receiptUnavailable", locale);
    }
    return {};
}

struct Message {
    EntryField field;
    std::string_view locale;

    std::string operator()(const EntryValidationError& error) const { return error.message(locale); }
    std::string operator()(MoneyError error) const { return std::string{friendlyMessage(error, locale)}; }
    std::string operator()(PostingReason reason) const { return std::string{textAt(field, reason, locale)}; }
    std::string operator()(const RefundLimit& limit) const
    {
        return EntryProblem::words().filled("refundLimit", locale,
                                            {Money::format(limit.remaining, limit.currency, locale)});
    }
    std::string operator()(const RangeLimit& limit) const { return limit.message(locale); }
};

}

std::string RangeLimit::message(std::string_view locale) const
{
    const auto limit = Money::format(Money::maximumMinor, currency, locale);
    return of == Of::amount ? EntryProblem::words().filled("limit.amount", locale,
                                                           {friendlyMessage(MoneyError::outOfRange, locale), limit})
                            : EntryProblem::words().filled("limit.balance", locale,
                                                           {EntryWords::text("balanceLimit", locale), limit});
}

EntryProblem EntryProblem::unread(EntryField field, MoneyError error, const std::string& currency)
{
    if (error == MoneyError::outOfRange)
        return {field, RangeLimit{RangeLimit::Of::amount, currency}};
    return {field, error};
}

std::string EntryProblem::message(std::string_view locale) const
{
    return std::visit(Message{field, locale}, reason);
}
