#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& exportWords()
{
    static const WordTable words{{
        {"action", "导出…", "Ekspor…", "Xuất…", "Export…"},
        {"title", "导出账本", "Ekspor buku besar", "Xuất sổ cái", "Export ledger"},
        {"save", "保存 CSV…", "Simpan CSV…", "Lưu CSV…", "Save CSV…"},
        {"saveDialog", "保存导出文件", "Simpan berkas ekspor", "Lưu tệp xuất", "Save the export file"},

        // what the file is to hold
        {"days", "日期", "Tanggal", "Ngày", "Dates"},
        {"firstDay", "第一天", "Hari pertama", "Ngày đầu tiên", "First day"},
        {"lastDay", "最后一天", "Hari terakhir", "Ngày cuối cùng", "Last day"},
        {"to", "至", "s.d.", "đến", "to"},
        {"openCalendar", "打开日历", "Buka kalender", "Mở lịch", "Open the calendar"},
        {"accounts", "账户", "Rekening", "Tài khoản", "Accounts"},
        {"accounts.all", "所有可见账户（%1）", "Semua rekening yang terlihat (%1)", "Mọi tài khoản xem được (%1)",
         "All visible accounts (%1)"},
        {"accounts.allHint", "日后变为可见的账户也会包含在内，无需逐一列出。",
         "Rekening yang kelak terlihat ikut disertakan tanpa perlu dicantumkan.",
         "Tài khoản xem được về sau cũng được gồm vào mà không cần liệt kê.",
         "Accounts that become visible later are included without being listed."},
        {"currencies", "币种", "Mata uang", "Loại tiền", "Currencies"},
        {"currencies.all", "所有币种（%1）", "Semua mata uang (%1)", "Mọi loại tiền (%1)", "All currencies (%1)"},
        {"all", "全部", "Semua", "Tất cả", "All"},
        {"search", "在列表中搜索", "Cari dalam daftar", "Tìm trong danh sách", "Search the list"},
        {"noMatch", "没有匹配的选项。", "Tidak ada pilihan yang cocok.", "Không có lựa chọn phù hợp.",
         "Nothing in the list matches."},
        {"kinds", "记录类型", "Jenis catatan", "Loại bút toán", "Types of entry"},
        {"receiptIndex", "包含票据索引", "Sertakan indeks bukti", "Gồm danh mục chứng từ", "Include receipt index"},
        {"receiptIndexHint", "加入票据数量和文件名；不导出图片文件。",
         "Menambahkan jumlah dan nama berkas bukti; berkas gambar tidak diekspor.",
         "Thêm số lượng và tên tệp chứng từ; không xuất tệp hình ảnh.",
         "Adds receipt counts and filenames; image files are not exported."},
        {"source", "导出哪些记录", "Catatan yang diekspor", "Bút toán được xuất", "Entries to export"},
        {"source.selected", "所选记录（%1）", "Terpilih (%1)", "Đã chọn (%1)", "Selected (%1)"},
        {"source.shown", "页面所示", "Seperti di halaman", "Như trên trang", "As on the page"},
        {"source.chosen", "自行选择", "Pilih sendiri", "Tự chọn", "Choose here"},
        {"narrowed", "页面上的搜索以及类别、票据、记录人、金额、状态和报表数字筛选不会缩小此文件的范围。",
         "Pencarian serta filter kategori, bukti, pencatat, jumlah, status, dan angka laporan di halaman tidak "
         "mempersempit berkas ini.",
         "Tìm kiếm và bộ lọc hạng mục, chứng từ, người ghi, số tiền, trạng thái, số liệu báo cáo trên trang không thu "
         "hẹp tệp này.",
         "The search and the page's filters by category, receipts, person, amount, standing and report figure do not "
         "narrow this file."},

        // what it will hold
        {"preview", "预览", "Pratinjau", "Xem trước", "Preview"},
        {"preview.transactions", "交易", "Transaksi", "Giao dịch", "Transactions"},
        {"preview.entries", "分录，每条一行", "Baris rekening, satu per baris", "Dòng tài khoản, mỗi dòng một hàng",
         "Entries, one row each"},
        {"preview.accounts", "账户", "Rekening", "Tài khoản", "Accounts"},
        {"preview.receipts", "票据", "Bukti", "Chứng từ", "Receipts"},
        {"rows", "每条账户分录一行，保留原币种、最小货币单位、操作人、类别、备注、冲销和参考号。",
         "Satu baris untuk setiap entri rekening, dengan mata uang asli, satuan terkecil, operator, kategori, "
         "keterangan, pembatalan, dan referensi.",
         "Mỗi bút toán tài khoản một hàng, giữ nguyên loại tiền gốc, đơn vị nhỏ nhất, người ghi, hạng mục, ghi chú, "
         "đảo bút toán và tham chiếu.",
         "One row per account entry, preserving original currency, minor units, operator, category, notes, reversals, "
         "and references."},
        {"fileName", "文件名", "Nama berkas", "Tên tệp", "File name"},
        {"recheck", "写入文件前会再次核对记录。若此范围内有任何变化，则不写入文件，并刷新预览。",
         "Catatan diperiksa lagi sebelum berkas ditulis. Bila ada yang berubah dalam cakupan ini, tidak ada yang "
         "ditulis dan pratinjau diperbarui.",
         "Bản ghi được kiểm tra lại trước khi ghi tệp. Nếu có gì thay đổi trong phạm vi này, không tệp nào được ghi "
         "và bản xem trước được làm mới.",
         "The records are checked again before the file is written. If anything in this scope has changed, nothing is "
         "written and the preview is renewed."},
        {"format", "%1 列，UTF-8", "%1 kolom, UTF-8", "%1 cột, UTF-8", "%1 columns, UTF-8"},
        {"renewed", "记录已变化，预览已更新：%1。", "Catatan telah berubah dan pratinjau diperbarui: %1.",
         "Bản ghi đã thay đổi và bản xem trước đã được cập nhật: %1.",
         "The records have changed, and the preview is up to date: %1."},

        // what keeps it from being made
        {"day.unreadable", "请输入日期，例如 %1。", "Isi tanggal, misalnya %1.", "Nhập ngày, ví dụ %1.",
         "Enter a day, such as %1."},
        {"days.order", "最后一天早于第一天。", "Hari terakhir mendahului hari pertama.",
         "Ngày cuối cùng trước ngày đầu tiên.", "The last day is before the first."},
        {"kinds.none", "请至少选择一种记录类型。", "Pilih sedikitnya satu jenis catatan.",
         "Chọn ít nhất một loại bút toán.", "Choose at least one type of entry."},
        {"lost", "%1（已无法查看）", "%1 (tidak terlihat lagi)", "%1 (không xem được nữa)", "%1 (no longer seen)"},
        {"lost.takeOut", "已无法查看：%1。请在列表中取消勾选，再保存文件。",
         "Tidak terlihat lagi: %1. Hapus centangnya dalam daftar agar berkas dapat disimpan.",
         "Không xem được nữa: %1. Hãy bỏ chọn trong danh sách để lưu tệp.",
         "No longer seen: %1. Untick in the list what you no longer see, then save the file."},
        {"lost.onPage", "已无法查看：%1。请先在页面上移除此筛选，或改为自行选择。",
         "Tidak terlihat lagi: %1. Lepaskan dari saringan halaman, atau pilih sendiri di sini.",
         "Không xem được nữa: %1. Hãy gỡ khỏi bộ lọc của trang hoặc tự chọn tại đây.",
         "No longer seen: %1. Take what you no longer see out of the page's filters, or choose here instead."},
        {"failed", "无法创建导出文件。请重试。", "Berkas ekspor tidak dapat dibuat. Coba lagi.",
         "Không tạo được tệp xuất. Hãy thử lại.", "The export file could not be created. Try again."},

        // on paper
        {"selected.export", "导出这 %1 条…", "Ekspor %1 catatan ini…", "Xuất %1 bút toán này…", "Export these %1…"},
        {"selected.print", "打印这 %1 条…", "Cetak %1 catatan ini…", "In %1 bút toán này…", "Print these %1…"},
        {"print.entry", "打印此记录…", "Cetak catatan ini…", "In bút toán này…", "Print this entry…"},
        {"print.reversed", "%1（已冲销）", "%1 (dibatalkan)", "%1 (đã đảo)", "%1 (reversed)"},
        {"print.id", "编号", "Nomor", "Mã số", "Number"},
        {"statement", "账户对账单", "Rekening koran", "Sao kê tài khoản", "Account statement"},
        {"statement.opening", "期初余额", "Saldo awal", "Số dư đầu kỳ", "Opening balance"},
        {"statement.closing", "期末余额", "Saldo akhir", "Số dư cuối kỳ", "Closing balance"},
        {"statement.sum", "合计", "Total", "Tổng", "Total"},
        {"statement.balance", "余额", "Saldo", "Số dư", "Balance"},
        {"statement.unknown", "可见记录不足以得出余额。", "Saldo tidak diketahui: tidak semua catatan terlihat.",
         "Không rõ số dư: bạn không xem được mọi bút toán.", "Balances are not known: not every entry can be seen."},
        {"done", "已保存 %1", "%1 tersimpan", "Đã lưu %1", "Saved %1"},
    }};
    return words;
}
