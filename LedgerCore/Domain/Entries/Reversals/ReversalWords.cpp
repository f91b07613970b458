#include "LedgerCore/Domain/Entries/Reversals/ReversalWords.h"

#include "LedgerCore/Domain/Entries/EntryLimits.h"

// The words name these.
static_assert(EntryLimits::noteLength == 2'000 && EntryLimits::daysAhead == 1);

const WordTable& ReversalWords::words()
{
    static const WordTable table{
        {"inactiveMember", "您的成员账户已停用。", "Keanggotaan Anda dinonaktifkan.",
         "Tài khoản thành viên của bạn đã bị vô hiệu hóa.", "Your member account is inactive."},
        {"invalidDay", "请选择冲销日期。", "Pilih tanggal pembatalan.", "Hãy chọn ngày đảo bút toán.",
         "Choose the day of the reversal."},
        {"reasonTooLong", "冲销原因不能超过 2,000 个字符。", "Alasan tidak boleh lebih dari 2.000 karakter.",
         "Lý do không được dài quá 2.000 ký tự.", "The reason cannot be longer than 2,000 characters."},
        {"reasonUnsound", "冲销原因含有无法保存的字符。", "Alasan memuat karakter yang tidak dapat disimpan.",
         "Lý do chứa ký tự không lưu được.", "The reason contains a character that cannot be stored."},
        {"notFound", "此记录不存在，或您无权查看。", "Catatan ini tidak ada atau tidak terlihat oleh Anda.",
         "Bút toán này không tồn tại hoặc bạn không xem được.", "This entry does not exist or is not visible to you."},
        {"isReversal", "冲销记录不能再次冲销。请重新录入原记录。",
         "Pembatalan tidak dapat dibatalkan lagi. Catat kembali entri aslinya.",
         "Không thể đảo một bút toán đảo. Hãy ghi lại bút toán ban đầu.",
         "A reversal cannot be reversed. Record the entry again instead."},
        {"alreadyReversed", "此记录已被冲销。", "Catatan ini sudah dibatalkan.", "Bút toán này đã được đảo.",
         "This entry has already been reversed."},
        capitalCorrection,
        dividendCorrection,
        {"noLegs", "此记录没有资金变动。", "Catatan ini tidak memuat pergerakan dana.",
         "Bút toán này không có biến động tiền.", "This entry moves no money."},
        {"notPermitted", "您没有冲销此记录的权限。", "Anda tidak berhak membatalkan catatan ini.",
         "Bạn không có quyền đảo bút toán này.", "You do not have permission to reverse this entry."},
        {"refundsExist", "此收入已有退款。请先冲销这些退款。",
         "Pemasukan ini sudah dikembalikan sebagian atau seluruhnya. Batalkan pengembalian dananya lebih dahulu.",
         "Khoản thu này đã có hoàn tiền. Hãy đảo các khoản hoàn tiền trước.",
         "This income has refunds. Reverse the refunds first."},
        {"accountArchived", "此记录涉及的账户已归档，不能再记账。",
         "Salah satu rekeningnya sudah diarsipkan dan tidak menerima catatan baru.",
         "Một tài khoản của bút toán này đã lưu trữ nên không ghi thêm được.",
         "One of its accounts is archived and takes no new entries."},
        {"inFuture", "日期不能晚于明天。", "Tanggal tidak boleh lebih dari besok.", "Ngày không được sau ngày mai.",
         "The day cannot be later than tomorrow."},
        {"beforeStart", "日期早于记账起始日期。", "Tanggal mendahului tanggal mulai pembukuan.",
         "Ngày này trước ngày bắt đầu ghi sổ.", "The day lies before the bookkeeping start date."},
        {"beforeOriginal", "日期早于被冲销的记录。", "Tanggal mendahului catatan yang dibatalkan.",
         "Ngày này trước bút toán được đảo.", "The day lies before the entry that is reversed."},
        {"insufficientFunds", "员工账户中的这笔钱已经用掉。请先冲销相关支出，或补充资金。",
         "Dana ini sudah dipakai dari rekening karyawan. Batalkan pengeluarannya lebih dahulu atau tambah dananya.",
         "Số tiền này trong tài khoản nhân viên đã được chi. Hãy đảo khoản chi trước hoặc cấp thêm quỹ.",
         "The money on the employee's account has been spent. Reverse the expense first, or add funds."},
        {"balanceLimit", "冲销后的余额将超出支持范围。", "Saldo setelah pembatalan melampaui batas yang didukung.",
         "Số dư sau khi đảo sẽ vượt quá giới hạn hỗ trợ.",
         "The balance after the reversal would exceed the supported range."},
    };
    return table;
}

std::string_view ReversalWords::key(ReversalRules::Refusal refusal)
{
    switch (refusal) {
        using enum ReversalRules::Refusal;
    case inactiveMember:
        return "inactiveMember";
    case invalidDay:
        return "invalidDay";
    case reasonTooLong:
        return "reasonTooLong";
    case invalidKey:
    case reasonUnsound:
        return "reasonUnsound";
    case notFound:
        return "notFound";
    case isReversal:
        return "isReversal";
    case alreadyReversed:
        return "alreadyReversed";
    case capitalCorrection:
        return "capitalCorrection";
    case dividendCorrection:
        return "dividendCorrection";
    case noLegs:
        return "noLegs";
    case notPermitted:
        return "notPermitted";
    case refundsExist:
        return "refundsExist";
    case accountArchived:
        return "accountArchived";
    case inFuture:
        return "inFuture";
    case beforeStart:
        return "beforeStart";
    case beforeOriginal:
        return "beforeOriginal";
    case insufficientFunds:
        return "insufficientFunds";
    case balanceLimit:
        return "balanceLimit";
    }
    return {};
}

std::string_view ReversalRules::text(Refusal refusal, std::string_view locale)
{
    return ReversalWords::words().text(ReversalWords::key(refusal), locale);
}
