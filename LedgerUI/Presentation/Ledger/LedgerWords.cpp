#include "LedgerUI/Presentation/Ledger/LedgerWords.h"

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Words.h"

const WordTable& LedgerWords::table()
{
    static const WordTable words{{
        // what an entry is
        {"kind.income", "收入", "Pemasukan", "Thu", "Income"},
        {"kind.expense", "支出", "Pengeluaran", "Chi", "Expense"},
        {"kind.transfer", "转账", "Transfer", "Chuyển nội bộ", "Transfer"},
        {"kind.funding", "拨款", "Pendanaan", "Cấp quỹ", "Funding"},
        {"kind.return", "退回", "Setoran kembali", "Hoàn quỹ", "Return"},
        {"kind.exchange", "兑换", "Penukaran", "Đổi ngoại tệ", "Exchange"},
        {"kind.refund", "退款", "Pengembalian dana", "Hoàn tiền", "Refund"},
        {"kind.reversal", "冲销", "Pembatalan", "Đảo bút toán", "Reversal"},
        {"kind.opening", "期初余额", "Saldo awal", "Số dư đầu kỳ", "Opening balance"},
        {"kind.capital", "出资", "Setoran modal", "Góp vốn", "Contribution"},
        {"kind.dividend", "分红", "Dividen", "Cổ tức", "Dividend"},
        {"kind.dividend.payment", "分红支付", "Pembayaran dividen", "Chi trả cổ tức", "Dividend payment"},
        {"kind.dividend.advance", "预付分红", "Dividen dibayar di muka", "Tạm ứng cổ tức", "Dividend advance"},
        {"kind.dividend.return", "退回预付分红", "Pengembalian dividen di muka", "Hoàn tạm ứng cổ tức",
         "Dividend advance returned"},
        {"account.hidden", "其他账户", "Rekening lain", "Tài khoản khác", "Another account"},
        {"member.hidden", "其他成员", "Anggota lain", "Thành viên khác", "Another member"},
        {"category.unknown", "未知类别", "Kategori tidak dikenal", "Hạng mục không rõ", "Unknown category"},

        // the page
        {"title", "账本", "Buku besar", "Sổ cái", "Ledger"},
        {"newEntry", "记一笔", "Catatan baru", "Bút toán mới", "New entry"},
        {"newEntry.kinds", "选择记录类型", "Pilih jenis catatan", "Chọn loại bút toán", "Choose the kind of entry"},
        {"newEntry.busy", "请等待当前操作完成。", "Tunggu hingga proses saat ini selesai.",
         "Hãy đợi thao tác hiện tại hoàn tất.", "Wait until the current operation ends."},
        {"newEntry.none", "没有可用于此类型记录的账户。", "Tidak ada rekening yang dapat dipakai untuk jenis ini.",
         "Không có tài khoản nào dùng được cho loại này.", "No account is available to you for this kind."},
        {"search", "搜索备注、类别、参考号", "Cari catatan, kategori, referensi", "Tìm ghi chú, hạng mục, tham chiếu",
         "Search notes, categories, references"},
        {"filters", "筛选", "Filter", "Bộ lọc", "Filters"},
        {"filters.clear", "清除筛选", "Hapus filter", "Xóa bộ lọc", "Clear filters"},
        {"filter.kinds", "类型", "Jenis", "Loại", "Kind"},
        {"filter.accounts", "账户", "Rekening", "Tài khoản", "Account"},
        {"filter.categories", "类别", "Kategori", "Hạng mục", "Category"},
        {"filter.currencies", "币种", "Mata uang", "Tiền tệ", "Currency"},
        {"filter.receipts", "票据", "Bukti", "Chứng từ", "Receipts"},
        {"filter.text", "搜索", "Pencarian", "Tìm kiếm", "Search"},
        {"filter.period", "期间", "Periode", "Kỳ", "Period"},
        {"filter.counted", "%1 %2", "%1 %2", "%1 %2", "%1 %2"},
        {"filter.all", "全部", "Semua", "Tất cả", "All"},
        {"filter.attached", "有票据", "Dengan bukti", "Có chứng từ", "With receipts"},
        {"filter.missing", "缺少票据", "Tanpa bukti", "Chưa có chứng từ", "Without receipts"},
        {"chip", "%1：%2", "%1: %2", "%1: %2", "%1: %2"},
        {"chip.several", "%1：%2 及另外 %3 项", "%1: %2 dan %3 lainnya", "%1: %2 và %3 mục khác", "%1: %2 and %3 more"},
        {"chip.remove", "移除筛选“%1”", "Hapus filter “%1”", "Bỏ bộ lọc “%1”", "Remove filter “%1”"},
        {"quoted", "“%1”", "“%1”", "“%1”", "“%1”"},
        {"detail.toggle", "显示或隐藏详情", "Tampilkan atau sembunyikan rincian", "Hiện hoặc ẩn chi tiết",
         "Show or hide detail"},
        {"detail.close", "关闭详情", "Tutup rincian", "Đóng chi tiết", "Close detail"},

        // table
        {"column.date", "日期", "Tanggal", "Ngày", "Date"},
        {"column.entry", "记录", "Catatan", "Bút toán", "Entry"},
        {"column.account", "账户", "Rekening", "Tài khoản", "Account"},
        {"column.member", "记录人", "Dicatat oleh", "Người ghi", "Recorded by"},
        {"column.amount", "金额", "Jumlah", "Số tiền", "Amount"},
        {"reversed", "已冲销", "Dibatalkan", "Đã đảo", "Reversed"},
        {"to", "至 %1", "ke %1", "đến %1", "to %1"},
        {"receipts.one", "1 张票据", "1 bukti", "1 chứng từ", "1 receipt"},
        {"receipts.many", "%1 张票据", "%1 bukti", "%1 chứng từ", "%1 receipts"},
        {"table", "账本记录", "Catatan buku besar", "Các bút toán", "Ledger entries"},
        {"spoken.out", "支出 %1 %2", "keluar %1 %2", "chi %1 %2", "minus %1 %2"},
        {"spoken.in", "收入 %1 %2", "masuk %1 %2", "thu %1 %2", "plus %1 %2"},
        {"spoken.moved", "%1 %2", "%1 %2", "%1 %2", "%1 %2"},

        // totals and selection
        {"entries.one", "1 条记录", "1 catatan", "1 bút toán", "1 entry"},
        {"entries.many", "%1 条记录", "%1 catatan", "%1 bút toán", "%1 entries"},
        {"selected.one", "已选 1 条", "1 dipilih", "Đã chọn 1", "1 selected"},
        {"selected.many", "已选 %1 条", "%1 dipilih", "Đã chọn %1", "%1 selected"},
        {"totals.all", "按币种的合计", "Total per mata uang", "Tổng theo tiền tệ", "Totals by currency"},
        {"totals.in", "流入", "Masuk", "Tiền vào", "In"},
        {"totals.out", "流出", "Keluar", "Tiền ra", "Out"},
        {"totals.net", "净额", "Neto", "Ròng", "Net"},
        {"totals.hint", "不计转账。", "Transfer tidak dihitung.", "Không tính chuyển nội bộ.",
         "Transfers are not counted."},
        {"totals.more", "显示全部币种", "Tampilkan semua mata uang", "Hiện tất cả loại tiền tệ", "Show all currencies"},

        // detail
        {"detail", "记录详情", "Rincian catatan", "Chi tiết bút toán", "Entry detail"},
        {"detail.date", "记账日期", "Tanggal", "Ngày ghi sổ", "Date"},
        {"detail.recorded", "记录时间", "Dicatat", "Thời điểm ghi", "Recorded"},
        {"detail.member", "记录人", "Dicatat oleh", "Người ghi", "Recorded by"},
        {"detail.note", "备注", "Catatan", "Ghi chú", "Note"},
        {"detail.reference", "参考号", "Referensi", "Tham chiếu", "Reference"},
        {"detail.participant", "股东", "Pemegang saham", "Cổ đông", "Shareholder"},
        {"detail.movements", "资金变动", "Pergerakan dana", "Biến động tiền", "Movements"},
        {"detail.balanceAfter", "本笔后余额", "Saldo setelah catatan ini", "Số dư sau bút toán này",
         "Balance after this entry"},
        {"detail.links", "关联记录", "Catatan terkait", "Bút toán liên quan", "Linked entries"},
        {"detail.receipts", "票据", "Bukti", "Chứng từ", "Receipts"},
        {"link.reversedBy", "已被冲销", "Dibatalkan oleh", "Bị đảo bởi", "Reversed by"},
        {"link.reverses", "冲销的记录", "Membatalkan", "Đảo cho", "Reverses"},
        {"link.refunds", "退款所对应的收入", "Mengembalikan", "Hoàn cho khoản thu", "Refund of"},
        {"link.refundedBy", "退款", "Dikembalikan melalui", "Được hoàn bởi", "Refunded by"},
        {"link.text", "%1 · %2", "%1 · %2", "%1 · %2", "%1 · %2"},
        {"link.hidden", "该记录不可查看", "Catatan itu tidak dapat dilihat", "Không xem được bút toán đó",
         "That entry is not visible to you"},
        {"reverse", "冲销…", "Batalkan…", "Đảo bút toán…", "Reverse…"},
        {"whyNot.isReversal", "冲销记录不能再次冲销。", "Pembatalan tidak dapat dibatalkan lagi.",
         "Không thể đảo một bút toán đảo.", "A reversal cannot be reversed."},
        {"whyNot.alreadyReversed", "此记录已被冲销。", "Catatan ini sudah dibatalkan.", "Bút toán này đã được đảo.",
         "This entry has already been reversed."},
        {"whyNot.noLegs", "此记录没有资金变动。", "Catatan ini tidak memuat pergerakan dana.",
         "Bút toán này không có biến động tiền.", "This entry moves no money."},
        {"whyNot.capital", "出资在“资本与分红”中更正。", "Setoran modal dikoreksi di Modal & dividen.",
         "Khoản góp vốn được sửa trong Vốn & cổ tức.", "Contributions are corrected under Capital & dividends."},
        {"whyNot.dividends", "分红款项在“资本与分红”中更正。", "Uang dividen dikoreksi di Modal & dividen.",
         "Tiền cổ tức được sửa trong Vốn & cổ tức.", "Dividend money is corrected under Capital & dividends."},

        // balances
        {"balances", "账户余额", "Saldo rekening", "Số dư tài khoản", "Account balances"},
        {"balances.company", "公司账户", "Rekening perusahaan", "Tài khoản công ty", "Company accounts"},
        {"balances.employee", "员工备用金", "Kas kecil karyawan", "Quỹ tạm ứng nhân viên", "Employee petty cash"},
        {"balances.refund", "退款账户", "Rekening pengembalian dana", "Tài khoản hoàn tiền", "Refund accounts"},
        {"balances.archived", "已归档", "Diarsipkan", "Đã lưu trữ", "Archived"},
        {"balances.total", "合计", "Total", "Tổng", "Total"},
        {"balances.none", "没有可查看的账户。", "Tidak ada rekening yang dapat Anda lihat.",
         "Không có tài khoản nào bạn được xem.", "There is no account that you may view."},

        // nothing to show
        {"empty.title", "还没有记录", "Belum ada catatan", "Chưa có bút toán nào", "No entries yet"},
        {"empty.body", "记录的每一笔收支都会显示在这里。", "Setiap catatan yang dibuat akan muncul di sini.",
         "Mỗi bút toán được ghi sẽ hiện ở đây.", "Every entry that is recorded appears here."},
        {"empty.bodyRecord", "记下第一笔收入、支出或转账，账本便从这里开始。",
         "Catat pemasukan, pengeluaran, atau transfer pertama untuk memulai buku besar.",
         "Hãy ghi khoản thu, khoản chi hoặc khoản chuyển đầu tiên để bắt đầu sổ cái.",
         "Record the first income, expense or transfer to begin the ledger."},
        {"empty.bodySteps", "先录入现有资金，日常记录便从这里开始。",
         "Mulailah dari dana yang sudah ada, lalu lanjutkan dengan catatan sehari-hari.",
         "Hãy bắt đầu từ số tiền đang có, rồi ghi các bút toán hằng ngày.",
         "Start with the money you already hold. Entries follow from there."},
        {"step.opening", "录入期初余额", "Catat saldo awal", "Ghi số dư đầu kỳ", "Record opening balances"},
        {"step.openingBody", "启用账本前已有的资金，不计为经营收入。",
         "Untuk dana yang ada sebelum buku besar ini. Bukan pendapatan usaha.",
         "Dành cho tiền có trước sổ cái này. Không phải doanh thu.",
         "For funds held before this ledger. Not operating income."},
        {"step.openingGo", "期初余额…", "Saldo awal…", "Số dư đầu kỳ…", "Opening balances…"},
        {"step.record", "记下第一笔", "Buat catatan pertama", "Ghi bút toán đầu tiên", "Record the first entry"},
        {"step.recordBody", "支出、收入、转账或兑换。", "Pengeluaran, pemasukan, transfer, atau penukaran.",
         "Chi, thu, chuyển nội bộ hoặc đổi ngoại tệ.", "Expense, income, transfer or exchange."},
        {"step.recordGo", "记一笔…", "Catatan baru…", "Bút toán mới…", "New entry…"},
        {"empty.noAccess", "看不到任何记录", "Tidak ada catatan yang terlihat", "Không có bút toán nào hiển thị",
         "No entries to see"},
        {"empty.noAccessBody", "您还没有可查看的账户。请联系公司管理员。",
         "Anda belum memiliki rekening yang dapat dilihat. Hubungi administrator perusahaan.",
         "Bạn chưa được xem tài khoản nào. Hãy liên hệ quản trị viên công ty.",
         "You may not view any account yet. Ask your company administrator."},
        {"period.title", "%1没有记录", "Tidak ada catatan pada %1", "Không có bút toán trong %1", "No entries in %1"},
        {"period.body", "最近的记录在 %1。", "Catatan terbaru ada pada %1.", "Bút toán gần nhất ở %1.",
         "The latest entries are in %1."},
        {"period.go", "转到 %1", "Buka %1", "Đến %1", "Go to %1"},
        {"noMatch.title", "没有符合条件的记录", "Tidak ada catatan yang cocok", "Không có bút toán phù hợp",
         "No entries match"},
        {"noMatch.one", "去掉筛选%1后有 1 条记录。", "1 catatan cocok tanpa filter %1.",
         "Có 1 bút toán khớp nếu bỏ bộ lọc %1.", "1 entry matches without the filter %1."},
        {"noMatch.many", "去掉筛选%1后有 %2 条记录。", "%2 catatan cocok tanpa filter %1.",
         "Có %2 bút toán khớp nếu bỏ bộ lọc %1.", "%2 entries match without the filter %1."},
        {"noMatch.body", "没有记录同时满足所有条件。", "Tidak ada catatan yang memenuhi semua syarat.",
         "Không có bút toán nào thỏa mọi điều kiện.", "No entry meets all the conditions."},
        {"noMatch.drop", "去掉此筛选", "Hapus filter ini", "Bỏ bộ lọc này", "Drop this filter"},
        {"noMatch.allTime", "在全部期间中搜索", "Cari di semua periode", "Tìm trong mọi kỳ", "Search all periods"},
        {"latestShown", "本期没有记录，显示 %1。", "Belum ada catatan pada periode ini; menampilkan %1.",
         "Kỳ này chưa có bút toán; đang hiện %1.", "Nothing is recorded this month yet; showing %1."},
        {"preparing", "正在准备账本…", "Menyiapkan buku besar…", "Đang chuẩn bị sổ cái…", "Preparing the ledger…"},

        // actions
        {"action.open", "打开", "Buka", "Mở", "Open"},
        {"action.copy", "复制", "Salin", "Sao chép", "Copy"},
        {"action.onlyAccount", "只看“%1”", "Hanya tampilkan %1", "Chỉ hiện %1", "Show only %1"},
    }};
    return words;
}

QString LedgerWords::text(std::string_view key, std::string_view locale)
{
    return qString(table().text(key, locale));
}

QString LedgerWords::filled(std::string_view key, std::string_view locale,
                            std::initializer_list<std::string_view> arguments)
{
    return QString::fromStdString(table().filled(key, locale, arguments));
}

QString LedgerWords::counted(std::string_view key, std::size_t count, std::string_view locale)
{
    return countedIn(locale, table(), key, count);
}
