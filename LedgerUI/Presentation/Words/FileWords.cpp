#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& fileWords()
{
    static const WordTable words{{
        {"csvFiles", "CSV 文件", "Berkas CSV", "Tệp CSV", "CSV files"},
        {"save", "保存文件", "Simpan berkas", "Lưu tệp", "Save the file"},
        {"notSaved", "文件未能保存。", "Berkas tidak dapat disimpan.", "Không lưu được tệp.",
         "The file could not be saved."},
        {"folderMissing", "该文件夹已不存在。", "Foldernya sudah tidak ada.", "Thư mục đó không còn nữa.",
         "The folder is no longer there."},
        {"notAllowed", "您无权在该处写入。请选择其他文件夹。", "Anda tidak boleh menulis di sana. Pilih folder lain.",
         "Bạn không được ghi ở đó. Hãy chọn thư mục khác.", "You may not write there. Choose another folder."},
        {"diskFull", "磁盘已满。", "Disk penuh.", "Đĩa đã đầy.", "The disk is full."},

        // what has changed since it was looked at
        {"changes.between", "；", "; ", "; ", "; "},
        {"changes.added.one", "新增 1 条记录", "1 catatan bertambah", "thêm 1 bút toán", "1 entry added"},
        {"changes.added.many", "新增 %1 条记录", "%1 catatan bertambah", "thêm %1 bút toán", "%1 entries added"},
        {"changes.removed.one", "少了 1 条记录", "1 catatan hilang", "bớt 1 bút toán", "1 entry gone"},
        {"changes.removed.many", "少了 %1 条记录", "%1 catatan hilang", "bớt %1 bút toán", "%1 entries gone"},
        {"changes.edited.one", "1 条记录有改动", "1 catatan berubah", "1 bút toán thay đổi", "1 entry edited"},
        {"changes.edited.many", "%1 条记录有改动", "%1 catatan berubah", "%1 bút toán thay đổi", "%1 entries edited"},
        {"changes.renamed", "“%1”现名为“%2”", "“%1” kini bernama “%2”", "“%1” nay có tên “%2”",
         "“%1” is now called “%2”"},
        {"changes.renamedMore.one", "另有 1 个名称改变", "1 nama lain berubah", "1 tên khác thay đổi",
         "1 more name changed"},
        {"changes.renamedMore.many", "另有 %1 个名称改变", "%1 nama lain berubah", "%1 tên khác thay đổi",
         "%1 more names changed"},
        {"changes.categories", "类别有改动", "kategori berubah", "hạng mục thay đổi", "categories edited"},
        {"changes.receipts", "票据有改动", "bukti berubah", "chứng từ thay đổi", "receipts changed"},
        {"changes.settings", "记账起始日期或初始化方式有改动", "tanggal mulai pembukuan atau cara inisialisasi berubah",
         "ngày bắt đầu ghi sổ hoặc cách khởi tạo thay đổi", "bookkeeping start or set-up changed"},
    }};
    return words;
}
