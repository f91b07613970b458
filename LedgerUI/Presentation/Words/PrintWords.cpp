#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& printWords()
{
    static const WordTable table{
        // on paper
        {"pageOf", "%1 / %2", "%1 / %2", "%1 / %2", "%1 / %2"},
        {"period", "期间", "Periode", "Kỳ", "Period"},
        {"accounts", "账户", "Rekening", "Tài khoản", "Accounts"},
        {"accounts.all", "全部账户", "Semua rekening", "Tất cả tài khoản", "All accounts"},
        {"currency", "币种", "Mata uang", "Loại tiền", "Currency"},
        {"moment", "%1 %2", "%1 pukul %2", "%1 %2", "%1, %2"},
        {"asOf", "截至", "Per", "Tính đến", "As of"},
        // in the preview
        {"action", "打印…", "Cetak…", "In…", "Print…"},
        {"title", "打印预览", "Pratinjau cetak", "Xem trước khi in", "Print preview"},
        {"paper", "纸张", "Kertas", "Khổ giấy", "Paper"},
        {"orientation", "方向", "Orientasi", "Hướng giấy", "Orientation"},
        {"orientation.automatic", "自动", "Otomatis", "Tự động", "Automatic"},
        {"orientation.portrait", "纵向", "Tegak", "Dọc", "Portrait"},
        {"orientation.landscape", "横向", "Mendatar", "Ngang", "Landscape"},
        {"pages.one", "共 1 页", "1 halaman", "1 trang", "1 page"},
        {"pages.many", "共 %1 页", "%1 halaman", "%1 trang", "%1 pages"},
        {"pages", "预览", "Pratinjau", "Bản xem trước", "Preview"},
        {"pages.shown", "第 %1 页，共 %2 页", "Halaman %1 dari %2", "Trang %1 trên %2", "Page %1 of %2"},
        {"preparing", "正在排版…", "Menyusun halaman…", "Đang dàn trang…", "Laying out the pages…"},
        {"hint", "表格过宽时自动横放。每页重复列标题。",
         "Tabel yang lebar dicetak mendatar. Judul kolom diulang di tiap halaman.",
         "Bảng rộng được in ngang. Tiêu đề cột lặp lại ở mỗi trang.",
         "Wide tables are turned on their side. Column heads are repeated on each page."},
        {"savePdf", "存为 PDF", "Simpan sebagai PDF", "Lưu thành PDF", "Save as PDF"},
        {"pdfFiles", "PDF 文件", "Berkas PDF", "Tệp PDF", "PDF files"},
        {"noPrinter", "此电脑没有打印机。可以存为 PDF。", "Komputer ini tidak memiliki printer. Simpan sebagai PDF.",
         "Máy tính này không có máy in. Bạn có thể lưu thành PDF.",
         "This computer has no printer. You can save a PDF instead."},
        {"printFailed", "打印机未接受文档。", "Printer tidak menerima dokumen.", "Máy in không nhận tài liệu.",
         "The printer did not take the document."},
        {"saveFailed", "无法保存文件。", "Berkas tidak dapat disimpan.", "Không lưu được tệp.",
         "The file could not be saved."},
        {"saved", "已保存 %1", "%1 tersimpan", "Đã lưu %1", "Saved %1"},
        {"renewed", "记录已变化，预览已更新。请再看一遍。",
         "Catatan telah berubah; pratinjau diperbarui. Periksa lagi.",
         "Bản ghi đã thay đổi; bản xem trước đã được cập nhật. Hãy xem lại.",
         "The records have changed; the preview is up to date. Look at it again."},
        {"printed", "已发送到打印机", "Dikirim ke printer", "Đã gửi đến máy in", "Sent to the printer"},
    };
    return table;
}
