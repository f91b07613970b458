#include "LedgerCore/Client/Errors/StoreMessages.h"

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
    }};
    return words;
}
