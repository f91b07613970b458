#include "LedgerUI/Presentation/Entry/EntryFormWords.h"

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/Words.h"

const WordTable& entryFormWords()
{
    static const WordTable table{
        {"newEntry", "新记录", "Catatan baru", "Bút toán mới", "New entry"},
        {"title.expense", "新记录：支出", "Catatan baru: pengeluaran", "Bút toán mới: chi", "New entry: expense"},
        {"title.income", "新记录：收入", "Catatan baru: pemasukan", "Bút toán mới: thu", "New entry: income"},
        {"title.transfer", "新记录：内部划拨", "Catatan baru: transfer", "Bút toán mới: chuyển nội bộ",
         "New entry: transfer"},
        {"title.exchange", "新记录：换汇", "Catatan baru: penukaran", "Bút toán mới: đổi ngoại tệ",
         "New entry: exchange"},
        {"title.refund", "新记录：退款", "Catatan baru: pengembalian dana", "Bút toán mới: hoàn tiền",
         "New entry: refund"},
        {"title.opening", "新记录：期初余额", "Catatan baru: saldo awal", "Bút toán mới: số dư đầu kỳ",
         "New entry: opening balance"},
        {"kinds", "记账类型", "Jenis catatan", "Loại bút toán", "Type of entry"},
        {"saveRefund", "保存退款", "Simpan pengembalian dana", "Lưu khoản hoàn tiền", "Save refund"},
        {"account", "账户", "Rekening", "Tài khoản", "Account"},
        {"fromAccount", "转出账户", "Dari rekening", "Từ tài khoản quỹ", "From account"},
        {"toAccount", "转入账户", "Ke rekening", "Đến tài khoản quỹ", "To account"},
        {"sentFrom", "转出账户", "Dikirim dari", "Chuyển đi từ", "Sent from"},
        {"receivedIn", "转入账户", "Diterima di", "Nhận về tại", "Received in"},
        {"currency", "币种", "Mata uang", "Loại tiền tệ", "Currency"},
        {"amount", "金额", "Jumlah", "Số tiền", "Amount"},
        {"receivedAmount", "转入金额", "Jumlah diterima", "Số tiền nhận về", "Received amount"},
        {"category", "类别", "Kategori", "Hạng mục", "Category"},
        {"categoryTiles", "常用类别", "Kategori cepat", "Hạng mục nhanh", "Quick categories"},
        {"original", "原收入记录", "Pemasukan asal", "Khoản thu gốc", "Original income"},
        {"chooseOriginal", "选择要退款的收入", "Pilih pemasukan yang dikembalikan", "Chọn khoản thu cần hoàn",
         "Choose the income to refund"},
        {"noOriginal", "不关联收入记录", "Tanpa catatan pemasukan", "Không gắn với khoản thu", "No recorded income"},
        {"reference", "外部退款参考号", "Referensi pengembalian eksternal", "Mã tham chiếu hoàn tiền bên ngoài",
         "External refund reference"},
        {"refundable", "尚可退款：%1", "Masih dapat dikembalikan: %1", "Còn hoàn được: %1", "Still refundable: %1"},
        {"openingDay", "期初余额按记账起始日期入账", "Saldo awal dibukukan pada tanggal mulai pembukuan",
         "Số dư đầu kỳ được ghi vào ngày bắt đầu ghi sổ", "Opening balances are booked on the bookkeeping start date"},
        {"openingToday", "账套启用日期尚未确认，期初余额按今天入账",
         "Tanggal mulai pembukuan belum ditetapkan: dibukukan pada hari ini",
         "Chưa xác nhận ngày bắt đầu ghi sổ: được ghi vào hôm nay",
         "No bookkeeping start date is confirmed: booked today"},
        {"openingAfterHistory", "自 %1 起已有记录：期初余额会加在这些记录之上。",
         "Sudah ada catatan sejak %1: saldo awal menambah apa yang tercatat sejak itu.",
         "Đã có bút toán từ %1: số dư đầu kỳ được cộng thêm vào những gì đã ghi.",
         "There are entries from %1 on: the opening balance is added to what they recorded."},
        {"noOpeningAccount", "没有账户还能录入期初余额", "Tidak ada rekening yang masih dapat menerima saldo awal",
         "Không còn tài khoản nào nhận được số dư đầu kỳ", "No account can still take an opening balance"},
        {"chosenDay", "已选择的记账日期", "Tanggal pembukuan yang dipilih", "Ngày ghi sổ đã chọn",
         "Chosen bookkeeping date"},
        {"day", "记账日期", "Tanggal pembukuan", "Ngày ghi sổ", "Bookkeeping date"},
        {"day.today", "今天", "Hari ini", "Hôm nay", "Today"},
        {"day.unreadable", "无法识别此日期。", "Tanggal ini tidak dapat dibaca.", "Không đọc được ngày này.",
         "This is not a date."},
        {"day.tooLate", "日期不能晚于 %1。", "Tanggal tidak boleh setelah %1.", "Ngày không được sau %1.",
         "The date cannot be after %1."},
        {"day.tooEarly", "账套自 %1 启用，日期不能更早。", "Pembukuan dimulai pada %1. Tanggal tidak boleh lebih awal.",
         "Sổ bắt đầu từ %1. Ngày không được sớm hơn.", "The books start on %1. The date cannot be earlier."},
        {"day.keys", "输入日期，或用方向键和 +、− 调整", "Ketik tanggal, atau pakai tombol panah, + dan −",
         "Nhập ngày, hoặc dùng phím mũi tên, + và −", "Type a date, or use the arrow keys, + and −"},
        {"day.earlier", "上个月", "Bulan sebelumnya", "Tháng trước", "Previous month"},
        {"day.later", "下个月", "Bulan berikutnya", "Tháng sau", "Next month"},
        {"afterSaving.negative", "保存后余额为负", "Saldo menjadi negatif setelah disimpan", "Số dư sau khi lưu sẽ âm",
         "Balance after saving is negative"},
        {"limit.amount", "%1上限为 %2。", "%1 Batasnya %2.", "%1 Giới hạn là %2.", "%1 The limit is %2."},
        {"limit.balance", "%1，上限为 %2。", "%1. Batasnya %2.", "%1. Giới hạn là %2.", "%1. The limit is %2."},
        {"paste.negative", "剪贴板中的金额是负数，未粘贴。请输入大于零的金额，收支方向由记录类型决定。",
         "Jumlah di papan klip negatif, jadi tidak ditempel. Masukkan jumlah di atas nol; jenis catatan menentukan "
         "arahnya.",
         "Số tiền được sao chép là số âm nên không được dán. Hãy nhập số lớn hơn 0; loại bút toán quyết định thu hay "
         "chi.",
         "The amount on the clipboard is negative and was not pasted. Enter an amount above zero; the kind of entry "
         "decides the direction."},
        {"paste.several", "剪贴板包含多行或多个单元格，未粘贴。请只复制一个金额。",
         "Papan klip berisi beberapa baris atau sel, jadi tidak ditempel. Salin satu jumlah saja.",
         "Nội dung sao chép có nhiều dòng hoặc nhiều ô nên không được dán. Hãy chỉ sao chép một số tiền.",
         "The clipboard holds several lines or cells. Nothing was pasted; copy a single amount."},
        {"paste.notAnAmount", "剪贴板内容不是该币种的单个金额，未粘贴。",
         "Isi papan klip bukan satu jumlah dalam mata uang ini, jadi tidak ditempel.",
         "Nội dung sao chép không phải là một số tiền bằng loại tiền tệ này nên không được dán.",
         "The clipboard does not hold one amount in this currency. Nothing was pasted."},
        {"currencyReset", "%1%2", "%1 %2", "%1 %2", "%1 %2"},
        {"rateTitle", "折算汇率", "Kurs tersirat", "Tỷ giá suy ra", "Implied rate"},
        {"rateValue", "%1 %2", "%1 %2", "%1 %2", "%1 %2"},
        {"effect.before", "当前", "Saat ini", "Hiện tại", "Now"},
        {"effect.sent", "转出", "Dikirim", "Chuyển đi", "Sent"},
        {"effect.received", "转入", "Diterima", "Nhận về", "Received"},
        {"effect.after", "保存后", "Setelah disimpan", "Còn lại", "After saving"},
        {"effect.unseen", "您无权查看此账户的余额。", "Anda tidak dapat melihat saldo rekening ini.",
         "Bạn không được xem số dư tài khoản này.", "You cannot see the balance of this account."},
        {"purpose.funding", "这笔划拨将记为拨款。", "Transfer ini dicatat sebagai pendanaan.",
         "Khoản chuyển này được ghi là cấp quỹ.", "This transfer is recorded as funding."},
        {"purpose.return", "这笔划拨将记为退回。", "Transfer ini dicatat sebagai setoran kembali.",
         "Khoản chuyển này được ghi là hoàn quỹ.", "This transfer is recorded as a return."},
        {"reverse.expense", "冲销支出", "Batalkan pengeluaran", "Đảo khoản chi", "Reverse expense"},
        {"reverse.income", "冲销收入", "Batalkan pemasukan", "Đảo khoản thu", "Reverse income"},
        {"reverse.transfer", "冲销内部划拨", "Batalkan transfer", "Đảo khoản chuyển", "Reverse transfer"},
        {"reverse.exchange", "冲销换汇", "Batalkan penukaran", "Đảo khoản đổi ngoại tệ", "Reverse exchange"},
        {"reverse.refund", "冲销退款", "Batalkan pengembalian dana", "Đảo khoản hoàn tiền", "Reverse refund"},
        {"reverse.opening", "冲销期初余额", "Batalkan saldo awal", "Đảo số dư đầu kỳ", "Reverse opening balance"},
        {"reverse.kept", "再次尝试时将按原来的原因发送，冲销日期为 %1。",
         "Percobaan berikutnya mengirim alasan yang sama dan membukukan pembatalan pada %1.",
         "Lần thử sau sẽ gửi lại lý do này và ghi bút toán đảo vào ngày %1.",
         "The next attempt sends this reason again and books the reversal on %1."},
        {"reverse.done", "冲销已入账", "Pembatalan telah dibukukan", "Đã ghi bút toán đảo", "The reversal is posted"},
        {"reason", "原因", "Alasan", "Lý do", "Reason"},
        {"reasonRequired", "请填写冲销原因。", "Isi alasan pembatalan.", "Hãy nhập lý do đảo bút toán.",
         "Enter the reason for the reversal."},
    };
    return table;
}

QString entryWord(std::string_view key, std::string_view locale)
{
    for (const auto* table : {&entryFormWords(), &EntryWords::words(), &EntryCopy::words(), &ledgerWords()}) {
        if (table->contains(key))
            return wordIn(locale, *table, key);
    }
    return qString(key);
}
