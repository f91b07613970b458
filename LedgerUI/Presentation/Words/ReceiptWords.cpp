#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& receiptWords()
{
    static const WordTable words{{
        // choosing
        {"title", "票据", "Bukti", "Chứng từ", "Receipts"},
        {"filter.pictures", "图片", "Gambar", "Hình ảnh", "Pictures"},
        {"filter.all", "票据（图片和 PDF）", "Bukti (gambar dan PDF)", "Chứng từ (hình ảnh và PDF)",
         "Receipts (pictures and PDF)"},
        {"drop", "将票据拖到此处，或直接粘贴。", "Letakkan bukti di sini, atau tempel.",
         "Kéo thả chứng từ vào đây, hoặc dán.", "Drop receipts here, or paste them."},
        {"formats", "JPG、PNG、HEIC 或 PDF，每个文件不超过 10 MB。",
         "JPG, PNG, HEIC, atau PDF, masing-masing hingga 10 MB.", "JPG, PNG, HEIC hoặc PDF, mỗi tệp tối đa 10 MB.",
         "JPG, PNG, HEIC or PDF, up to 10 MB each."},
        {"limit", "每笔记录最多 10 张票据。还可添加 %1 张",
         "Maksimal 10 bukti per transaksi. Anda dapat menambahkan %1",
         "Tối đa 10 chứng từ mỗi giao dịch. Có thể thêm %1", "Up to 10 receipts per transaction. You can add %1"},
        {"limit.left", "最多 10 张票据：有 %1 个文件未添加。", "Maksimal 10 bukti: %1 berkas tidak ditambahkan.",
         "Tối đa 10 chứng từ: %1 tệp không được thêm.", "Up to 10 receipts: %1 of the files were left out."},
        {"locked", "已上传的票据仍属于原请求。", "Bukti yang telah diunggah tetap terkait dengan permintaan asli.",
         "Chứng từ đã tải lên vẫn thuộc yêu cầu ban đầu.", "Uploaded receipts stay linked to the original request."},
        {"pasted", "粘贴的图片", "Gambar tempel", "Hình ảnh đã dán", "Pasted picture"},

        // a row
        {"row.waiting", "等待中…", "Menunggu…", "Đang chờ…", "Waiting…"},
        {"row.preparing", "准备中…", "Menyiapkan…", "Đang chuẩn bị…", "Preparing…"},
        {"row.uploading", "上传中…", "Mengunggah…", "Đang tải lên…", "Uploading…"},
        {"row.failed", "失败", "Gagal", "Thất bại", "Failed"},
        {"row.compressed", "%1，已压缩", "%1, dikompresi", "%1, đã nén", "%1, compressed"},
        {"row.named", "%1：%2", "%1: %2", "%1: %2", "%1: %2"},
        {"unreadable", "无法读取此文件。", "Berkas ini tidak dapat dibaca.", "Không thể đọc tệp này.",
         "This file cannot be read."},
        {"empty", "此文件为空。", "Berkas ini kosong.", "Tệp này trống.", "This file is empty."},

        // sending
        {"wait", "票据上传完成后将自动保存。", "Akan disimpan setelah bukti selesai diunggah.",
         "Sẽ lưu ngay khi chứng từ được tải lên xong.", "Saved as soon as the receipts are uploaded."},
        {"outcome", "已上传 %1 个文件；%2 个失败。请重新选择失败的文件再试。",
         "%1 berkas diunggah; %2 gagal. Pilih lagi berkas yang gagal untuk mencoba lagi.",
         "Đã tải lên %1 tệp; %2 tệp thất bại. Chọn lại các tệp thất bại để thử lại.",
         "%1 files uploaded; %2 failed. Select the failed files again to retry."},
        {"add", "添加票据…", "Tambah bukti…", "Thêm chứng từ…", "Add receipts…"},
        {"add.title", "添加票据", "Tambah bukti", "Thêm chứng từ", "Add receipts"},
        {"add.entry", "为此记录添加：", "Untuk catatan:", "Cho bút toán:", "For the entry:"},
        {"add.none", "请先添加一张票据。", "Tambahkan bukti terlebih dahulu.", "Hãy thêm một chứng từ trước.",
         "Add a receipt first."},
        {"add.full", "此记录已有 10 张票据。", "Catatan ini sudah memiliki 10 bukti.",
         "Bút toán này đã có 10 chứng từ.", "This entry has 10 receipts already."},
        {"add.done", "票据已添加", "Bukti ditambahkan", "Đã thêm chứng từ", "Receipts added"},

        // looking at one
        {"preview", "预览 %1", "Pratinjau %1", "Xem trước %1", "Preview %1"},
        {"preview.title", "票据 %1 / %2", "Bukti %1 dari %2", "Chứng từ %1 / %2", "Receipt %1 of %2"},
        {"preview.page", "第 %1 / %2 页", "Halaman %1 dari %2", "Trang %1 / %2", "Page %1 of %2"},
        {"preview.previous", "上一张票据", "Bukti sebelumnya", "Chứng từ trước", "Previous receipt"},
        {"preview.next", "下一张票据", "Bukti berikutnya", "Chứng từ sau", "Next receipt"},
        {"preview.pageBack", "上一页", "Halaman sebelumnya", "Trang trước", "Previous page"},
        {"preview.pageForward", "下一页", "Halaman berikutnya", "Trang sau", "Next page"},
        {"preview.loading", "正在加载…", "Memuat…", "Đang tải…", "Loading…"},
        {"preview.outside", "用其他程序打开", "Buka di program lain", "Mở bằng chương trình khác", "Open outside"},
        {"preview.protected", "此 PDF 受密码保护，请用其他程序打开。",
         "PDF ini dilindungi kata sandi. Buka di program lain.",
         "PDF này được bảo vệ bằng mật khẩu. Hãy mở bằng chương trình khác.",
         "This PDF is protected by a password. Open it outside."},
        {"preview.tooLarge", "图片过大，无法在此显示，请用其他程序打开。",
         "Gambar ini terlalu besar untuk ditampilkan di sini. Buka di program lain.",
         "Hình ảnh này quá lớn để hiển thị tại đây. Hãy mở bằng chương trình khác.",
         "This picture is too large to be shown here. Open it outside."},
        {"preview.saved", "副本已保存", "Salinan disimpan", "Đã lưu bản sao", "The copy is saved."},

        // showing an entry to others
        {"share.account", "显示账户名称", "Tampilkan nama rekening", "Hiện tên tài khoản", "Show account name"},
        {"share.note", "显示备注", "Tampilkan keterangan", "Hiện ghi chú", "Show note"},
        {"share.recorder", "显示记录人", "Tampilkan pencatat", "Hiện người ghi", "Show who recorded it"},
        {"share.language", "票据语言", "Bahasa bukti", "Ngôn ngữ biên nhận", "Language of the receipt"},
        {"share.format", "文件格式", "Format berkas", "Định dạng tệp", "File format"},
        {"share.pictures", "PNG 图片", "Gambar PNG", "Hình PNG", "PNG images"},
        {"share.copy", "复制图片", "Salin gambar", "Sao chép hình", "Copy image"},
        {"share.save", "保存…", "Simpan…", "Lưu…", "Save…"},
        {"share.copied", "图片已复制。", "Gambar disalin.", "Đã sao chép hình.", "The image is copied."},
        {"share.foot", "根据公司账本于 %1 生成。并非税务发票。",
         "Dibuat dari buku besar perusahaan pada %1. Bukan faktur pajak.",
         "Lập từ sổ cái của công ty ngày %1. Không phải hóa đơn thuế.",
         "Made from the company ledger on %1. Not a tax invoice."},
    }};
    return words;
}
