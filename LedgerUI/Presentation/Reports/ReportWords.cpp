#include "LedgerUI/Presentation/Reports/ReportWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

const WordTable& reportWords()
{
    static const WordTable table{
        {"income", "收入", "Pemasukan", "Thu", "Income"},
        {"expense", "支出", "Pengeluaran", "Chi", "Expense"},
        {"net", "净额", "Selisih", "Chênh lệch", "Net"},
        {"other", "其他变动", "Pergerakan lain", "Biến động khác", "Other movements"},
        {"movement.all", "全部变动", "Semua pergerakan", "Mọi biến động", "All movements"},
        {"movement.income", "收入", "Pemasukan", "Thu", "Income"},
        {"movement.expense", "支出", "Pengeluaran", "Chi", "Expense"},
        {"movement.refund", "退款", "Pengembalian dana", "Hoàn tiền", "Refunds"},
        {"movement.transfer", "转账", "Transfer", "Chuyển nội bộ", "Transfers"},
        {"movement.exchange", "换汇", "Penukaran mata uang", "Đổi ngoại tệ", "Exchanges"},
        {"movement.opening", "期初余额", "Saldo awal", "Số dư đầu kỳ", "Opening balances"},
        {"movement.capital", "出资", "Setoran modal", "Góp vốn", "Capital"},
        {"movement.dividend", "股利", "Dividen", "Cổ tức", "Dividends"},
        {"movement.other", "其他", "Lainnya", "Khác", "Others"},
        {"accounts.one", "1 个账户", "1 rekening", "1 tài khoản", "1 account"},
        {"accounts.many", "%1 个账户", "%1 rekening", "%1 tài khoản", "%1 accounts"},
        {"noCategory", "未分类", "Tanpa kategori", "Chưa phân loại", "No category"},
        {"otherCategories", "其他分类", "Kategori lain", "Danh mục khác", "Other categories"},
        {"percent", "%1%", "%1 %", "%1 %", "%1 %"},
        {"receipts.one", "本期有 1 笔记录没有凭证", "1 catatan pada periode ini belum punya bukti",
         "1 bút toán trong kỳ chưa có chứng từ", "1 entry in this period has no receipt"},
        {"receipts.many", "本期有 %1 笔记录没有凭证", "%1 catatan pada periode ini belum punya bukti",
         "%1 bút toán trong kỳ chưa có chứng từ", "%1 entries in this period have no receipt"},
        {"float.empty", "“%1”已无 %2 余额", "%1 tidak lagi punya saldo %2", "%1 không còn số dư %2",
         "%1 has no %2 balance left"},
        {"float.negative", "“%1”的余额为负：%2", "Saldo %1 negatif: %2", "Số dư của %1 bị âm: %2",
         "%1 is below zero: %2"},
        {"startDate", "尚未确认记账起始日期", "Tanggal mulai pembukuan belum dikonfirmasi",
         "Chưa xác nhận ngày bắt đầu ghi sổ", "The bookkeeping start date is not confirmed"},
        {"openings.one", "有 1 个账户币种尚未录入期初余额", "1 rekening belum punya saldo awal",
         "1 tài khoản chưa có số dư đầu kỳ", "1 account has no opening balance"},
        {"openings.many", "有 %1 个账户币种尚未录入期初余额", "%1 rekening belum punya saldo awal",
         "%1 tài khoản chưa có số dư đầu kỳ", "%1 accounts have no opening balance"},
        {"unpaid", "已分配股利尚有 %1 未支付", "Dividen %1 yang sudah dialokasikan belum dibayar",
         "Cổ tức đã phân bổ còn %1 chưa trả", "%1 of allocated dividends is unpaid"},
        {"advances", "尚有 %1 预付股利未抵扣", "Uang muka dividen %1 belum diperhitungkan",
         "Còn %1 cổ tức tạm ứng chưa cấn trừ", "%1 of dividend advances is not yet applied"},
    };
    return table;
}
