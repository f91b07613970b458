#include "LedgerUI/Presentation/Words/ScreenWords.h"

const WordTable& dialogWords()
{
    static const WordTable words{
        {"cancel", "取消", "Batal", "Hủy", "Cancel"},
        {"close", "关闭", "Tutup", "Đóng", "Close"},
        {"busy", "请稍候…", "Mohon tunggu…", "Vui lòng chờ…", "Please wait…"},
        {"discardTitle", "放弃更改？", "Buang perubahan?", "Bỏ thay đổi?", "Discard changes?"},
        {"discardBody", "已输入的内容不会保存。", "Isian Anda tidak akan disimpan.",
         "Nội dung đã nhập sẽ không được lưu.", "What you entered will not be saved."},
        {"discard", "放弃", "Buang", "Bỏ", "Discard"},
        {"keepEditing", "继续编辑", "Lanjut mengisi", "Tiếp tục nhập", "Keep editing"},
        {"listSeparator", "，", ", ", ", ", ", "},
        {"error", "错误", "Kesalahan", "Lỗi", "Error"},
        {"warning", "警告", "Peringatan", "Cảnh báo", "Warning"},
        {"information", "提示", "Informasi", "Thông tin", "Information"},
        {"success", "成功", "Berhasil", "Thành công", "Success"},
    };
    return words;
}
