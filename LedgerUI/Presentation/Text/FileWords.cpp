#include "LedgerUI/Presentation/Text/FileWords.h"

#include "LedgerCore/Domain/Text/WordTable.h"

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
    }};
    return words;
}
