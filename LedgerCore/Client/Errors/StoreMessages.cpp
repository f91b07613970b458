#include "LedgerCore/Client/Errors/FailureMessages.h"

const WordTable& storeMessages()
{
    static const WordTable words{{
        {"languageNotKept", "界面语言已切换，但无法保存在此设备上。下次启动时需要重新选择。",
         "Bahasa antarmuka sudah diganti, tetapi pilihan ini tidak dapat disimpan di perangkat ini. Pilih lagi saat "
         "aplikasi dibuka kembali.",
         "Ngôn ngữ giao diện đã được đổi nhưng không thể lưu lựa chọn này trên thiết bị. Hãy chọn lại khi mở lại ứng "
         "dụng.",
         "The interface language has been changed, but the choice could not be saved on this device. Choose it again "
         "after restarting the app."},
        {"importStopped.one", "导入在确认 1 条记录后停止。解决问题后可再次选择同一文件；已确认的行不会重复。",
         "Impor berhenti setelah 1 catatan dikonfirmasi. Setelah masalahnya diperbaiki Anda dapat memilih berkas yang "
         "sama lagi; baris yang sudah dikonfirmasi tidak akan digandakan.",
         "Đã dừng nhập sau 1 bút toán được xác nhận. Bạn có thể chọn lại chính tệp này sau khi khắc phục; các dòng đã "
         "xác nhận sẽ không bị trùng.",
         "Import stopped after 1 confirmed record. You can select the same file again after fixing the issue; "
         "confirmed rows will not be duplicated."},
        {"importStopped.many", "导入在确认 %1 条记录后停止。解决问题后可再次选择同一文件；已确认的行不会重复。",
         "Impor berhenti setelah %1 catatan dikonfirmasi. Setelah masalahnya diperbaiki Anda dapat memilih berkas yang "
         "sama lagi; baris yang sudah dikonfirmasi tidak akan digandakan.",
         "Đã dừng nhập sau %1 bút toán được xác nhận. Bạn có thể chọn lại chính tệp này sau khi khắc phục; các dòng đã "
         "xác nhận sẽ không bị trùng.",
         "Import stopped after %1 confirmed records. You can select the same file again after fixing the issue; "
         "confirmed rows will not be duplicated."},
    }};
    return words;
}
